// CLcdAppletWindowT: the hidden window of an LCD applet. It holds the applet's name (the
// connection singleton is made under it) and handles what every applet shares: a device that
// arrived brings the connection up to date, and the menu button opens the manager's control
// panel. T handles its own messages first and may pass a message on by returning false.
#pragma once

#include "lcd/applet_platform.h"
#include "lcd/ovk_lcd_connection.h"

#include <string>

namespace qvx::lcd {

/// The soft buttons, as bits of a mask.
constexpr std::uint32_t kButtonLeft = 0x100;
constexpr std::uint32_t kButtonRight = 0x200;
constexpr std::uint32_t kButtonOk = 0x400;
constexpr std::uint32_t kButtonCancel = 0x800;
constexpr std::uint32_t kButtonUp = 0x1000;
constexpr std::uint32_t kButtonDown = 0x2000;
constexpr std::uint32_t kButtonMenu = 0x4000;

template <typename T>
class CLcdAppletWindowT : public IAppletWindowHandler {
public:
    CLcdAppletWindowT(std::wstring name, IAppletPlatform& platform)
        : m_name(std::move(name)), m_platform(platform) {
        COvkLcdConnection::Instance(m_name);
    }
    CLcdAppletWindowT(const CLcdAppletWindowT&) = delete;
    CLcdAppletWindowT& operator=(const CLcdAppletWindowT&) = delete;
    virtual ~CLcdAppletWindowT() = default;

    WindowId Window() const { return m_window; }
    const std::wstring& Name() const { return m_name; }

    bool OnWindowMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                         std::intptr_t& result) override {
        if (static_cast<T*>(this)->ProcessMessage(message, wParam, lParam, result)) return true;
        return ProcessAppletMessage(message, wParam, result);
    }

protected:
    bool CreateHiddenWindow() {
        if (!m_window) m_window = m_platform.CreateHiddenWindow(*this);
        return m_window != 0;
    }
    IAppletPlatform& Platform() { return m_platform; }
    void ForgetWindow() { m_window = 0; }

private:
    bool ProcessAppletMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t& result) {
        if (message == kMsgNotification) {
            if (wParam == kLmNotifyDeviceArrival) {
                COvkLcdConnection::Instance().Update();
            } else if (wParam != kLmNotifyDeviceRemoval) {
                return false;
            }
            result = 0;
            return true;
        }
        if (message == kMsgButtonPressed) {
            if (wParam == kButtonMenu) m_platform.OpenControlPanel();
            result = 0;
            return true;
        }
        return false;
    }

    std::wstring m_name;
    IAppletPlatform& m_platform;
    WindowId m_window = 0;
};

}  // namespace qvx::lcd
