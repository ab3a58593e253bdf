// A stand-in test page and factory for the applet, until the page of the host's document
// data takes their place. The page shows the applet's name, what the panel's buttons did and
// how often the page was refreshed, so that a frame tells what reached the page.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/lcd_functor.h"
#include "lcd/lcd_page_interface.h"
#include "lcd/widgets/lcd_progress_bar.h"
#include "lcd/widgets/ovk_lcd_page.h"

#include <memory>
#include <string>

namespace qvx::lcd {

class CStandInTestPage : public CLcdPageImplT<CStandInTestPage> {
public:
    ~CStandInTestPage() override;

    bool Create(const std::wstring& pageName) override;
    void Update() override;
    void Show() override;
    bool IsVisible() const override;
    std::int32_t OnOk() override { return Pressed(L"OK"); }
    std::int32_t OnCancel() override { return Pressed(L"Cancel"); }
    std::int32_t OnLeft() override { return Pressed(L"Left"); }
    std::int32_t OnRight() override { return Pressed(L"Right"); }
    std::int32_t OnUp() override { return Pressed(L"Up"); }
    std::int32_t OnDown() override { return Pressed(L"Down"); }
    void Refresh() override;

    int Presses() const { return m_presses; }
    const std::wstring& LastButton() const { return m_lastButton; }

private:
    std::int32_t Pressed(const wchar_t* button);

    COvkLcdPage* m_page = nullptr;
    CLCDText* m_title = nullptr;
    CLCDText* m_subtitle = nullptr;
    CLCDText* m_pressLine = nullptr;
    CLCDText* m_lastLine = nullptr;
    CLCDText* m_refreshLine = nullptr;
    CLCDProgressBar* m_bar = nullptr;
    int m_presses = 0;
    int m_refreshes = 0;
    std::wstring m_lastButton = L"none";
};

/// The stand-in factory: a configure callback that does nothing, and no document data.
class CStandInFactory : public _Qvx::IFactory {
public:
    _Qvx::IInstance* CreateInstance(const std::wstring& classId, std::uintptr_t parameter) override;
};

}  // namespace qvx::lcd
