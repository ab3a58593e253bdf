#include "nav/mcad_popup_menu_win32.h"
#include "nav/menu_desktop.h"
#include "support/windows_api.h"

namespace qvx::nav {
namespace {

static_assert(kGuiInMenuMode == GUI_INMENUMODE);
static_assert(kGuiPopupMenuMode == GUI_POPUPMENUMODE);

class CWin32Desktop final : public IMenuDesktop {
public:
    std::uint32_t GuiThreadFlags() override {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(GetCurrentThreadId(), &info) ? info.flags : 0;
    }

    void SendAltKeyPair() override {
        INPUT keys[2] = {};
        for (INPUT& key : keys) {
            key.type = INPUT_KEYBOARD;
            key.ki.wVk = VK_MENU;
            key.ki.dwExtraInfo = static_cast<ULONG_PTR>(GetMessageExtraInfo());
        }
        keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, keys, sizeof(INPUT));
    }

    void* OwnForegroundWindow() override {
        HWND foreground = GetForegroundWindow();
        DWORD process = 0;
        if (!foreground || !GetWindowThreadProcessId(foreground, &process)) return nullptr;
        return process == GetCurrentProcessId() ? foreground : nullptr;
    }

    std::uint32_t TrackDeviceMenu(void* owner, std::uint16_t language,
                                  s3dm::I3dmouseSettings& settings) override {
        s3dm::CMcadPopupMenu menu(language);
        if (!menu.Create()) return 0;
        POINT cursor{};
        GetCursorPos(&cursor);
        return menu.Track(cursor.x, cursor.y, static_cast<HWND>(owner), nullptr, &settings);
    }
};

}  // namespace

IMenuDesktop& SystemMenuDesktop() {
    static CWin32Desktop desktop;
    return desktop;
}

}  // namespace qvx::nav
