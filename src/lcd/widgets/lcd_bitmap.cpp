#include "lcd/widgets/lcd_bitmap.h"

namespace qvx::lcd {

void CLCDBitmap::OnDraw(CLCDGfxBase& gfx) {
    if (!m_bitmap) return;
    LcdPoint logical = GetLogicalOrigin();
    gfx.DrawBitmap(m_bitmap, Bounds(), {-logical.x, -logical.y}, m_alpha);
}

void CLCDIcon::OnDraw(CLCDGfxBase& gfx) {
    if (m_icon) gfx.DrawIcon(m_icon, Bounds());
}

}  // namespace qvx::lcd
