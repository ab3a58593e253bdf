// The functors that carry the LCD library's calls, made on its thread, to the applet window:
// each only posts a message.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/lcd_functor.h"

#include <atomic>

namespace qvx::lcd {

/// Soft buttons: posts 0x410 when no button went up, else 0x411; wParam the changed bits.
class CQvxButtonCallBack : public _Qvx::IOvkLcdFunctor {
public:
    CQvxButtonCallBack(IAppletPlatform& platform, WindowId window)
        : m_platform(platform), m_window(window) {}
    void operator()(std::uint32_t mask) override;
    /// Forgets the buttons held: a new connection starts with none, whatever report of the
    /// old one was lost.
    void Reset() { m_lastMask = 0; }

private:
    IAppletPlatform& m_platform;
    WindowId m_window;
    std::atomic<std::uint32_t> m_lastMask{0};
};

/// Connection notifications: posts 0x420 with the code.
class CQvxNotifyCallBack : public _Qvx::IOvkLcdFunctor {
public:
    CQvxNotifyCallBack(IAppletPlatform& platform, WindowId window)
        : m_platform(platform), m_window(window) {}
    void operator()(std::uint32_t code) override;

private:
    IAppletPlatform& m_platform;
    WindowId m_window;
};

}  // namespace qvx::lcd
