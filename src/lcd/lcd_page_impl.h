// CLcdPageImplT: what every page of the applet shares. It holds the page in the connection,
// lays out the background picture and the logo, and gives the buttons that do nothing. A
// page derives from it and adds its own objects on top.
#pragma once

#include "lcd/lcd_page_interface.h"
#include "lcd/ovk_lcd_connection.h"
#include "lcd/page_resources.h"
#include "lcd/widgets/lcd_bitmap.h"

namespace qvx::lcd {

template <typename T>
class CLcdPageImplT : public ILcdPage {
public:
    static constexpr int kBackgroundId = 300;
    static constexpr int kLogoId = 298;

    explicit CLcdPageImplT(IPageResources& resources = SystemPageResources())
        : m_resources(resources) {}
    CLcdPageImplT(const CLcdPageImplT&) = delete;
    CLcdPageImplT& operator=(const CLcdPageImplT&) = delete;
    /// The page leaves the connection with all its objects; the pictures go after them.
    ~CLcdPageImplT() override {
        if (m_page) COvkLcdConnection::Instance().RemovePage(m_page);
    }

    void Show() override {
        if (m_page) COvkLcdConnection::Instance().ShowPage(m_page, true);
    }
    bool IsVisible() const override {
        return m_page && COvkLcdConnection::Instance().IsPageVisible(m_page);
    }

    std::int32_t OnOk() override { return 0; }
    std::int32_t OnCancel() override { return 0; }
    std::int32_t OnLeft() override { return 0; }
    std::int32_t OnRight() override { return 0; }
    std::int32_t OnUp() override { return 0; }
    std::int32_t OnDown() override { return 0; }
    std::int32_t OnSpare() override { return 0; }

    /// The page in the connection; null before CreatePage.
    COvkLcdPage* LcdPage() const { return m_page; }

protected:
    /// Makes the colour page in the connection with the background and the logo on it;
    /// false when the connection gave no page. A picture that does not load leaves its
    /// object empty.
    bool CreatePage() {
        m_page = COvkLcdConnection::Instance().CreatePage(kColorPage);
        if (!m_page) return false;
        SetBackground(m_resources.LoadPlainBitmap(kBackgroundId));
        m_logo = m_resources.LoadSectionBitmap(kLogoId, std::nullopt);
        LcdSize size = m_logo.Size();
        m_logoObject = COvkLcdConnection::Instance().CreateBitmap(m_page, size.cx, size.cy);
        if (!m_logoObject) return false;
        m_logoObject->SetBitmap(m_logo.Get());
        m_logoObject->SetAlpha(m_logo.HasAlpha());
        // Centred in the panel's top left corner when smaller than it.
        m_logoObject->SetOrigin(size.cx < 48 ? (50 - size.cx) / 2 : 0,
                                size.cy < 36 ? (36 - size.cy) / 2 : 0);
        return true;
    }

    /// Puts `picture` on the background object, made first if there is none; the picture
    /// shown before is freed.
    void SetBackground(CLcdPicture picture) {
        m_background = std::move(picture);
        if (!m_backgroundObject) {
            m_backgroundObject =
                COvkLcdConnection::Instance().CreateBitmap(m_page, kColorWidth, kColorHeight);
            if (!m_backgroundObject) return;
            m_backgroundObject->SetOrigin(0, 0);
        }
        m_backgroundObject->SetBitmap(m_background.Get());
    }

    IPageResources& Resources() const { return m_resources; }

private:
    IPageResources& m_resources;
    COvkLcdPage* m_page = nullptr;
    CLcdPicture m_background;
    CLcdPicture m_logo;
    CLCDBitmap* m_backgroundObject = nullptr;
    CLCDBitmap* m_logoObject = nullptr;
};

}  // namespace qvx::lcd
