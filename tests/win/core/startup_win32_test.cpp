// The Win32 steps of start and stop, for real: thread timers through the message loop, the
// text directory through the shell, and the module object's global interface table.
#include "core/module_win32.h"
#include "core/startup_platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qvx::core {
namespace {

namespace fs = std::filesystem;

int g_ticks = 0;
void CountTick() { ++g_ticks; }

void PumpUntil(ULONGLONG deadline, const bool& done) {
    MSG msg;
    while (!done && GetTickCount64() < deadline) {
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}

// Uses a 20 ms period: the timer under test is the same call with 2,000 ms.
TEST(ThreadTimerTest, FiresThroughTheMessageLoopAndStopsWhenKilled) {
    g_ticks = 0;
    std::uint32_t id = StartThreadTimer(0, 20, &CountTick);
    ASSERT_NE(id, 0u);
    bool done = false;
    ULONGLONG end = GetTickCount64() + 2000;
    while (g_ticks < 2 && GetTickCount64() < end) PumpUntil(GetTickCount64() + 10, done);
    EXPECT_GE(g_ticks, 2);
    StopThreadTimer(id);
    int after = g_ticks;
    PumpUntil(GetTickCount64() + 80, done);
    EXPECT_EQ(g_ticks, after);
}

TEST(TextDirectoryTest, ShellDeletesTheOldTreeAndTheCopyRecursesWithSpacesInNames) {
    fs::path root = fs::temp_directory_path() / "qvx text dir test";
    fs::remove_all(root);
    fs::create_directories(root / "home" / "text" / "sub dir" / "deeper");
    std::ofstream(root / "home" / "text" / "sub dir" / "deeper" / "x.txt") << "x";
    std::ofstream(root / "home" / "text" / "top.txt") << "t";
    fs::create_directories(root / "app" / "old");
    std::ofstream(root / "app" / "old" / "gone.txt") << "g";

    std::wstring text = PrepareTextDirectory((root / "app").wstring(), (root / "home").wstring());

    EXPECT_EQ(fs::path(text), root / "app" / "text");
    EXPECT_FALSE(fs::exists(root / "app" / "old"));
    EXPECT_TRUE(fs::exists(root / "app" / "text" / "top.txt"));
    EXPECT_TRUE(fs::exists(root / "app" / "text" / "sub dir" / "deeper" / "x.txt"));
    fs::remove_all(root);
}

TEST(TextDirectoryTest, EmptyHomeCopiesNothingButMakesTheFolders) {
    fs::path root = fs::temp_directory_path() / "qvx_text_dir_empty";
    fs::remove_all(root);
    fs::create_directories(root);
    std::wstring text = PrepareTextDirectory((root / "app").wstring(), L"");
    EXPECT_TRUE(fs::is_directory(root / "app" / "text"));
    EXPECT_TRUE(fs::is_empty(fs::path(text)));
    fs::remove_all(root);
}

// The directory is made one level deep only; with its parent missing there is nothing to
// prepare, and nothing else is touched.
TEST(TextDirectoryTest, MissingParentGivesNoTextDirectory) {
    fs::path root = fs::temp_directory_path() / "qvx_text_dir_no_parent";
    fs::remove_all(root);
    EXPECT_EQ(PrepareTextDirectory((root / "app").wstring(), L""), L"");
    EXPECT_FALSE(fs::exists(root));
}

struct RecordingRegistrar : IQvxRegistrar {
    HRESULT AddReplacement(const wchar_t* key, const wchar_t* item) override {
        keys += key;
        items += item;
        return S_OK;
    }
    std::wstring keys, items;
};

TEST(ModuleTest, GlobalInterfaceTableIsMadeOnceAndNullOutIsRefused) {
    CModule module;
    EXPECT_EQ(module.GetGITPtr(nullptr), static_cast<HRESULT>(0x80004003));
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    IGlobalInterfaceTable* first = nullptr;
    IGlobalInterfaceTable* second = nullptr;
    EXPECT_EQ(module.GetGITPtr(&first), S_OK);
    EXPECT_EQ(module.GetGITPtr(&second), S_OK);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    if (first) first->Release();
    if (second) second->Release();
    CoUninitialize();

    RecordingRegistrar registrar;
    EXPECT_EQ(module.AddCommonRGSReplacements(&registrar), S_OK);
    EXPECT_EQ(registrar.keys, L"APPID");
    EXPECT_EQ(registrar.items, L"");
    EXPECT_EQ(module.Lock(), 1);
    EXPECT_EQ(module.Unlock(), 0);
}

}  // namespace
}  // namespace qvx::core
