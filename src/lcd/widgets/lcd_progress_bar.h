// CLCDProgressBar: a framed bar that shows a position in a range, as a filled part (style 0),
// a cursor (style 1), or a cursor with a dotted line from the left edge (style 2). The layout
// is plain arithmetic, separate from the drawing.
#pragma once

#include "lcd/widgets/lcd_base.h"

namespace qvx::lcd {

class CLCDProgressBar : public CLCDBase {
public:
    enum Style { kFilled = 0, kCursor = 1, kDottedCursor = 2 };

    /// What one draw puts inside the frame, relative to the object's origin.
    struct Layout {
        LcdRect frame;
        LcdRect fill;                             ///< style 0; empty otherwise
        LcdRect cursor;                           ///< styles 1 and 2; empty otherwise
        int lineFrom = 0, lineTo = 0, lineY = 0;  ///< style 2's dotted line; empty when equal
    };

    void SetRange(float low, float high);
    void SetPos(float position) { m_position = position; }
    float GetPos() const { return m_position; }
    void SetStyle(int style) { m_style = style; }
    void SetCursorWidth(int width) { m_cursorWidth = width; }

    /// The position mapped onto the drawable width; never outside it.
    int ScaledPosition() const;
    Layout ComputeLayout() const;
    void OnDraw(CLCDGfxBase& gfx) override;

private:
    float m_low = 0;
    float m_high = 100;
    float m_position = 0;
    int m_style = kFilled;
    int m_cursorWidth = 5;
};

}  // namespace qvx::lcd
