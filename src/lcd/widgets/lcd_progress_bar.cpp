#include "lcd/widgets/lcd_progress_bar.h"

#include "lcd/widgets/lcd_gfx.h"

#include <algorithm>
#include <cmath>

namespace qvx::lcd {

void CLCDProgressBar::SetRange(float low, float high) {
    m_low = low;
    m_high = high;
}

int CLCDProgressBar::ScaledPosition() const {
    int width = GetWidth();
    if (m_style != kFilled) width -= m_cursorWidth + 1;
    if (width <= 0 || m_high <= m_low) return 0;
    float clamped = std::clamp(m_position, m_low, m_high);
    double scaled = (clamped - m_low) / (static_cast<double>(m_high) - m_low) * width;
    return std::clamp(static_cast<int>(std::lround(scaled)), 0, width);
}

CLCDProgressBar::Layout CLCDProgressBar::ComputeLayout() const {
    Layout layout;
    LcdRect bounds = Bounds();
    layout.frame = bounds;
    int x = ScaledPosition();
    if (m_style == kFilled) {
        layout.fill = {bounds.left, bounds.top, bounds.left + x, bounds.bottom};
        return layout;
    }
    int width = std::min(m_cursorWidth, GetWidth());
    layout.cursor = {bounds.left + x, bounds.top, bounds.left + x + width, bounds.bottom};
    if (m_style == kDottedCursor) {
        layout.lineFrom = bounds.left;
        layout.lineTo = bounds.left + x;
        layout.lineY = bounds.top + GetHeight() / 2;
    }
    return layout;
}

void CLCDProgressBar::OnDraw(CLCDGfxBase& gfx) {
    Layout layout = ComputeLayout();
    LcdColor color = GetForegroundColor();
    gfx.FrameRect(layout.frame, color);
    if (!layout.fill.Empty()) gfx.FillRect(layout.fill, color);
    if (!layout.cursor.Empty()) gfx.FillRect(layout.cursor, color);
    if (layout.lineTo > layout.lineFrom) {
        gfx.DottedLine(layout.lineFrom, layout.lineTo, layout.lineY, color);
    }
}

}  // namespace qvx::lcd
