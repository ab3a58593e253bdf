// The device menu as a real popup menu: the marks Track sets, and choices made by keys while
// Track waits in the menu's loop, through the submenu too.
#include "nav/device_menu.h"
#include "nav/mcad_popup_menu_win32.h"
#include "nav/menu_desktop.h"
#include "support/settings/mouse_settings.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace qvx::nav {
namespace {

/// What runs inside the menu's loop once the menu is on screen, for the one test at a time.
std::function<void(HWND menuWindow)> g_inLoop;

BOOL CALLBACK FindMenu(HWND window, LPARAM out) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring(name) != L"#32768" || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(out) = window;
    return FALSE;
}

void CALLBACK LookForMenu(HWND, UINT, UINT_PTR id, DWORD) {
    HWND menu = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindMenu, reinterpret_cast<LPARAM>(&menu));
    if (!menu) return;
    KillTimer(nullptr, id);
    auto inLoop = std::exchange(g_inLoop, nullptr);
    if (inLoop) inLoop(menu);
}

void PostKeys(HWND window, std::initializer_list<WORD> keys) {
    for (WORD key : keys) {
        PostMessageW(window, WM_KEYDOWN, key, 0);
        PostMessageW(window, WM_KEYUP, key, 0);
    }
}

class PopupMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        WNDCLASSW wc{};
        wc.lpfnWndProc = DefWindowProcW;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = L"QvxPopupMenuTest";
        RegisterClassW(&wc);
        m_owner.Reset(CreateWindowExW(0, wc.lpszClassName, L"owner", WS_POPUP | WS_VISIBLE, 0, 0,
                                      200, 200, nullptr, nullptr, wc.hInstance, nullptr));
        ASSERT_TRUE(m_owner);
        SetForegroundWindow(m_owner.Get());
    }
    void TearDown() override { g_inLoop = nullptr; }

    /// Tracks the menu with `inLoop` run once it is on screen.
    std::uint32_t Track(s3dm::CMcadPopupMenu& menu, std::function<void(HWND)> inLoop) {
        g_inLoop = std::move(inLoop);
        SetTimer(nullptr, 0, 10, &LookForMenu);
        return menu.Track(20, 20, m_owner.Get(), nullptr, &m_settings);
    }

    ovklib::CWindowHandle m_owner;
    s3dm::C3dmouseSettings m_settings{L"QvxProENGINEER", nullptr};
};

TEST_F(PopupMenuTest, TrackMarksTheSettingsAndTheToggleChosenFlips) {
    m_settings.SetPanZoom(false);
    m_settings.SetSpeed(0.3f);
    s3dm::CMcadPopupMenu menu(0x0409);
    ASSERT_TRUE(menu.Create());
    std::uint32_t flagsInLoop = 0;
    std::uint32_t chosen = Track(menu, [&](HWND window) {
        HMENU handle = menu.Handle();
        EXPECT_TRUE(GetMenuState(handle, kMenuRotate, MF_BYCOMMAND) & MF_CHECKED);
        EXPECT_FALSE(GetMenuState(handle, kMenuPanZoom, MF_BYCOMMAND) & MF_CHECKED);
        EXPECT_TRUE(GetMenuState(handle, kMenuSpeedSlower, MF_BYCOMMAND) & MF_CHECKED);
        EXPECT_FALSE(GetMenuState(handle, kMenuSpeedMid, MF_BYCOMMAND) & MF_CHECKED);
        flagsInLoop = SystemMenuDesktop().GuiThreadFlags();
        PostKeys(window, {VK_DOWN, VK_RETURN});
    });
    EXPECT_EQ(chosen, kMenuRotate);
    EXPECT_FALSE(m_settings.GetRotation());
    EXPECT_FALSE(m_settings.GetPanZoom());
    EXPECT_TRUE(flagsInLoop & kGuiInMenuMode) << "a menu is in use while Track waits";
}

TEST_F(PopupMenuTest, SpeedIsChosenThroughTheSubmenuAndEscapeChoosesNothing) {
    s3dm::CMcadPopupMenu menu(0x0409);
    ASSERT_TRUE(menu.Create());
    std::uint32_t chosen = Track(menu, [](HWND window) {
        PostKeys(window,
                 {VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
    });
    EXPECT_EQ(chosen, kMenuSpeedFaster);
    EXPECT_FLOAT_EQ(m_settings.GetSpeed(), 2.0f);

    EXPECT_EQ(Track(menu, [](HWND window) { PostKeys(window, {VK_ESCAPE}); }), 0u);
    EXPECT_FLOAT_EQ(m_settings.GetSpeed(), 2.0f);
    EXPECT_TRUE(m_settings.GetRotation());
}

}  // namespace
}  // namespace qvx::nav
