// The device menu's button: which menu a press closes or opens, and where a choice goes.
#include "plugin_fixture.h"

#include "nav/command_codes.h"
#include "nav/device_menu.h"
#include "nav/menu_desktop.h"
#include "support/boundary.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace qvx::testing {
namespace {

/// A desktop whose menu state, foreground and menu choice the test sets.
class CFakeDesktop final : public nav::IMenuDesktop {
public:
    CFakeDesktop() { nav::SetMenuDesktop(this); }
    ~CFakeDesktop() { nav::SetMenuDesktop(nullptr); }
    CFakeDesktop(const CFakeDesktop&) = delete;
    CFakeDesktop& operator=(const CFakeDesktop&) = delete;

    std::uint32_t GuiThreadFlags() override { return flags; }
    void SendAltKeyPair() override { ++altPairs; }
    void* OwnForegroundWindow() override { return foreground; }
    std::uint32_t TrackDeviceMenu(void*, std::uint16_t, s3dm::I3dmouseSettings& settings) override {
        ++tracks;
        depthInLoop = g_qvxProE->PopupDepth();
        if (inLoop) inLoop();
        bool wasChecked =
            choice == nav::kMenuRotate ? settings.GetRotation() : settings.GetPanZoom();
        nav::ApplyDeviceMenuChoice(choice, wasChecked, settings);
        return choice;
    }

    std::uint32_t flags = 0;
    int altPairs = 0;
    void* foreground = this;
    int tracks = 0;
    int depthInLoop = -1;
    std::uint32_t choice = 0;
    std::function<void()> inLoop;
};

class MenuButtonTest : public PluginTest {
protected:
    void SetUp() override {
        PluginTest::SetUp();
        // Natively the roaming folder follows APPDATA; the Windows build asks the shell.
        os::SetEnv(L"APPDATA", m_scratch.wstring());
        m_file = s3dm::C3dmouseSettings(L"QvxProENGINEER").FilePath().value_or(L"");
        std::filesystem::remove(m_file);
    }
    void TearDown() override {
        PluginTest::TearDown();
        std::filesystem::remove(m_file);
        os::SetEnv(L"APPDATA", std::nullopt);
    }

    /// The settings file once every save has finished; empty when there is none.
    std::string File() {
        g_qvxProE->Settings().WaitForSaves();
        std::ifstream in(std::filesystem::path(m_file), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static std::string Value(const std::string& key, const std::string& value) {
        return "<setting name=\"" + key + "\" serializeAs=\"String\"><value>" + value +
               "</value></setting>";
    }
    std::map<std::string, std::string>& DriverValues() { return m_devices.Last()->values; }
    static void Press38() { g_qvxProE->OnCommandEx(V3DCMD_MENU_POPUP, true, nullptr, nullptr); }

    std::wstring m_file;
    CFakeDesktop m_desktop;
};

TEST_F(MenuButtonTest, ToggleAndSpeedChosenGoToTheDriverAndTheFile) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    m_desktop.choice = nav::kMenuRotate;
    Press38();
    m_desktop.choice = nav::kMenuSpeedHigh;
    Press38();
    EXPECT_EQ(m_desktop.tracks, 2);
    EXPECT_EQ(m_desktop.depthInLoop, 1);
    EXPECT_EQ(g_qvxProE->PopupDepth(), 0);
    EXPECT_EQ(DriverValues()["QvxRotation"], "false");
    EXPECT_EQ(DriverValues()["Speed"], "4");
    EXPECT_NE(File().find(Value("Speed", "4")), std::string::npos);
    g_qvxProE->OnCommandEx(V3DCMD_MENU_POPUP, false, nullptr, nullptr);
    EXPECT_EQ(m_desktop.tracks, 2) << "a release does nothing";
}

TEST_F(MenuButtonTest, CustomizeButtonsOpensTheDriversInterfaceAndSavesNothing) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    File();
    std::filesystem::remove(m_file);
    DriverValues().clear();
    for (std::uint32_t choice : {static_cast<std::uint32_t>(nav::kMenuCustomizeButtons), 0u}) {
        m_desktop.choice = choice;
        Press38();
    }
    EXPECT_EQ(m_devices.Last()->uiMode, -1);
    EXPECT_TRUE(DriverValues().empty());
    EXPECT_EQ(File(), "") << "no save";
}

TEST_F(MenuButtonTest, MenuOfTheHostIsClosedAndNoDeviceMenuOpens) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    m_desktop.flags = nav::kGuiInMenuMode | nav::kGuiPopupMenuMode;
    Press38();
    EXPECT_EQ(m_desktop.altPairs, 2) << "one for the open press, one for the popup found open";
    EXPECT_EQ(m_desktop.tracks, 0);
    m_desktop.flags = nav::kGuiInMenuMode;
    m_desktop.altPairs = 0;
    Press38();
    EXPECT_EQ(m_desktop.altPairs, 1) << "a menu bar's menu is closed, and then ours opens";
    EXPECT_EQ(m_desktop.tracks, 1);
}

TEST_F(MenuButtonTest, PressWhileTheDeviceMenuIsOpenClosesIt) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    m_desktop.inLoop = [&] {
        m_desktop.flags = nav::kGuiInMenuMode | nav::kGuiPopupMenuMode;
        Press38();
    };
    Press38();
    EXPECT_EQ(m_desktop.tracks, 1);
    EXPECT_EQ(m_desktop.altPairs, 1) << "only the nested press's second half closes";
}

TEST_F(MenuButtonTest, ThrowInsideTheMenusLoopStopsAtTheDriversDoor) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    DriverValues().clear();
    m_desktop.choice = nav::kMenuRotate;
    m_desktop.inLoop = [] { throw std::runtime_error("in the loop"); };
    std::uint64_t caught = BoundaryCatchCount();
    ::testing::internal::CaptureStdout();
    Press38();
    EXPECT_NE(::testing::internal::GetCapturedStdout().find("in the loop"), std::string::npos);
    EXPECT_EQ(BoundaryCatchCount(), caught + 1);
    EXPECT_EQ(g_qvxProE->PopupDepth(), 0);
    EXPECT_TRUE(DriverValues().empty());
}

}  // namespace
}  // namespace qvx::testing
