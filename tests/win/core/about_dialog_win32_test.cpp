// The About dialog made from the plug-in DLL's own resources, driven through its real modal
// loop: a thread timer looks at the open dialog and then closes it one of the three ways.
#include "core/about_dialog.h"
#include "support/os.h"
#include "support/win32_handles.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

class AboutDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dll.Reset(LoadLibraryW(qvx::os::WidenUtf8(QVX_PLUGIN_DLL).c_str()));
        ASSERT_TRUE(m_dll);
    }

    /// Runs `inside` from the dialog's own modal loop, 50 ms after it started.
    static void WhileOpen(std::function<void()> inside) {
        s_inside = std::move(inside);
        SetTimer(nullptr, 0, 50, &RunInside);
    }
    static void CALLBACK RunInside(HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        s_inside();
    }

    static std::wstring Text(HWND window) {
        wchar_t text[256] = {};
        GetWindowTextW(window, text, 256);
        return text;
    }

    ovklib::CModuleHandle m_dll;
    static inline std::function<void()> s_inside;
};

TEST_F(AboutDialogTest, VersionIsTheFileVersionsFirstThreeNumbersOrEmptyWithoutABlock) {
    EXPECT_EQ(qvx::core::ModuleVersionText(m_dll.Get()), L"2.4.18129");
    EXPECT_EQ(qvx::core::ModuleVersionText(GetModuleHandleW(nullptr)), L"")
        << "the test program has no version block";
}

TEST_F(AboutDialogTest, OpensCentredWithTitleNoticeIconAndPictureAndOkEndsIt) {
    HWND parent = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 100, 80, 600, 400,
                                  nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(parent, nullptr);
    CAboutDialog about(m_dll.Get());
    WhileOpen([&] {
        HWND dialog = static_cast<HWND>(about.Window());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(Text(dialog), L"QvxProENGINEER");
        std::wstring notice = Text(GetDlgItem(dialog, qvx::core::kAboutVersionTextId));
        EXPECT_EQ(notice.rfind(L"Version 2.4.18129\n", 0), 0u) << qvx::os::NarrowUtf8(notice);
        EXPECT_NE(SendMessageW(dialog, WM_GETICON, ICON_SMALL, 0), 0);
        EXPECT_NE(
            SendDlgItemMessageW(dialog, qvx::core::kAboutPictureId, STM_GETIMAGE, IMAGE_BITMAP, 0),
            0);
        RECT d{}, p{};
        GetWindowRect(dialog, &d);
        GetWindowRect(parent, &p);
        EXPECT_NEAR((d.left + d.right) / 2.0, (p.left + p.right) / 2.0, 1.0);
        EXPECT_NEAR((d.top + d.bottom) / 2.0, (p.top + p.bottom) / 2.0, 1.0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(about.DoModal(parent, 0), IDOK);
    EXPECT_EQ(about.Window(), nullptr);
    DestroyWindow(parent);
}

TEST_F(AboutDialogTest, CancelEndsWithTwoAndDestroyingEndsTheLoopToo) {
    CAboutDialog about(m_dll.Get());
    WhileOpen([&] { PostMessageW(static_cast<HWND>(about.Window()), WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(about.DoModal(nullptr, 0), IDCANCEL);

    // What a second choice of the menu entry does while the dialog runs.
    WhileOpen([&] { about.Destroy(); });
    EXPECT_EQ(about.DoModal(nullptr, 0), 0);
    EXPECT_EQ(about.Window(), nullptr);
}

}  // namespace
