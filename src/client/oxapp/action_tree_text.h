// The action tree and its images as lines of text, the same for every reader (the simulated
// driver's records, the administrator's tool):
//
//     node<TAB>depth<TAB>type<TAB>id<TAB>label<TAB>description
//     image<TAB>node id<TAB>file name
//
// Nodes come first, depth first in pre-order (a node, its children in chain order, then its
// next sibling), the root at depth 0; then the images in list order. An absent text is an
// empty field; the file name is that of a file or resource image, empty for other types.
// Every field is escaped: backslash, TAB, LF and CR as \\ \t \n \r, other bytes below 0x20
// and 0x7F as \xHH in lower-case hex. Each line ends in LF.
#pragma once

#include "client/oxapp/action_records.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace oxapp {

/// More nodes than any tree an application publishes; a longer walk means the links form a
/// cycle.
inline constexpr std::size_t kMaxActionNodes = 1'000'000;

/// `text` escaped as a field.
std::string EscapeActionField(std::string_view text);

/// Appends the node lines of the tree at `root` (nothing for a null root) and gives the number
/// of nodes; nothing is appended and the result is empty when more than `maxNodes` nodes are
/// reached. The walk keeps its own stack, so a deep tree costs no native stack.
std::optional<std::size_t> AppendActionNodeLines(const oxActionNodeEx_s* root, std::string& out,
                                                 std::size_t maxNodes = kMaxActionNodes);

/// Appends one line per image of `images[0..count)`.
void AppendActionImageLines(const oxImage_t* images, std::size_t count, std::string& out);

/// The node lines and then the image lines; empty when the tree has more than
/// kMaxActionNodes nodes.
std::string ActionTreeText(const oxActionNodeEx_s* root, const oxImage_t* images,
                           std::size_t count);

}  // namespace oxapp
