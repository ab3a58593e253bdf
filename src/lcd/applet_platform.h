// What the applet window needs of the platform, behind one interface: its hidden window and
// that window's timers and posted messages, the look for the manager's window, and the
// manager's control panel. The Win32 one is real; tests put in their own.
#pragma once

#include <cstdint>

namespace qvx::lcd {

using WindowId = std::uintptr_t;

/// Messages of the applet window.
constexpr std::uint32_t kMsgClose = 0x0010;          ///< WM_CLOSE
constexpr std::uint32_t kMsgTimer = 0x0113;          ///< WM_TIMER
constexpr std::uint32_t kMsgButtonPressed = 0x410;   ///< wParam: the buttons that went down
constexpr std::uint32_t kMsgButtonReleased = 0x411;  ///< wParam: the buttons that changed
constexpr std::uint32_t kMsgNotification = 0x420;    ///< wParam: the notification code
constexpr std::uint32_t kMsgDataChanged = 0x8020;    ///< wParam 1

/// Receives the messages of the applet's window, on the window's thread.
class IAppletWindowHandler {
public:
    /// True when handled; `result` is then the window procedure's result.
    virtual bool OnWindowMessage(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                                 std::intptr_t& result) = 0;

protected:
    ~IAppletWindowHandler() = default;
};

class IAppletPlatform {
public:
    /// A hidden window whose messages go to `handler`; 0 when none could be made.
    virtual WindowId CreateHiddenWindow(IAppletWindowHandler& handler) = 0;
    /// Sends the window WM_CLOSE, which destroys it.
    virtual void CloseWindow(WindowId window) = 0;
    virtual bool IsWindow(WindowId window) = 0;
    /// Starts (or restarts) the window's timer `id`.
    virtual bool StartTimer(WindowId window, std::uint32_t id, std::uint32_t ms) = 0;
    virtual void StopTimer(WindowId window, std::uint32_t id) = 0;
    /// Whether the LCD manager's window exists, i.e. the manager runs.
    virtual bool ManagerRunning() = 0;
    /// Posts a message to the window; any thread may call this.
    virtual bool Post(WindowId window, std::uint32_t message, std::uintptr_t wParam,
                      std::intptr_t lParam) = 0;
    /// Runs the manager's control panel, found through its installation folder; nothing
    /// when that is not known.
    virtual void OpenControlPanel() = 0;
    /// A timer of `ms` on `window` whose end calls `expired` with the window and the timer's
    /// id (on the window's thread) instead of sending the window a message; the id, 0 when
    /// none was made. One such callback serves the process.
    virtual std::uintptr_t StartCallbackTimer(WindowId, std::uint32_t /*ms*/,
                                              void (*/*expired*/)(WindowId, std::uintptr_t)) {
        return 0;
    }
    virtual void StopCallbackTimer(WindowId, std::uintptr_t /*id*/) {}

protected:
    ~IAppletPlatform() = default;
};

/// The platform's own (natively: no windows, no manager).
IAppletPlatform& SystemAppletPlatform();

}  // namespace qvx::lcd
