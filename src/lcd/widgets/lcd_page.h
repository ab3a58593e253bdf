// CLCDPage: a collection the size of a panel that fills its background and draws its objects.
// CEzLcdPage adds the factory of texts and pictures, with the size table of each panel.
#pragma once

#include "lcd/widgets/lcd_collection.h"
#include "lcd/widgets/lcd_text.h"

#include <optional>

namespace qvx::lcd {

class CLCDBitmap;
class CLCDIcon;
class CLCDProgressBar;

class CLCDPage : public CLCDCollection {
public:
    CLCDPage(int width, int height) { SetSize(width, height); }
    void OnDraw(CLCDGfxBase& gfx) override;
};

/// One row of a panel's text sizes.
struct TextSizeRow {
    int lineHeight;
    int points;
    int logicalY;  ///< the text's logical origin, to place its glyphs on the line
    int weight;    ///< 0: the caller's weight
};

/// The row for `size` on the colour (0 to 3) or the mono panel (1 to 3); none for others.
std::optional<TextSizeRow> TextSizeFor(bool color, int size);

class CEzLcdPage : public CLCDPage {
public:
    enum TextKind { kScrollingText = 0, kStaticText = 1 };

    CEzLcdPage(bool color, int width, int height) : CLCDPage(width, height), m_color(color) {}
    bool IsColor() const { return m_color; }

    /// A text object on this page, laid out for `maxLength` pixels and `lines` lines of the
    /// size's line height; null for a size outside the table.
    CLCDText* AddText(int kind, int size, unsigned format, int maxLength, int lines, int weight);
    CLCDBitmap* AddBitmap(int width, int height);
    CLCDIcon* AddIcon(int width, int height);
    CLCDProgressBar* AddProgressBar(int width, int height);

private:
    bool m_color;
};

}  // namespace qvx::lcd
