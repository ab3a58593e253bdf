// Building the tree of everything a device button can be given: a root, the markup macros,
// the user's mapkeys and the host's commands by category, with the icons found for them.
// The plug-in publishes it to the driver; the administrator's tool prints it.
#pragma once

#include "client/oxapp/action_node.h"
#include "client/oxapp/ox_image.h"

#include <memory>
#include <vector>

class CProECommands;

namespace qvx::core {

/// The root's id and label until a mode's action set replaces them at publishing.
inline constexpr const char* kDefaultActionSetId = "Default";
inline constexpr const char* kDefaultActionSetLabel = "No Part";

/// Replaces `root` with a new tree read from `catalogue` and appends the icons it finds to
/// `images` (which keeps what it held: a publish empties it). Texts are UTF-8. Under the root,
/// in order: the markup category, the mapkeys (left out when there are none, in reverse
/// order), and one category per key of the category table from the greatest key to the
/// smallest, each holding the commands whose name holds "ProCmd" + key and no greater key's
/// text, in reverse order of the catalogue's list. An icon whose recording fails is dropped.
void BuildActionTree(CProECommands& catalogue, std::unique_ptr<oxapp::CActionNode>& root,
                     std::vector<oxapp::COxImage>& images);

}  // namespace qvx::core
