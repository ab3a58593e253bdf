// The shim talking to a loaded library: the error variable, a driver that stops and starts
// again, null outputs, and what the simulated driver records of what it is told.
#include "shim_fixture.h"

#include <cstring>

namespace qvx::testing {
namespace {

/// The simulated driver's error for calls made while it is stopped.
constexpr std::int32_t kDriverStopped = 1;

OxHandle Open(const char* app) {
    OxWinData data{};
    OxOpenWinInit(&data, nullptr);
    return OxOpen(app, -1, 0, 9, &data);
}

TEST_F(ShimTest, LastErrorIsTheLibrarysAfterEachCallExceptForTheTwoThatDoNotCopyIt) {
    Hold(L"full");
    EXPECT_EQ(OxClose(999), kOxBadHandle);
    EXPECT_EQ(g_lastError, kOxBadHandle);
    OxHandle handle = Open("unit");
    ASSERT_NE(handle, 0u);
    EXPECT_EQ(g_lastError, kOxNoError);

    g_lastError = kOxBadHandle;
    EXPECT_STREQ(KvwErrorString(kOxNotEnoughMemory), "OX_NOT_ENOUGH_MEMORY");
    EXPECT_NE(OxGetConnectionID(handle), 0u);
    EXPECT_EQ(g_lastError, kOxBadHandle) << "neither copies the error variable";
}

TEST_F(ShimTest, StoppedDriverIsLetGoAndFoundAgainAfterItRestarts) {
    auto& driver = Hold(L"full");
    OxHandle before = Open("unit");
    ASSERT_NE(before, 0u);
    ASSERT_TRUE(OxIsDriverAlive());

    driver.SimDriverStop();
    EXPECT_FALSE(OxIsDriverAlive());
    EXPECT_EQ(g_loadState, kOxNotLoaded);
    EXPECT_EQ(driver.SimDriverCallCount("OxTerminate"), 1u);

    // The next wrapper loads afresh; the library answers, but the driver does not.
    EXPECT_EQ(OxGetNumDevices(), -1);
    EXPECT_EQ(g_loadState, kOxLoaded);
    EXPECT_EQ(g_lastError, kDriverStopped);
    EXPECT_EQ(Open("unit"), 0u);

    driver.SimDriverStart();
    EXPECT_TRUE(OxIsDriverAlive());
    OxHandle after = Open("unit");
    EXPECT_NE(after, 0u);
    EXPECT_EQ(OxClose(before), kOxBadHandle) << "a restarted driver knows no old connection";
    EXPECT_EQ(OxClose(after), kOxNoError);
}

TEST_F(ShimTest, NullOutputsGiveAFailureValue) {
    Hold(L"full");
    OxHandle handle = Open("unit");
    ASSERT_NE(handle, 0u);
    OxGetLibraryInfo(nullptr);
    OxOpenWinInit(nullptr, nullptr);
    OxGetEventWinInit(nullptr, 0, 0, 0);
    EXPECT_EQ(OxOpen("unit", -1, 0, 9, nullptr), 0u);
    EXPECT_EQ(OxGetDriverInfo(nullptr), kOxBadValue);
    EXPECT_EQ(OxGetDeviceInfo(handle, nullptr), kOxBadValue);
    EXPECT_EQ(OxGetEvent(handle, 1, nullptr, nullptr), kOxBadValue);
    EXPECT_EQ(OxAppCfgGetValue(handle, "key", nullptr, nullptr), kOxBadValue);
    EXPECT_EQ(OxSyncGetFilter(handle, 1, nullptr), kOxBadValue);
    EXPECT_EQ(OxButtonPressed(nullptr), -1);

    // These two the shim refuses itself, before the library sees them.
    std::uint32_t before = 0;
    EXPECT_EQ(OxSyncGetCurrentButtonBank(handle, nullptr, 16), kOxBadValue);
    EXPECT_EQ(OxSyncInvokeActionID(handle, ""), kOxBadValue);
    EXPECT_EQ(OxSyncInvokeActionID(0, "Fit"), kOxBadValue);
    EXPECT_EQ(OxSyncInvokeActionID(handle, nullptr), kOxBadValue);
    EXPECT_EQ(OxAppCfgGetValue(handle, "key", nullptr, &before), kOxBadValue);
}

TEST_F(ShimTest, DriverReportsItsVersionAndDevice) {
    auto& driver = Hold(L"full");
    OxVersionInfo version{};
    ASSERT_EQ(OxGetDriverInfo(&version), kOxNoError);
    EXPECT_GE(version.major, 10);

    driver.SimDriverSetVersion(9, 2, 0);
    driver.SimDriverSetDevice(6, "Two-button mouse");
    ASSERT_EQ(OxGetDriverInfo(&version), kOxNoError);
    EXPECT_EQ(version.major, 9);
    EXPECT_STREQ(version.version, "9.2.0");

    OxHandle handle = Open("unit");
    OxDeviceInfo device{};
    ASSERT_EQ(OxGetDeviceInfo(handle, &device), kOxNoError);
    EXPECT_EQ(device.deviceType, 6u);
    EXPECT_STREQ(device.name, "Two-button mouse");
}

TEST_F(ShimTest, RefusedFunctionFailsWithTheChosenError) {
    auto& driver = Hold(L"full");
    OxHandle handle = Open("unit");
    driver.SimDriverRefuse("OxAppCmdActivateActionSet", kOxNotEnoughMemory);
    EXPECT_EQ(OxAppCmdActivateActionSet(handle, "Part"), kOxNotEnoughMemory);
    EXPECT_EQ(g_lastError, kOxNotEnoughMemory);
    driver.SimDriverRefuse("OxAppCmdActivateActionSet", kOxNoError);
    EXPECT_EQ(OxAppCmdActivateActionSet(handle, "Part"), kOxNoError);
    EXPECT_EQ(driver.Record("active-action-set"), "Part");

    driver.SimDriverRefuse("OxOpen", kOxBadValue);
    EXPECT_EQ(Open("unit"), 0u);
    EXPECT_EQ(g_lastError, kOxBadValue);
}

TEST_F(ShimTest, DriverRecordsTheTreeTheValuesAndTheMessageBoxes) {
    auto& driver = Hold(L"full");
    OxHandle handle = Open("qvx");
    ASSERT_NE(handle, 0u);

    oxActionNodeEx_s action{sizeof(oxActionNodeEx_s), 2, nullptr, nullptr, "Fit", "Refit", ""};
    oxActionNodeEx_s category{sizeof(oxActionNodeEx_s), 1, nullptr, &action, "View", "View", ""};
    oxActionNodeEx_s root{sizeof(oxActionNodeEx_s), 0, nullptr, &category, "Part", "Part", ""};
    ASSERT_EQ(OxAppCmdWriteActions(handle, &root), kOxNoError);
    EXPECT_EQ(driver.Record("actions"),
              "node\t0\t0\tPart\tPart\t\nnode\t1\t1\tView\tView\t\nnode\t2\t2\tFit\tRefit\t\n");

    ASSERT_EQ(OxAppCfgSetValue(handle, "Zoom", "1.5"), kOxNoError);
    char value[8];
    std::uint32_t size = 3;
    EXPECT_EQ(OxAppCfgGetValue(handle, "Zoom", value, &size), kOxNotEnoughMemory);
    EXPECT_EQ(size, 4u) << "the length the value needs";
    size = sizeof value;
    ASSERT_EQ(OxAppCfgGetValue(handle, "Zoom", value, &size), kOxNoError);
    EXPECT_STREQ(value, "1.5");
    EXPECT_EQ(driver.Record("config:Zoom"), "1.5");

    driver.SimDriverSetMessageBoxAnswer(7);
    EXPECT_EQ(OxMessageBox(nullptr, "Hello", "Title", 0x40), 7);
    EXPECT_EQ(driver.Record("message-box"), "Title | Hello | 64");

    std::string log = driver.Log();
    EXPECT_NE(log.find("OxOpen app=\"qvx\" device=-1 mask=0 mode=9"), std::string::npos) << log;
    EXPECT_NE(log.find("OxAppCmdWriteActions handle=1 root=\"Part\" nodes=3"), std::string::npos)
        << log;
}

}  // namespace
}  // namespace qvx::testing
