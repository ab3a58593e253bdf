// The log files: the exact line on disk, a line end in the message, and writes that fail.
#include "support/logfile.h"
#include "support/os.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

qvx::os::TimeOfDay FixedTime() { return {14, 3, 7, 5}; }

class LogfileTest : public ::testing::Test {
protected:
    void SetUp() override {
        qvx::SetLogClock(&FixedTime);
        fs::remove_all(m_home);
        fs::create_directories(m_home);
        m_savedHome = qvx::os::GetEnv(L"HOME");
        qvx::os::SetEnv(L"HOME", qvx::os::WidenUtf8(m_home.string()));
    }
    void TearDown() override {
        qvx::SetLogClock(nullptr);
        qvx::os::SetEnv(L"HOME", m_savedHome);
        fs::remove_all(m_home);
    }
    /// Under Wine the roaming folder is the prefix's own and outlives the run.
    static void Remove(const std::wstring& path) {
        std::error_code ec;
        fs::remove(fs::path(qvx::os::NarrowUtf8(path)), ec);
#ifdef _WIN32
        fs::remove(fs::path(path), ec);
#endif
    }
    static std::string Read(const std::wstring& path) {
        auto bytes = qvx::os::ReadWholeFile(path);
        return bytes ? std::string(bytes->Data(), bytes->Length()) : std::string("<none>");
    }

    fs::path m_home = fs::temp_directory_path() / "qvx_logfile_test";
    std::optional<std::wstring> m_savedHome;
};

TEST_F(LogfileTest, LinesCarryTheTimeWithBareMillisecondsAndEndInCrCrLf) {
    EXPECT_EQ(qvx::FormatLogLine({9, 0, 59, 123}, "x"), "09:00:59.123: x\r\r\n");
    CQvxLogfile log(L"qvxcreo-test.log");
    Remove(log.Path());
    EXPECT_TRUE(log.Write("first"));
    EXPECT_TRUE(log.Write("Exception\nwhat"));
    EXPECT_EQ(Read(log.Path()),
              "14:03:07.5: first\r\r\n"
              "14:03:07.5: Exception\nwhat\r\r\n");
    Remove(log.Path());
}

TEST_F(LogfileTest, AWriteThatCannotOpenItsFileGivesFalse) {
    CQvxLogfile log(L"missing-folder/qvxcreo.log");
    EXPECT_FALSE(log.Write("lost"));
}

#ifndef _WIN32
// The roaming folder comes from HOME on the native build; without it the look-up throws.
TEST_F(LogfileTest, NoFolderMeansTheConstructorThrowsItsErrorNumber) {
    qvx::os::SetEnv(L"HOME", std::nullopt);
    EXPECT_THROW(CQvxLogfile(L"qvxcreo.log"), long);
}
#endif

TEST_F(LogfileTest, TheDeviceSoftwaresLogGoesWhenItWasMadeToBeDeleted) {
    std::wstring path;
    {
        ovklib::CLogfile log(L"bench.log", /*deleteOnClose=*/true);
        path = log.Path();
        EXPECT_TRUE(log.Write("kept for now"));
        EXPECT_TRUE(qvx::os::StatFile(path).has_value());
    }
    EXPECT_FALSE(qvx::os::StatFile(path).has_value());
}

}  // namespace
