#include "lcd/widgets/lcd_text.h"

#include "lcd/widgets/lcd_gfx.h"

namespace qvx::lcd {

CLCDText::CLCDText() {
    m_font.face = L"Arial";
    m_font.height = FontHeightForPoints(8);
}

void CLCDText::SetFont(const LcdFont& font) {
    m_font = font;
    m_recalculate = true;
}

void CLCDText::SetFontFaceName(const std::wstring& face) {
    LcdFont font = m_font;
    font.face = face;
    SetFont(font);
}

void CLCDText::SetFontPointSize(int points) {
    LcdFont font = m_font;
    font.height = FontHeightForPoints(points);
    SetFont(font);
}

void CLCDText::SetFontWeight(int weight) {
    LcdFont font = m_font;
    font.weight = weight;
    SetFont(font);
}

void CLCDText::SetText(const std::wstring& text) {
    if (text == m_text) return;
    m_text = text;
    m_vExtent = 0;
    m_hExtent = 0;
    m_recalculate = true;
}

void CLCDText::SetWordWrap(bool wrap) {
    m_wordWrap = wrap;
    m_recalculate = true;
}

unsigned CLCDText::DrawFormat() const {
    return m_wordWrap ? (m_format | kFormatWordBreak) : (m_format & ~kFormatWordBreak);
}

void CLCDText::CalculateExtent(CLCDGfxBase& gfx, bool force) {
    if (!m_recalculate && !force) return;
    unsigned format = DrawFormat() & ~kFormatEndEllipsis;
    // The height of the text as laid out in the object's width, and the width it would take
    // on one line: a scrolling text needs both.
    m_vExtent = gfx.MeasureText(m_font, m_text, format, GetWidth()).cy;
    m_hExtent = gfx.MeasureText(m_font, m_text, format | kFormatSingleLine, 0).cx;
    m_recalculate = false;
}

void CLCDText::DrawTextOnly(CLCDGfxBase& gfx) {
    LcdRect bounds = Bounds();
    LcdPoint logical = GetLogicalOrigin();
    LcdSize logicalSize = GetLogicalSize();
    if (logicalSize.cx <= 0) logicalSize.cx = bounds.Width();
    if (logicalSize.cy <= 0) logicalSize.cy = bounds.Height();
    LcdRect box{bounds.left + logical.x, bounds.top + logical.y,
                bounds.left + logical.x + logicalSize.cx, bounds.top + logical.y + logicalSize.cy};
    gfx.PaintText(m_font, m_text, DrawFormat(), box, bounds, GetForegroundColor(),
                  GetBackgroundColor(), GetBackgroundMode());
}

void CLCDText::OnDraw(CLCDGfxBase& gfx) {
    if (GetBackgroundMode() == kBackgroundOpaque) {
        LcdRect bounds = Bounds();
        gfx.FillRect(bounds, GetBackgroundColor());
        LcdSize logical = GetLogicalSize();
        if (logical.cx > 0 && logical.cy > 0) {
            gfx.FillRect(Intersect(bounds, {bounds.left, bounds.top, bounds.left + logical.cx,
                                            bounds.top + logical.cy}),
                         GetBackgroundColor());
        }
    }
    if (m_text.empty()) return;
    CalculateExtent(gfx, false);
    DrawTextOnly(gfx);
}

}  // namespace qvx::lcd
