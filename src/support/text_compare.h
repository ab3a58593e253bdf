// Comparison of names without regard to case, for names that the host, the user or a file
// spell as they please.
#pragma once

#include <string_view>

namespace qvx {

/// Wide text, each character folded with towlower.
bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b);
/// Narrow bytes, each folded with tolower as an unsigned char (the C locale folds ASCII only).
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

}  // namespace qvx
