// The Win32 steps of start and stop, for real: thread timers through the message loop, the
// text directory through the shell, and the module object's global interface table.
#include "core/module_win32.h"
#include "core/startup_platform.h"
#include "support/boundary.h"
#include "support/main_loop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace qvx::core {
namespace {

namespace fs = std::filesystem;

int g_ticks = 0;
void CountTick() { ++g_ticks; }
void ThrowingTick() {
    ++g_ticks;
    throw std::runtime_error("configuration unreadable");
}

// These are about the system's timers, so they wait in real time: a 10 ms period stands for
// the plug-in's 2,000 ms, and each wait ends as soon as the ticks are in (or after 500 ms, a
// limit that only a broken timer reaches).
void PumpUntilTicks(int ticks) {
    for (int i = 0; i < 50 && g_ticks < ticks; ++i) SystemMainLoop().PumpMessages(10);
}

TEST(ThreadTimerTest, FiresThroughTheMessageLoopAndStopsWithItsOwner) {
    g_ticks = 0;
    {
        CThreadTimer timer;
        ASSERT_TRUE(timer.Start(10, &CountTick));
        EXPECT_NE(timer.Id(), 0u);
        PumpUntilTicks(2);
        EXPECT_GE(g_ticks, 2);
        CThreadTimer moved = std::move(timer);
        EXPECT_EQ(timer.Id(), 0u);
        const int ticks = g_ticks;
        PumpUntilTicks(ticks + 1);
        EXPECT_GT(g_ticks, ticks) << "the moved timer runs on";
    }
    const int after = g_ticks;
    SystemMainLoop().PumpMessages(50);
    EXPECT_EQ(g_ticks, after) << "the owner's end killed the timer";
}

TEST(ThreadTimerTest, PollThatThrowsIsStoppedAtTheTimersEntryAndTicksOn) {
    g_ticks = 0;
    const std::uint64_t before = BoundaryCatchCount();
    ::testing::internal::CaptureStdout();
    {
        CThreadTimer timer;
        ASSERT_TRUE(timer.Start(10, &ThrowingTick));
        PumpUntilTicks(2);
    }
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_GE(g_ticks, 2);
    EXPECT_EQ(BoundaryCatchCount() - before, static_cast<std::uint64_t>(g_ticks));
    EXPECT_EQ(out.rfind("OnThreadTimer failed error=configuration unreadable\n", 0), 0u) << out;
}

// A message whose arrival the thread has already seen, by a peek for other messages, does
// not wake a wait for new input; the pump must still dispatch it within its time. This is how
// a zoom's frames missed the host's timed button release after the mouse tracking's peeks.
TEST(ThreadTimerTest, PumpDispatchesATimerMessageTheThreadHasAlreadySeen) {
    g_ticks = 0;
    CThreadTimer timer;
    ASSERT_TRUE(timer.Start(10, &CountTick));
    Sleep(40);
    MSG msg;
    PeekMessageW(&msg, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);
    for (int i = 0; i < 5 && g_ticks == 0; ++i) SystemMainLoop().PumpMessages(16);
    EXPECT_GE(g_ticks, 1);
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

// Counts what its owner does to it, in place of a COM object.
struct CCountedInterface {
    ULONG Release() { return static_cast<ULONG>(++releases); }
    int releases = 0;
};

TEST(ComOwnerTest, ReleasesOnceWhateverWayTheReferenceTravels) {
    CCountedInterface a, b;
    {
        ovklib::CComOwner<CCountedInterface> owner(&a);
        ovklib::CComOwner<CCountedInterface> moved(std::move(owner));
        EXPECT_FALSE(owner);
        EXPECT_EQ(a.releases, 0);
        moved = ovklib::CComOwner<CCountedInterface>(&b);
        EXPECT_EQ(a.releases, 1) << "the reference replaced by the move is given back";
        EXPECT_EQ(moved.Take(), &b);
    }
    EXPECT_EQ(a.releases, 1);
    EXPECT_EQ(b.releases, 0) << "a reference taken away is the taker's to release";
}

}  // namespace
}  // namespace qvx::core
