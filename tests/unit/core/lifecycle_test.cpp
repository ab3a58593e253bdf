// The plug-in's life in the simulated host, from user_initialize_plus to user_terminate_plus.
#include "plugin_fixture.h"
#include "core/startup_platform.h"
#include "support/boundary.h"

#include <fstream>

namespace qvx::testing {
namespace {

using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

TEST_F(PluginTest, VersionGetsTheProductNameUnlessItSaysWildfire) {
    EXPECT_EQ(CQvxProE(L"8.0.4.0").Version(), L"Creo Parametric 8.0.4.0");
    EXPECT_EQ(CQvxProE(L"Wildfire 4.0").Version(), L"Wildfire 4.0");
    EXPECT_EQ(CQvxProE(nullptr).Version(), L"Creo Parametric ");
}

TEST_F(PluginTest, ConstructorTakesTheLanguageFromProLang) {
    os::SetEnv(L"PRO_LANG", std::wstring(L"French"));
    CQvxProE plugin(L"x");
    EXPECT_EQ(g_langId, 0x040C);
    EXPECT_EQ(g_langCode, L"fr-FR");
}

TEST_F(PluginTest, LoadMakesOneRunningObjectAndASecondLoadKeepsIt) {
    EXPECT_EQ(Load(), 0);
    ASSERT_TRUE(g_qvxProE);
    CQvxProE* first = g_qvxProE.get();
    EXPECT_NE(first->TimerId(), 0u);
    EXPECT_EQ(m_loop.PeriodOf(first->TimerId()), 2000u);
    EXPECT_EQ(Load(), 0);
    EXPECT_EQ(g_qvxProE.get(), first);
}

TEST_F(PluginTest, TerminateWithoutObjectStillWritesItsLine) {
    CaptureStdout();
    user_terminate();
    user_terminate();
    EXPECT_EQ(GetCapturedStdout(), "user_terminate\nuser_terminate\n");
    EXPECT_FALSE(g_qvxProE);
}

TEST_F(PluginTest, WideCharacterMismatchIsReportedEverywhereAndMakesNoObject) {
    sim::CSession& host = sim::CSession::Instance();
    host.wcharSize = 4;
    CaptureStdout();
    EXPECT_EQ(Load(), 0);
    std::string out = GetCapturedStdout();
    const std::string text = "ERROR wchar_t Incorrect size (2). Should be: 4";
    EXPECT_FALSE(g_qvxProE);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0], text);
    EXPECT_EQ(out, text + "\n");
    EXPECT_STREQ(host.errorText, text.c_str());
}

TEST_F(PluginTest, HostFunctionThrowingIntoTheExportStopsAtItsBoundary) {
    sim::CSession& host = sim::CSession::Instance();
    host.wcharSize = 4;
    host.faults["ProMessageDisplay"].kind = sim::CSession::EFault::Throw;
    std::uint64_t caught = BoundaryCatchCount();
    CaptureStdout();
    EXPECT_EQ(Load(), 0);
    std::string out = GetCapturedStdout();
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
    EXPECT_NE(out.find("user_initialize failed error=simulated host failure in ProMessageDisplay"),
              std::string::npos)
        << out;
    EXPECT_FALSE(g_qvxProE);
    // The process goes on, and the next load of a matching host runs.
    host.faults.clear();
    host.wcharSize = 2;
    EXPECT_EQ(Load(), 0);
    EXPECT_TRUE(g_qvxProE);
}

TEST_F(PluginTest, MismatchWithoutTheMessageFunctionStillFillsTheErrorBuffer) {
    sim::CSession& host = sim::CSession::Instance();
    host.wcharSize = 1;
    host.Omit("ProMessageDisplay");
    CaptureStdout();
    Load();
    std::string out = GetCapturedStdout();
    EXPECT_NE(out.find("couldn't find pointer to ProE-side function ProMessageDisplay_v"),
              std::string::npos);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_STREQ(host.errorText, "ERROR wchar_t Incorrect size (2). Should be: 1");
}

TEST_F(PluginTest, MissingRegistryValueLeavesHomeEmptyAndStartGoesOn) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_TRUE(g_qvxProE->HomeDirectory().empty());
}

TEST_F(PluginTest, TextDirectoryIsEmptiedAndFilledFromTheInstallationRecursively) {
    std::filesystem::create_directories(m_scratch / "home" / "text" / "usascii" / "deep");
    std::ofstream(m_scratch / "home" / "text" / "qvxproengineer.txt") << "menu";
    std::ofstream(m_scratch / "home" / "text" / "usascii" / "deep" / "a.gif") << "gif";
    std::filesystem::create_directories(m_scratch / "apptext");
    std::ofstream(m_scratch / "apptext" / "stale.txt") << "old";
    SetHomeDirectory(Scratch("home"));
    sim::CSession::Instance().textDirectory = Scratch("apptext");

    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_EQ(g_qvxProE->HomeDirectory(), Scratch("home"));
    auto text = std::filesystem::path(g_qvxProE->TextDirectory());
    EXPECT_EQ(text, m_scratch / "apptext" / "text");
    EXPECT_FALSE(std::filesystem::exists(m_scratch / "apptext" / "stale.txt"));
    EXPECT_TRUE(std::filesystem::exists(text / "qvxproengineer.txt"));
    EXPECT_TRUE(std::filesystem::exists(text / "usascii" / "deep" / "a.gif"));
}

TEST_F(PluginTest, TextDirectoryThatDoesNotExistYetIsCreated) {
    sim::CSession::Instance().textDirectory = Scratch("fresh");
    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_TRUE(std::filesystem::is_directory(m_scratch / "fresh" / "text"));
}

TEST_F(PluginTest, StopTwiceEndsTheTimerOnce) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_EQ(g_qvxProE->Stop(), 0);
    EXPECT_EQ(g_qvxProE->TimerId(), 0u);
    EXPECT_EQ(m_loop.RunningTimers(), 0u);
    EXPECT_EQ(g_qvxProE->Stop(), 0);
    EXPECT_TRUE(g_qvxProE->Commands().empty());
}

}  // namespace
}  // namespace qvx::testing
