// Where many keys first occur in one text, found in a single pass over the text, so that a
// catalogue scan's cost grows with the text plus the keys, not with their product.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// For each key, the offset of its first occurrence in `text` as std::string_view::find
/// gives it (npos when it does not occur; 0 for an empty key).
std::vector<std::size_t> FindFirstOccurrences(std::string_view text,
                                              const std::vector<std::string>& keys);
