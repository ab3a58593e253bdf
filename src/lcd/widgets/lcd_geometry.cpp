#include "lcd/widgets/lcd_geometry.h"

#include <algorithm>
#include <cstdint>

namespace qvx::lcd {

LcdRect Intersect(const LcdRect& a, const LcdRect& b) {
    LcdRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
              std::min(a.bottom, b.bottom)};
    return r.Empty() ? LcdRect{} : r;
}

int MulDiv(int a, int b, int c) {
    if (c == 0) return -1;
    std::int64_t product = static_cast<std::int64_t>(a) * b;
    // Round half away from zero, as the platform does.
    std::int64_t half = (c < 0 ? -static_cast<std::int64_t>(c) : c) / 2;
    bool negative = (product < 0) != (c < 0);
    std::int64_t magnitude = (product < 0 ? -product : product) + half;
    std::int64_t quotient = magnitude / (c < 0 ? -static_cast<std::int64_t>(c) : c);
    return static_cast<int>(negative ? -quotient : quotient);
}

}  // namespace qvx::lcd
