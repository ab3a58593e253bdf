// The fixed output formats of qvxtool: one line per record, TAB between fields, and every
// field escaped so that a line never holds a TAB, CR or LF of its own.
#pragma once

#include <string>
#include <string_view>

namespace qvx::tool {

/// Backslash as "\\", TAB "\t", LF "\n", CR "\r", other bytes below 0x20 and 0x7F as "\xHH"
/// (two lower-case hex digits); all other bytes as they are.
std::string EscapeField(std::string_view bytes);

}  // namespace qvx::tool
