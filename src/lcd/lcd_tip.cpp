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

/// The plate as a blended picture object (its picture has alpha throughout) of its size at `at`,
/// hidden.
CLCDBitmap* AddPlate(COvkLcdPage& page, const CLcdPicture& image, LcdPoint at) {
    LcdSize size = image.Size();
    CLCDBitmap* plate = COvkLcdConnection::Instance().CreateBitmap(&page, size.cx, size.cy);
    if (!plate) return nullptr;
    plate->SetBitmap(image.Get());
    plate->SetAlpha(true);
    plate->SetOrigin(at.x, at.y);
    plate->Show(false);
    return plate;
}

/// Two centred lines of text as wide as the plate less its margins, hidden.
CLCDText* AddPlateText(COvkLcdPage& page, int plateWidth, const std::wstring& text) {
    CLCDText* object = COvkLcdConnection::Instance().CreateText(
        &page, kTextPoints, plateWidth - 2 * kTextMargin, kTextWeight, /*lines=*/2);
    if (!object) return nullptr;
    object->SetAlignment(kCentredWrapped);
    object->SetText(text);
    object->Show(false);
    return object;
}

int CentredAcrossPanel(int width) { return (kColorWidth + 1 - width) / 2; }

void Remove(COvkLcdPage& page, const CLCDBase* object) {
    if (object) page.RemoveObject(object);
}

}  // namespace

std::shared_ptr<CLcdTip> CLcdTip::Create(COvkLcdPage& page, IPageResources& resources, int plateId,
                                         const std::wstring& text) {
    std::shared_ptr<CLcdTip> tip(new CLcdTip(page));
    tip->m_image = resources.LoadSectionBitmap(plateId, kPlateAlpha);
    LcdSize size = tip->m_image.Size();
    LcdPoint at{CentredAcrossPanel(size.cx), kTop};
    tip->m_plate = AddPlate(page, tip->m_image, at);
    if (!tip->m_plate) return nullptr;
    // Only a strip of the plate shows, as tall as two lines of the tip.
    tip->m_plate->SetLogicalSize(size.cx, kStripHeight);
    tip->m_content = text;
    tip->m_text = AddPlateText(page, size.cx, text);
    if (!tip->m_text) return nullptr;
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
    tip->m_text->SetOrigin(at.x + kTextMargin, (kStripHeight - height) / 2 + kTop);
    return tip;
}

CLcdTip::~CLcdTip() {
    Remove(m_page, m_text);
    Remove(m_page, m_plate);
}

void CLcdTip::Show(bool visible) {
    m_plate->Show(visible);
    m_text->Show(visible);
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
    box->m_image = resources.LoadSectionBitmap(plateId, kPlateAlpha);
    LcdSize plate = box->m_image.Size();
    // Centred on the panel as if it were 260 pixels tall, which sets it a little low.
    int top = (kColorHeight + 20 - plate.cy) / 2;
    LcdPoint at{CentredAcrossPanel(plate.cx), top - 1};
    box->m_plate = AddPlate(page, box->m_image, at);
    if (!box->m_plate) return nullptr;

    box->m_icon = resources.LoadIconImage(iconId);
    LcdSize icon = box->m_icon.Size();
    box->m_iconObject = page.AddIcon(icon.cx, icon.cy);
    if (!box->m_iconObject) return nullptr;
    box->m_iconObject->SetIcon(box->m_icon.Get());
    box->m_iconObject->SetOrigin((plate.cx - icon.cx + 1) / 2 + at.x, top + 21);
    box->m_iconObject->Show(false);

    box->m_content = text;
    box->m_text = AddPlateText(page, plate.cx, text);
    if (!box->m_text) return nullptr;
    // White on the plate; the transparent background keeps the plate showing around it.
    box->m_text->SetForegroundColor(kMessageText);
    box->m_text->SetBackgroundColor(kMessageText);
    box->m_text->SetOrigin(at.x + kTextMargin, top + 66);
    int before = box->m_text->GetFont().height;
    box->m_text->SetFontPointSize(kMessagePoints);
    int after = box->m_text->GetFont().height;
    box->m_text->SetSize(box->m_text->GetWidth(), MulDiv(box->m_text->GetHeight(), after, before));
    return box;
}

CLcdMessagebox::~CLcdMessagebox() {
    Remove(m_page, m_text);
    Remove(m_page, m_iconObject);
    Remove(m_page, m_plate);
}

void CLcdMessagebox::Show(bool visible) {
    m_plate->Show(visible);
    m_iconObject->Show(visible);
    m_text->Show(visible);
}

}  // namespace qvx::lcd
