#include "lcd/widgets/lcd_page.h"

#include "lcd/widgets/lcd_bitmap.h"
#include "lcd/widgets/lcd_gfx.h"
#include "lcd/widgets/lcd_progress_bar.h"
#include "lcd/widgets/lcd_scrolling_text.h"

namespace qvx::lcd {

void CLCDPage::OnDraw(CLCDGfxBase& gfx) {
    gfx.FillRect(Bounds(), GetBackgroundColor());
    CLCDCollection::OnDraw(gfx);
}

std::optional<TextSizeRow> TextSizeFor(bool color, int size) {
    if (color) {
        switch (size) {
            case 0:
                return TextSizeRow{14, 8, 0, 0};
            case 1:
                return TextSizeRow{19, 12, 0, 0};
            case 2:
                return TextSizeRow{24, 16, -1, 0};
            case 3:
                return TextSizeRow{37, 24, 0, 0};
            default:
                return std::nullopt;
        }
    }
    switch (size) {
        case 1:
            return TextSizeRow{12, 7, 0, 0};
        case 2:
            return TextSizeRow{13, 8, 0, 0};
        case 3:
            return TextSizeRow{20, 12, 0, 700};
        default:
            return std::nullopt;
    }
}

namespace {

// Scrolling speeds in pixels a second, by size.
double ScrollSpeed(bool color, int size) {
    static const double kColor[] = {15, 22, 30, 45};
    static const double kMono[] = {0, 15, 18, 30};
    return color ? kColor[size] : kMono[size];
}

constexpr std::uint32_t kScrollStartDelayMs = 1500;

}  // namespace

CLCDText* CEzLcdPage::AddText(int kind, int size, unsigned format, int maxLength, int lines,
                              int weight) {
    auto row = TextSizeFor(m_color, size);
    if (!row) return nullptr;
    std::unique_ptr<CLCDText> text;
    if (kind == kScrollingText) {
        auto scrolling = std::make_unique<CLCDScrollingText>();
        scrolling->SetStartDelay(kScrollStartDelayMs);
        scrolling->SetSpeed(ScrollSpeed(m_color, size));
        scrolling->SetRepeat(true);
        text = std::move(scrolling);
    } else if (m_color) {
        text = std::make_unique<CLCDColorText>();
    } else {
        text = std::make_unique<CLCDText>();
    }
    text->Initialize();
    text->SetOrigin(0, 0);
    text->SetFontFaceName(m_color ? L"Arial" : L"Microsoft Sans Serif");
    text->SetAlignment(format);
    text->SetBackgroundMode(m_color ? kBackgroundTransparent : kBackgroundOpaque);
    text->SetText(L" ");
    text->SetFontWeight(row->weight ? row->weight : weight);
    text->SetSize(maxLength, lines * row->lineHeight);
    text->SetFontPointSize(row->points);
    text->SetLogicalOrigin(0, row->logicalY);
    if (lines >= 2) text->SetWordWrap(true);
    return AddObject(std::move(text));
}

CLCDBitmap* CEzLcdPage::AddBitmap(int width, int height) {
    auto bitmap = std::make_unique<CLCDBitmap>();
    bitmap->Initialize();
    bitmap->SetSize(width, height);
    return AddObject(std::move(bitmap));
}

CLCDIcon* CEzLcdPage::AddIcon(int width, int height) {
    auto icon = std::make_unique<CLCDIcon>();
    icon->Initialize();
    icon->SetSize(width, height);
    return AddObject(std::move(icon));
}

CLCDProgressBar* CEzLcdPage::AddProgressBar(int width, int height) {
    auto bar = std::make_unique<CLCDProgressBar>();
    bar->Initialize();
    bar->SetSize(width, height);
    return AddObject(std::move(bar));
}

}  // namespace qvx::lcd
