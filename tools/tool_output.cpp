#include "tool_output.h"

namespace qvx::tool {

std::string EscapeField(std::string_view bytes) {
    static const char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(bytes.size());
    for (char c : bytes) {
        auto b = static_cast<unsigned char>(c);
        if (c == '\\') {
            out += "\\\\";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (b < 0x20 || b == 0x7F) {
            out += "\\x";
            out += kHex[b >> 4];
            out += kHex[b & 15];
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace qvx::tool
