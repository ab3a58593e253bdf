// CLCDText: a text object. It is measured only when its text, font or wrapping changed;
// setting the same text again changes nothing. CLCDColorText is the colour panel's text.
#pragma once

#include "lcd/widgets/lcd_base.h"

#include <string>

namespace qvx::lcd {

class CLCDText : public CLCDBase {
public:
    CLCDText();

    virtual void SetFont(const LcdFont& font);
    void SetFontFaceName(const std::wstring& face);
    /// Sets the font's height for `points` points; see FontHeightForPoints.
    void SetFontPointSize(int points);
    void SetFontWeight(int weight);
    const LcdFont& GetFont() const { return m_font; }

    /// Stores a different text and marks it for measuring; the same text does nothing.
    virtual void SetText(const std::wstring& text);
    const std::wstring& GetText() const { return m_text; }
    void SetWordWrap(bool wrap);
    bool GetWordWrap() const { return m_wordWrap; }
    void SetAlignment(unsigned format) { m_format = format; }
    unsigned GetAlignment() const { return m_format; }

    /// The extents of the last measurement; 0 until the text was measured.
    int GetVExtent() const { return m_vExtent; }
    int GetHExtent() const { return m_hExtent; }
    /// Measures now if marked (or always with `force`).
    void CalculateExtent(CLCDGfxBase& gfx, bool force);
    bool NeedsMeasuring() const { return m_recalculate; }

    void OnDraw(CLCDGfxBase& gfx) override;

protected:
    /// The format as drawn: the alignment, with word breaks when wrapping.
    unsigned DrawFormat() const;
    void DrawTextOnly(CLCDGfxBase& gfx);

private:
    std::wstring m_text;
    LcdFont m_font;
    unsigned m_format = 0;
    bool m_recalculate = true;
    bool m_wordWrap = false;
    int m_vExtent = 0;
    int m_hExtent = 0;
};

/// A text on the colour panel: white on black unless told otherwise.
class CLCDColorText : public CLCDText {
public:
    CLCDColorText() {
        SetForegroundColor(0xFFFFFF);
        SetBackgroundColor(0x000000);
    }
};

}  // namespace qvx::lcd
