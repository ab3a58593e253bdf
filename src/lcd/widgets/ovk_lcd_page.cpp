#include "lcd/widgets/ovk_lcd_page.h"

namespace qvx::lcd {

CLCDText* COvkLcdPage::CreateText(int points, int width, int weight, int lines) {
    // The factory's size 1 of each panel, then the height scaled from its font to the one
    // asked for, so that the object is as tall as its lines in the new font.
    CLCDText* text =
        AddText(kStaticText, IsColor() ? 1 : 2, kFormatEndEllipsis, width, lines, weight);
    if (!text) return nullptr;
    int before = text->GetFont().height;
    text->SetFontPointSize(points);
    int after = text->GetFont().height;
    text->SetSize(text->GetWidth(), MulDiv(text->GetHeight(), after, before));
    text->SetLogicalOrigin(0, 0);
    return text;
}

}  // namespace qvx::lcd
