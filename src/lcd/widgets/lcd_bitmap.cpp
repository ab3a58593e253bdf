#include "lcd/widgets/lcd_bitmap.h"

#include <algorithm>

namespace qvx::lcd {

void CLCDBitmap::OnDraw(CLCDGfxBase& gfx) {
    if (!m_bitmap) return;
    // A logical size, when set, shows only that much of the picture.
    LcdRect rect = Bounds();
    LcdSize window = GetLogicalSize();
    if (window.cx > 0) rect.right = std::min(rect.right, rect.left + window.cx);
    if (window.cy > 0) rect.bottom = std::min(rect.bottom, rect.top + window.cy);
    LcdPoint logical = GetLogicalOrigin();
    gfx.DrawBitmap(m_bitmap, rect, {-logical.x, -logical.y}, m_alpha);
}

void CLCDIcon::OnDraw(CLCDGfxBase& gfx) {
    if (m_icon) gfx.DrawIcon(m_icon, Bounds());
}

}  // namespace qvx::lcd
