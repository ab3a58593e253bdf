// CLcdTip and CLcdMessagebox: a short text on a half-transparent plate, laid over a page.
// The tip is a strip of the plate with one or two lines of text in it; the message box is
// the whole plate with an icon above its text. Both are made hidden and take their objects
// off the page again when they go.
#pragma once

#include "lcd/page_resources.h"
#include "lcd/widgets/lcd_bitmap.h"
#include "lcd/widgets/lcd_text.h"
#include "lcd/widgets/ovk_lcd_page.h"

#include <memory>
#include <string>

namespace qvx::lcd {

/// The alpha a plate without its own gets, so that the page shows through a little.
constexpr std::uint8_t kPlateAlpha = 230;

/// What a tip and a message box share: the plate's picture and object, and a text on it.
/// Both objects leave the page with it.
class CLcdPlate {
public:
    CLcdPlate(const CLcdPlate&) = delete;
    CLcdPlate& operator=(const CLcdPlate&) = delete;
    ~CLcdPlate();

    void Show(bool visible);
    const CLCDBitmap& Plate() const { return *m_plate; }
    const CLCDText& Text() const { return *m_text; }

protected:
    explicit CLcdPlate(COvkLcdPage& page) : m_page(page) {}
    /// Loads the plate `plateId` and puts it, hidden, where `place` says for its size; then
    /// the text, hidden, 30 pixels in from the plate's left edge. False when the page refused
    /// an object.
    template <typename Place>
    bool MakePlate(IPageResources& resources, int plateId, const std::wstring& text, Place place);

    COvkLcdPage& m_page;
    CLcdPicture m_image;
    CLCDBitmap* m_plate = nullptr;
    CLCDText* m_text = nullptr;
    std::wstring m_content;
};

class CLcdTip : public CLcdPlate {
public:
    static constexpr int kStripHeight = 46;
    static constexpr int kTop = 106;

    /// A tip with `text` on the plate `plateId`, centred across the panel at y 106; null
    /// when the page refused the text.
    static std::shared_ptr<CLcdTip> Create(COvkLcdPage& page, IPageResources& resources,
                                           int plateId, const std::wstring& text);
    /// Moves the plate and its text together.
    void MoveBy(int dx, int dy);

private:
    explicit CLcdTip(COvkLcdPage& page) : CLcdPlate(page) {}
};

class CLcdMessagebox : public CLcdPlate {
public:
    /// A message box with `text` and the icon `iconId` on the plate `plateId`, centred on
    /// the panel; null when the page refused an object.
    static std::shared_ptr<CLcdMessagebox> Create(COvkLcdPage& page, IPageResources& resources,
                                                  int plateId, int iconId,
                                                  const std::wstring& text);
    ~CLcdMessagebox();

    void Show(bool visible);
    const CLCDIcon& Icon() const { return *m_iconObject; }

private:
    explicit CLcdMessagebox(COvkLcdPage& page) : CLcdPlate(page) {}

    CLcdPicture m_icon;
    CLCDIcon* m_iconObject = nullptr;
};

}  // namespace qvx::lcd
