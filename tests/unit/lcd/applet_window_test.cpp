// The applet window's reactions, in the order it tests its messages: connecting only while
// the manager runs, the retry and foreground timers, the panel's buttons and the control
// panel, tearing down on a closed connection, and its shutdown.
#include "lcd/cad_info_window.h"
#include "lcd/lcd_page_impl.h"
#include "lcd/lm_lcd_library.h"
#include "lcd_fakes.h"

#include <gtest/gtest.h>

namespace qvx::lcd {
namespace {

using test::CFakeLibrary;
using test::CFakePlatform;

struct CPageRecord {
    std::map<std::string, int> calls;
    bool createResult = true;
    int documentUpdates = 0;
    int alive = 0;
};

class CFakeDocument : public _Qvx::IInstance, public _Qvx::ICadDocument {
public:
    explicit CFakeDocument(CPageRecord& record) : m_record(record) {}
    const std::wstring& GetType() const override { return m_empty; }
    const std::wstring& GetName() const override { return m_empty; }
    std::int64_t GetFileSize() const override { return 0; }
    const std::wstring& GetAuthor() const override { return m_empty; }
    const std::wstring& GetLastSavedBy() const override { return m_empty; }
    const std::wstring& GetCreated() const override { return m_empty; }
    const std::wstring& GetLastSaved() const override { return m_empty; }
    void Update() override { ++m_record.documentUpdates; }

private:
    CPageRecord& m_record;
    std::wstring m_empty;
};

class CRecordingPage : public CLcdPageImplT<CRecordingPage> {
public:
    explicit CRecordingPage(CPageRecord& record) : m_record(record), m_document(record) {
        ++m_record.alive;
    }
    ~CRecordingPage() override { --m_record.alive; }
    bool Create(const std::wstring&) override { return Count("Create"), m_record.createResult; }
    void Update() override { Count("Update"); }
    void Show() override { Count("Show"); }
    bool IsVisible() const override { return true; }
    std::int32_t OnOk() override { return Count("OnOk"); }
    std::int32_t OnCancel() override { return Count("OnCancel"); }
    std::int32_t OnLeft() override { return Count("OnLeft"); }
    std::int32_t OnRight() override { return Count("OnRight"); }
    std::int32_t OnUp() override { return Count("OnUp"); }
    std::int32_t OnDown() override { return Count("OnDown"); }
    void Refresh() override { Count("Refresh"); }
    _Qvx::IInstance* Data() const override { return const_cast<CFakeDocument*>(&m_document); }

private:
    std::int32_t Count(const std::string& what) {
        ++m_record.calls[what];
        return 0;
    }
    CPageRecord& m_record;
    CFakeDocument m_document;
};

class CConfigureCallBack : public _Qvx::IOvkLcdFunctor, public _Qvx::IInstance {
public:
    void operator()(std::uint32_t) override {}
};

class CFakeFactory : public _Qvx::IFactory {
public:
    _Qvx::IInstance* CreateInstance(const std::wstring& id, std::uintptr_t window) override {
        askedWith = window;
        return id == _Qvx::kCidNotifyCallback ? new CConfigureCallBack() : nullptr;
    }
    std::uintptr_t askedWith = 0;
};

class LcdAppletWindowTest : public ::testing::Test {
protected:
    using Window = CLcdCadInfoWindow;

    LcdAppletWindowTest() {
        COvkLcdConnection::Instance(L"Test applet").Impl().SetLibrary(m_library);
    }
    ~LcdAppletWindowTest() override {
        m_window.reset();
        COvkLcdConnection::Instance().Impl().SetLibrary(SystemLcdLibrary());
    }

    void Make() {
        m_window = std::make_unique<Window>(m_factory, L"Creo Parametric 9.0", m_platform,
                                            [this](WindowId, std::shared_ptr<_Qvx::IFactory>) {
                                                return std::make_unique<CRecordingPage>(m_page);
                                            });
        ASSERT_TRUE(m_window->Create());
    }
    void MakeConnected() {
        m_platform.managerRunning = true;
        Make();
        ASSERT_TRUE(m_window->IsConnected());
    }
    void Press(std::uint32_t mask) { m_platform.Send(kMsgButtonPressed, mask); }

    CFakeLibrary m_library;
    CFakePlatform m_platform;
    std::shared_ptr<CFakeFactory> m_factory = std::make_shared<CFakeFactory>();
    CPageRecord m_page;
    std::unique_ptr<Window> m_window;
};

TEST_F(LcdAppletWindowTest, WithoutTheManagerNothingOfTheLibraryIsCalledAndTheRetryRuns) {
    Make();
    EXPECT_EQ(m_library.Total(), 0);
    EXPECT_FALSE(m_window->IsConnected());
    EXPECT_EQ(m_platform.timers[Window::kRetryTimer], 3000u);
    EXPECT_EQ(m_factory->askedWith, m_platform.window);
    m_platform.Send(kMsgTimer, Window::kRetryTimer);
    EXPECT_EQ(m_library.Total(), 0);
    EXPECT_TRUE(m_platform.TimerRuns(Window::kRetryTimer));
}

TEST_F(LcdAppletWindowTest, RetryConnectsOnceTheManagerRunsAndStops) {
    Make();
    m_platform.managerRunning = true;
    m_platform.Send(kMsgTimer, Window::kRetryTimer);
    EXPECT_TRUE(m_window->IsConnected());
    EXPECT_FALSE(m_platform.TimerRuns(Window::kRetryTimer));
    EXPECT_EQ(m_library.lastName, COvkLcdConnection::Instance().FriendlyName());
    EXPECT_EQ(m_page.calls["Create"], 1);
    EXPECT_EQ(m_page.calls["Show"], 1);
}

TEST_F(LcdAppletWindowTest, ClosedConnectionTearsDownAndTheNextAttemptMakesANewPage) {
    MakeConnected();
    m_library.Notify(kLmNotifyCloseConnection);
    ASSERT_EQ(m_platform.posts.size(), 1u);
    m_platform.Pump();
    EXPECT_FALSE(m_window->IsConnected());
    EXPECT_EQ(m_page.alive, 0);
    EXPECT_EQ(m_library.Count("Disconnect"), 1);
    EXPECT_TRUE(m_platform.TimerRuns(Window::kRetryTimer));
    m_platform.Send(kMsgTimer, Window::kRetryTimer);
    EXPECT_TRUE(m_window->IsConnected());
    EXPECT_EQ(m_page.alive, 1);
    EXPECT_EQ(m_page.calls["Create"], 2);
}

TEST_F(LcdAppletWindowTest, ANewConnectionForgetsAButtonWhoseReleaseWasLost) {
    MakeConnected();
    COvkLcdConnection::Instance().Impl().OnSoftButtons(kButtonOk);
    m_platform.Pump();
    m_library.Notify(kLmNotifyCloseConnection);
    m_platform.Pump();
    m_platform.Send(kMsgTimer, Window::kRetryTimer);
    COvkLcdConnection::Instance().Impl().OnSoftButtons(kButtonOk);
    m_platform.Pump();
    EXPECT_EQ(m_page.calls["OnOk"], 2);
}

TEST_F(LcdAppletWindowTest, PageThatCannotBeMadeLeavesTheConnectionWithoutAPage) {
    m_page.createResult = false;
    MakeConnected();
    EXPECT_EQ(m_window->Page(), nullptr);
    EXPECT_EQ(m_page.alive, 0);
    m_platform.Send(kMsgDataChanged, 1);
    EXPECT_FALSE(m_window->HoldsForeground());
    EXPECT_FALSE(m_platform.TimerRuns(Window::kForegroundTimer));
    Press(kButtonOk);  // nothing to run, nothing thrown
}

TEST_F(LcdAppletWindowTest, EachSingleButtonRunsItsPageOperationAndCombinationsRunNothing) {
    MakeConnected();
    const std::pair<std::uint32_t, const char*> table[] = {
        {kButtonLeft, "OnLeft"},     {kButtonRight, "OnRight"}, {kButtonOk, "OnOk"},
        {kButtonCancel, "OnCancel"}, {kButtonUp, "OnUp"},       {kButtonDown, "OnDown"}};
    for (const auto& [bit, operation] : table) {
        Press(bit);
        EXPECT_EQ(m_page.calls[operation], 1) << operation;
    }
    Press(kButtonOk | kButtonCancel);
    Press(0xFFFFFFFF);
    Press(kButtonMenu | kButtonOk);
    m_platform.Send(kMsgButtonReleased, kButtonOk);
    EXPECT_EQ(m_page.calls["OnOk"], 1);
    EXPECT_EQ(m_page.calls["OnCancel"], 1);
    EXPECT_EQ(m_platform.controlPanels, 0);
    Press(kButtonMenu);
    EXPECT_EQ(m_platform.controlPanels, 1);
}

TEST_F(LcdAppletWindowTest, DataChangeTakesThePanelAndThePressesWhileHeldExtendIt) {
    MakeConnected();
    Press(kButtonOk);
    EXPECT_FALSE(m_platform.TimerRuns(Window::kForegroundTimer));  // a press alone takes nothing
    m_platform.Send(kMsgDataChanged, 1);
    EXPECT_EQ(m_page.documentUpdates, 1);
    EXPECT_EQ(m_page.calls["Refresh"], 1);
    EXPECT_TRUE(m_window->HoldsForeground());
    EXPECT_EQ(m_platform.timers[Window::kForegroundTimer], 5000u);
    Press(kButtonOk);
    EXPECT_EQ(m_platform.timerStarts[Window::kForegroundTimer], 2);
    m_platform.Send(kMsgTimer, Window::kForegroundTimer);
    EXPECT_FALSE(m_window->HoldsForeground());
    EXPECT_FALSE(m_platform.TimerRuns(Window::kForegroundTimer));
    Press(kButtonOk);
    EXPECT_EQ(m_platform.timerStarts[Window::kForegroundTimer], 2);
}

TEST_F(LcdAppletWindowTest, OtherNotificationsAndMessagesAreLeftToTheDefault) {
    MakeConnected();
    EXPECT_TRUE(m_platform.Send(kMsgNotification, kLmNotifyDeviceArrival));
    EXPECT_TRUE(m_platform.Send(kMsgNotification, kLmNotifyDeviceRemoval));
    EXPECT_FALSE(m_platform.Send(kMsgNotification, 77));
    EXPECT_FALSE(m_platform.Send(kMsgDataChanged, 2));
    EXPECT_FALSE(m_platform.Send(kMsgTimer, 12345));
    EXPECT_TRUE(m_window->IsConnected());
}

TEST_F(LcdAppletWindowTest, ShutdownStopsTimersDisconnectsAndClosesTheWindow) {
    MakeConnected();
    m_platform.Send(kMsgDataChanged, 1);
    m_window.reset();
    EXPECT_TRUE(m_platform.timers.empty());
    EXPECT_EQ(m_page.alive, 0);
    EXPECT_EQ(m_library.Count("Disconnect"), 1);
    EXPECT_TRUE(m_platform.closed);
}

TEST(LcdButtonCallBack, PressIsAReportThatKeepsEveryOldBit) {
    CFakePlatform platform;
    CQvxButtonCallBack callback(platform, platform.window);
    const std::uint32_t masks[] = {0x400, 0x600, 0x200, 0x1000, 0};
    for (std::uint32_t mask : masks) callback(mask);
    ASSERT_EQ(platform.posts.size(), 5u);
    const test::CPost expected[] = {{kMsgButtonPressed, 0x400},
                                    {kMsgButtonPressed, 0x200},
                                    {kMsgButtonReleased, 0x400},
                                    {kMsgButtonReleased, 0x1200},  // one up, one down
                                    {kMsgButtonReleased, 0x1000}};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(platform.posts[i].message, expected[i].message) << i;
        EXPECT_EQ(platform.posts[i].wParam, expected[i].wParam) << i;
    }
}

}  // namespace
}  // namespace qvx::lcd
