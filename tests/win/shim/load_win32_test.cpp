// Loading the library: the loader's results, what a failed load leaves, unloading at
// terminate and loading afresh after it.
#include "shim_fixture.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace qvx::testing {
namespace {

namespace fs = std::filesystem;

TEST_F(ShimTest, CompleteLibraryLoadsAndTheFirstWrapperInitialisesIt) {
    auto& driver = Hold(L"full");
    EXPECT_EQ(OxGetNumDevices(), 1);
    EXPECT_EQ(g_loadState, kOxLoaded);
    EXPECT_EQ(driver.SimDriverCallCount("OxInitialize"), 1u);
}

TEST_F(ShimTest, MissingRequiredNameFailsTheLoadButLeavesTheLibraryLoaded) {
    PutOnPath(SimDriverFolder(L"no-required"));
    EXPECT_EQ(OxLoadLibrary(), kOxLoadRequiredMissing);
    EXPECT_EQ(g_loadState, kOxLoadFailed);
    EXPECT_NE(GetModuleHandleW(L"oxappdll.dll"), nullptr);

    EXPECT_EQ(OxInitialize(), kOxLibraryMissing);
    EXPECT_EQ(OxOpen("test", -1, 0, 9, nullptr), 0u);
    EXPECT_EQ(g_lastError, kOxLibraryMissing);

    // The message box is the one wrapper that still calls through a failed load, since
    // the walk bound its entry.
    g_lastError = kOxLibraryMissing;
    EXPECT_EQ(OxMessageBox(nullptr, "text", "caption", 0), 1);
    EXPECT_EQ(g_lastError, kOxNoError) << "copied from the library after the call";
}

TEST_F(ShimTest, MissingErrorVariableFailsTheLoadWithItsOwnResult) {
    PutOnPath(SimDriverFolder(L"no-error-variable"));
    EXPECT_EQ(OxLoadLibrary(), kOxLoadNoErrorVariable);
    EXPECT_EQ(g_loadState, kOxLoadFailed);
    EXPECT_EQ(OxGetNumDevices(), -1);
    // With no error variable to copy, the failed load's code stays.
    EXPECT_EQ(OxMessageBox(nullptr, "text", "caption", 0), 1);
    EXPECT_EQ(g_lastError, kOxLibraryMissing);
}

TEST_F(ShimTest, TruncatedLibraryCountsAsAbsent) {
    fs::path folder = fs::temp_directory_path() / "qvx_truncated_driver";
    fs::create_directories(folder);
    {
        std::ifstream in(fs::path(SimDriverFolder(L"full")) / "oxappdll.dll", std::ios::binary);
        std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
        ASSERT_GT(bytes.size(), 4096u);
        std::ofstream(folder / "oxappdll.dll", std::ios::binary).write(bytes.data(), 4096);
    }
    PutOnPath(folder.wstring());
    EXPECT_EQ(OxLoadLibrary(), kOxLoadNoLibrary);
    EXPECT_EQ(OxGetNumDevices(), -1);
    EXPECT_EQ(g_lastError, kOxLibraryMissing);
    SetDllDirectoryW(nullptr);
    fs::remove_all(folder);
}

// A failed load is not final: the library that appears later is loaded by the next wrapper.
TEST_F(ShimTest, LoadIsRetriedAfterAFailure) {
    EXPECT_EQ(OxGetNumDevices(), -1);
    EXPECT_EQ(g_loadState, kOxLoadFailed);
    PutOnPath(SimDriverFolder(L"full"));
    EXPECT_EQ(OxGetNumDevices(), 1);
    EXPECT_EQ(g_loadState, kOxLoaded);
}

TEST_F(ShimTest, TerminateUnloadsAndTheNextWrapperLoadsAfresh) {
    PutOnPath(SimDriverFolder(L"full"));
    ASSERT_EQ(OxGetNumDevices(), 1);
    ASSERT_NE(GetModuleHandleW(L"oxappdll.dll"), nullptr);

    EXPECT_EQ(OxTerminate(), kOxNoError);
    EXPECT_EQ(g_loadState, kOxNotLoaded);
    EXPECT_EQ(GetModuleHandleW(L"oxappdll.dll"), nullptr);
    EXPECT_EQ(OxTerminate(), kOxLibraryMissing) << "nothing left to terminate";

    EXPECT_EQ(OxGetNumDevices(), 1);
    EXPECT_EQ(g_loadState, kOxLoaded);
}

TEST_F(ShimTest, AliveTestNeverLoadsTheLibrary) {
    PutOnPath(SimDriverFolder(L"full"));
    EXPECT_FALSE(OxIsDriverAlive());
    EXPECT_EQ(g_loadState, kOxNotLoaded);
    EXPECT_EQ(GetModuleHandleW(L"oxappdll.dll"), nullptr);
}

}  // namespace
}  // namespace qvx::testing
