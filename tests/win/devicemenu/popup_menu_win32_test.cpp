// The device menu as a real popup menu: its items, the marks Track sets, and choices made by
// keys while Track waits in the menu's loop.
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

TEST_F(PopupMenuTest, MenuHoldsTheTogglesTheSpeedSubmenuAndTheDriversPanel) {
    s3dm::CMcadPopupMenu menu(0x0409);
    ASSERT_TRUE(menu.Create());
    HMENU handle = menu.Handle();
    ASSERT_EQ(GetMenuItemCount(handle), 5);
    EXPECT_EQ(GetMenuItemID(handle, 0), kMenuRotate);
    EXPECT_EQ(GetMenuItemID(handle, 1), kMenuPanZoom);
    EXPECT_TRUE(GetMenuState(handle, 2, MF_BYPOSITION) & MF_SEPARATOR);
    EXPECT_EQ(GetMenuItemID(handle, 4), kMenuCustomizeButtons);
    HMENU speeds = GetSubMenu(handle, 3);
    ASSERT_NE(speeds, nullptr);
    ASSERT_EQ(GetMenuItemCount(speeds), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(GetMenuItemID(speeds, i), kSpeedRows[i].id) << i;
    wchar_t text[64] = {};
    GetMenuStringW(handle, kMenuSpeedMid, text, 64, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"Mid\u25A0\u25A0\u25A0");
    GetMenuStringW(handle, 3, text, 64, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Speed");
}

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
