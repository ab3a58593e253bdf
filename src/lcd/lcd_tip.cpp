#include "lcd/lcd_tip.h"

#include "lcd/ovk_lcd_connection.h"

namespace qvx::lcd {
namespace {

constexpr LcdColor kTipText = 0xF09F1F;
constexpr LcdColor kTipBackground = 0x1F1F1F;
constexpr LcdColor kMessageText = 0xFFFFFF;
constexpr unsigned kCentredWrapped = kFormatCenter | kFormatWordBreak;
constexpr int kTextPoints = 13;
constexpr int kMessagePoints = 14;
constexpr int kTextWeight = 500;
/// The text keeps this much of the plate free on either side.
constexpr int kTextMargin = 30;

int CentredAcrossPanel(int width) { return (kColorWidth + 1 - width) / 2; }

void Remove(COvkLcdPage& page, const CLCDBase* object) {
    if (object) page.RemoveObject(object);
}

}  // namespace

template <typename Place>
bool CLcdPlate::MakePlate(IPageResources& resources, int plateId, const std::wstring& text,
                          Place place) {
    m_image = resources.LoadSectionBitmap(plateId, kPlateAlpha);
    LcdSize size = m_image.Size();
    LcdPoint at = place(size);
    COvkLcdConnection& connection = COvkLcdConnection::Instance();
    m_plate = connection.CreateBitmap(&m_page, size.cx, size.cy);
    if (!m_plate) return false;
    // The picture has alpha throughout, so that the page shows through a little.
    m_plate->SetBitmap(m_image.Get());
    m_plate->SetAlpha(true);
    m_plate->SetOrigin(at.x, at.y);
    m_plate->Show(false);
    m_content = text;
    m_text = connection.CreateText(&m_page, kTextPoints, size.cx - 2 * kTextMargin, kTextWeight,
                                   /*lines=*/2);
    if (!m_text) return false;
    m_text->SetAlignment(kCentredWrapped);
    m_text->SetText(text);
    m_text->SetOrigin(at.x + kTextMargin, at.y);
    m_text->Show(false);
    return true;
}

CLcdPlate::~CLcdPlate() {
    Remove(m_page, m_text);
    Remove(m_page, m_plate);
}

void CLcdPlate::Show(bool visible) {
    m_plate->Show(visible);
    m_text->Show(visible);
}

std::shared_ptr<CLcdTip> CLcdTip::Create(COvkLcdPage& page, IPageResources& resources, int plateId,
                                         const std::wstring& text) {
    std::shared_ptr<CLcdTip> tip(new CLcdTip(page));
    auto place = [](LcdSize size) { return LcdPoint{CentredAcrossPanel(size.cx), kTop}; };
    if (!tip->MakePlate(resources, plateId, text, place)) return nullptr;
    // Only a strip of the plate shows, as tall as two lines of the tip.
    tip->m_plate->SetLogicalSize(tip->m_plate->GetWidth(), kStripHeight);
    tip->m_text->SetForegroundColor(kTipText);
    tip->m_text->SetBackgroundColor(kTipBackground);
    tip->m_text->SetBackgroundMode(kBackgroundOpaque);
    // The text is centred in the strip by its measured height.
    std::unique_ptr<CLCDGfxBase> surface = CreateColorGfx();
    int height = tip->m_text->GetHeight();
    if (surface && surface->Initialize()) {
        tip->m_text->CalculateExtent(*surface, /*force=*/true);
        height = tip->m_text->GetVExtent();
    }
    tip->m_text->SetOrigin(tip->m_text->GetOrigin().x, (kStripHeight - height) / 2 + kTop);
    return tip;
}

void CLcdTip::MoveBy(int dx, int dy) {
    for (CLCDBase* object : {static_cast<CLCDBase*>(m_plate), static_cast<CLCDBase*>(m_text)}) {
        LcdPoint at = object->GetOrigin();
        object->SetOrigin(at.x + dx, at.y + dy);
    }
}

std::shared_ptr<CLcdMessagebox> CLcdMessagebox::Create(COvkLcdPage& page, IPageResources& resources,
                                                       int plateId, int iconId,
                                                       const std::wstring& text) {
    std::shared_ptr<CLcdMessagebox> box(new CLcdMessagebox(page));
    // Centred on the panel as if it were 260 pixels tall, which sets it a little low.
    int top = 0;
    auto place = [&top](LcdSize size) {
        top = (kColorHeight + 20 - size.cy) / 2;
        return LcdPoint{CentredAcrossPanel(size.cx), top - 1};
    };
    if (!box->MakePlate(resources, plateId, text, place)) return nullptr;
    LcdPoint at = box->m_plate->GetOrigin();
    int plateWidth = box->m_plate->GetWidth();

    box->m_icon = resources.LoadIconImage(iconId);
    LcdSize icon = box->m_icon.Size();
    box->m_iconObject = page.AddIcon(icon.cx, icon.cy);
    if (!box->m_iconObject) return nullptr;
    box->m_iconObject->SetIcon(box->m_icon.Get());
    box->m_iconObject->SetOrigin((plateWidth - icon.cx + 1) / 2 + at.x, top + 21);
    box->m_iconObject->Show(false);

    // White on the plate; the transparent background keeps the plate showing around it.
    CLCDText& message = *box->m_text;
    message.SetForegroundColor(kMessageText);
    message.SetBackgroundColor(kMessageText);
    message.SetOrigin(message.GetOrigin().x, top + 66);
    int before = message.GetFont().height;
    message.SetFontPointSize(kMessagePoints);
    int after = message.GetFont().height;
    message.SetSize(message.GetWidth(), MulDiv(message.GetHeight(), after, before));
    return box;
}

CLcdMessagebox::~CLcdMessagebox() { Remove(m_page, m_iconObject); }

void CLcdMessagebox::Show(bool visible) {
    CLcdPlate::Show(visible);
    m_iconObject->Show(visible);
}

}  // namespace qvx::lcd
