// The applet's platform on Win32: a hidden window of its own class whose procedure hands
// every message to the applet behind the boundary, its timers, the manager's window by class
// name, and the control panel found through the manager's installation folder.
#include "lcd/applet_platform.h"

#include "support/boundary.h"
#include "support/module_of_code_win32.h"
#include "support/registry.h"
#include "support/windows_api.h"

#include <shellapi.h>

namespace qvx::lcd {
namespace {

constexpr wchar_t kWindowClass[] = L"QvxProENGINEER LCD Applet";
constexpr wchar_t kManagerWindowClass[] = L"Lorimet LCD Monitor Window";
constexpr wchar_t kManagerKey[] = L"Software\\Lorimet\\LCD Software\\LCD Manager\\CurrentVersion";
constexpr std::size_t kPathChars = 260;

HWND AsWindow(WindowId window) { return reinterpret_cast<HWND>(window); }

LRESULT CALLBACK AppletWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* handler =
        reinterpret_cast<IAppletWindowHandler*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_NCDESTROY) SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (handler && message != WM_NCCREATE && message != WM_NCDESTROY) {
        std::intptr_t result = 0;
        bool handled = qvx::CallAtBoundary("CLcdAppletWindowT::WindowProc", true, [&] {
            return handler->OnWindowMessage(message, wParam, lParam, result);
        });
        if (handled) return result;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

/// The callback of the timers StartCallbackTimer makes.
void (*g_timerExpired)(WindowId, std::uintptr_t) = nullptr;

void CALLBACK CallbackTimerProc(HWND window, UINT, UINT_PTR id, DWORD) {
    qvx::CallAtBoundary("CLcdProeDataImpl::TimerProc", [&] {
        if (g_timerExpired) g_timerExpired(reinterpret_cast<WindowId>(window), id);
    });
}

class CWin32AppletPlatform : public IAppletPlatform {
public:
    WindowId CreateHiddenWindow(IAppletWindowHandler& handler) override {
        HINSTANCE instance = ModuleOfThisCode();
        WNDCLASSEXW record{};
        record.cbSize = sizeof(record);
        record.lpfnWndProc = &AppletWindowProc;
        record.hInstance = instance;
        record.lpszClassName = kWindowClass;
        // A class of that name registered before has this procedure and serves as well.
        RegisterClassExW(&record);
        HWND window =
            CreateWindowExW(/*dwExStyle=*/0, kWindowClass, L"", WS_POPUP, 0, 0, 1, 1,
                            /*hWndParent=*/nullptr, /*hMenu=*/nullptr, instance, &handler);
        return reinterpret_cast<WindowId>(window);
    }

    void CloseWindow(WindowId window) override {
        SendMessageW(AsWindow(window), WM_CLOSE, 0, 0);
        // The system keeps a class a library registered after the library is gone; with no
        // window left the class goes, so that a library loaded again registers its own.
        UnregisterClassW(kWindowClass, ModuleOfThisCode());
    }

    bool IsWindow(WindowId window) override { return ::IsWindow(AsWindow(window)) != FALSE; }

    bool StartTimer(WindowId window, std::uint32_t id, std::uint32_t ms) override {
        return SetTimer(AsWindow(window), id, ms, nullptr) != 0;
    }

    void StopTimer(WindowId window, std::uint32_t id) override { KillTimer(AsWindow(window), id); }

    bool ManagerRunning() override { return FindWindowW(kManagerWindowClass, nullptr) != nullptr; }

    bool Post(WindowId window, std::uint32_t message, std::uintptr_t wParam,
              std::intptr_t lParam) override {
        return PostMessageW(AsWindow(window), message, wParam, lParam) != FALSE;
    }

    void OpenControlPanel() override {
        auto folder = qvx::os::ReadRegistryString(qvx::os::RegistryRoot::LocalMachine, kManagerKey,
                                                  L"InstallPath", kPathChars);
        if (!folder || folder->empty()) return;
        std::wstring panel = *folder + L"\\LmLcdCpl.cpl";
        ShellExecuteW(nullptr, nullptr, panel.c_str(), nullptr, nullptr, /*nShowCmd=*/1);
    }

    std::uintptr_t StartCallbackTimer(WindowId window, std::uint32_t ms,
                                      void (*expired)(WindowId, std::uintptr_t)) override {
        g_timerExpired = expired;
        // A thread timer hands out an id no other timer of the thread has; the window's timer
        // then takes that id, and the placeholder goes.
        UINT_PTR fresh = SetTimer(nullptr, 0, 0x7FFFFFFF, nullptr);
        if (fresh == 0) return 0;
        KillTimer(nullptr, fresh);
        return SetTimer(AsWindow(window), fresh, ms, &CallbackTimerProc);
    }

    void StopCallbackTimer(WindowId window, std::uintptr_t id) override {
        KillTimer(AsWindow(window), id);
    }

private:
    static HINSTANCE ModuleOfThisCode() {
        return qvx::os::ModuleContaining(reinterpret_cast<const void*>(&AppletWindowProc));
    }
};

}  // namespace

IAppletPlatform& SystemAppletPlatform() {
    static CWin32AppletPlatform platform;
    return platform;
}

}  // namespace qvx::lcd
