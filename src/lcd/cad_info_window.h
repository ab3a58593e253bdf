// CLcdCadInfoWindow: the plug-in's LCD applet. It connects when the LCD manager runs, retries
// every 3 s while it does not, makes and shows the page, passes the panel's buttons to the
// page, and takes the panel's foreground for 5 s after each change of data. Everything runs
// on the thread that owns the window; the library's thread only posts messages to it.
#pragma once

#include "lcd/applet_callbacks.h"
#include "lcd/applet_window.h"
#include "lcd/cad_info_page_factory.h"
#include "lcd/lcd_page_interface.h"

#include <functional>
#include <memory>

namespace qvx::lcd {

class CLcdCadInfoWindow : public CLcdAppletWindowT<CLcdCadInfoWindow> {
public:
    static constexpr std::uint32_t kRetryTimer = 40961;
    static constexpr std::uint32_t kRetryMs = 3000;
    static constexpr std::uint32_t kForegroundTimer = 40962;
    static constexpr std::uint32_t kForegroundMs = 5000;

    using PageMaker =
        std::function<std::unique_ptr<ILcdPage>(WindowId, std::shared_ptr<_Qvx::IFactory>)>;

    /// `factory` makes the configure callback and the page's data; `name` is the applet's.
    CLcdCadInfoWindow(std::shared_ptr<_Qvx::IFactory> factory, const std::wstring& name,
                      IAppletPlatform& platform = SystemAppletPlatform(),
                      PageMaker pageMaker = &MakeCadInfoPage);
    ~CLcdCadInfoWindow() override;

    /// Makes the window, hands the callbacks to the connection and tries to connect; while
    /// that fails the retry timer runs. False when no window could be made.
    bool Create();
    /// Connects if the manager runs and makes the page; true when connected.
    bool TryConnect();

    bool ProcessMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                        std::intptr_t& result);

    bool IsConnected() const { return m_connected; }
    bool HoldsForeground() const { return m_holdingForeground; }
    ILcdPage* Page() const { return m_page.get(); }

private:
    /// The page goes and the connection with it; the retry timer starts.
    void TearDown();
    void DestroyPage() { m_page.reset(); }
    void RunButton(std::uintptr_t button);

    std::unique_ptr<ILcdPage> m_page;
    std::unique_ptr<CQvxButtonCallBack> m_buttonCallback;
    std::unique_ptr<CQvxNotifyCallBack> m_notifyCallback;
    std::shared_ptr<_Qvx::IInstance> m_configureCallback;
    std::shared_ptr<_Qvx::IFactory> m_factory;
    bool m_connected = false;
    bool m_holdingForeground = false;
    std::wstring m_pageName;
    PageMaker m_pageMaker;
};

}  // namespace qvx::lcd
