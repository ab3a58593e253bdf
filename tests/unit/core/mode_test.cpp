// The plug-in following the host's mode: what the driver hears on load, on each kind of
// notification, for modes known and unknown, and after the plug-in is gone.
#include "plugin_fixture.h"

#include "core/mode_switch.h"
#include "core/mode_table.h"
#include "toolkit/pro_notification.h"

#include <algorithm>
#include <stdexcept>

namespace qvx::testing {
namespace {

using Calls = std::vector<std::string>;

class ModeTest : public PluginTest {
protected:
    /// Loads the plug-in with a driver and forgets what the load published.
    CFakeDevice& LoadAndClear() {
        Load();
        EXPECT_TRUE(g_qvxProE);
        m_devices.Last()->published.clear();
        return *m_devices.Last();
    }
    Calls Take() {
        Calls calls = std::move(m_devices.Last()->published);
        m_devices.Last()->published.clear();
        return calls;
    }
    static long HostCalls(const std::string& text) {
        const auto& calls = sim::CSession::Instance().calls;
        return std::count_if(calls.begin(), calls.end(), [&](const std::string& c) {
            return c.find(text) != std::string::npos;
        });
    }
    sim::CSession& Host() { return sim::CSession::Instance(); }
};

TEST_F(ModeTest, LoadPublishesTheDefaultSetThenEachNewModeOnce) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    // The images (when the catalogue found icons) go between the activation and the tree,
    // and only once: the list is empty afterwards.
    Calls load = Take();
    ASSERT_GE(load.size(), 2u);
    EXPECT_EQ(load.front(), "activate PRO_MODE_UNUSED");
    EXPECT_EQ(load.back(), "actions PRO_MODE_UNUSED \"Default\"");
    EXPECT_TRUE(g_qvxProE->ActionImages().empty());

    Host().OpenModel("box", sim::kModelPart);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_PART", "actions PRO_MODE_PART \"Part\""}));
    Host().OpenModel("sheet", sim::kModelDrawing);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_DRAWING", "actions PRO_MODE_DRAWING \"Drawing\""}));
    Host().ActivateWindow("box");
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_PART"})) << "a known mode is only activated";
}

TEST_F(ModeTest, UnchangedModeRaisesNothingButTheNotificationIsLogged) {
    LoadAndClear();
    Host().OpenModel("box", sim::kModelPart);
    Take();
    ::testing::internal::CaptureStdout();
    Host().ActivateWindow("box");
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_TRUE(Take().empty());
    EXPECT_NE(out.find("CQvxModeSwitch::CQvxModeSwitchImpl::OnProNotify (type=24)\n"),
              std::string::npos);
}

TEST_F(ModeTest, SketchSectionCountsAsSketcherWithoutAskingTheMode) {
    LoadAndClear();
    Host().OpenModel("box", sim::kModelPart);
    Take();
    Host().sectionActive = 1;
    long asked = HostCalls("ProModeCurrentGet");
    Host().Notify(PRO_POPUPMENU_CREATE_POST);
    EXPECT_EQ(Take(),
              (Calls{"activate PRO_MODE_SKETCHER", "actions PRO_MODE_SKETCHER \"Sketcher\""}));
    EXPECT_EQ(HostCalls("ProModeCurrentGet"), asked);

    // Any value but 1 is not a sketch.
    Host().sectionActive = 2;
    Host().Notify(PRO_WINDOW_CHANGE_POST);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_PART"}));
}

TEST_F(ModeTest, ClosingPopupMenuAndOtherTypesNeverEvaluateTheMode) {
    LoadAndClear();
    Host().forcedMode = 5;
    Host().Notify(PRO_POPUPMENU_DESTROY_PRE);
    Host().Notify(2);
    EXPECT_TRUE(Take().empty());
    EXPECT_EQ(g_qvxProE->Mode(), PRO_MODE_UNUSED);
}

TEST_F(ModeTest, ModesOutsideTheTableAndWithoutAText) {
    LoadAndClear();
    Host().forcedMode = 19;
    Host().Notify(PRO_WINDOW_CHANGE_POST);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_19", "actions PRO_MODE_19 \"User\""}));
    Host().forcedMode = -2;
    Host().Notify(PRO_WINDOW_CHANGE_POST);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_MECHANICA", "actions PRO_MODE_MECHANICA \"\""}));
}

TEST_F(ModeTest, FailingModeQueryPublishesTheDefaultSet) {
    LoadAndClear();
    Host().OpenModel("box", sim::kModelPart);
    Take();
    Host().faults["ProModeCurrentGet"] = {sim::CSession::EFault::Status, PRO_TK_GENERAL_ERROR};
    Host().Notify(PRO_WINDOW_CHANGE_POST);
    EXPECT_EQ(Take(), (Calls{"activate PRO_MODE_UNUSED"}));
}

TEST_F(ModeTest, ConnectDeliversTheCurrentModeToTheNewSlotAlone) {
    LoadAndClear();
    Host().OpenModel("box", sim::kModelPart);
    std::vector<ProMode> seen;
    CQvxModeSwitch second;
    boost::signals2::scoped_connection c = second.Connect([&](ProMode m) { seen.push_back(m); });
    EXPECT_EQ(seen, (std::vector<ProMode>{1}));
    EXPECT_EQ(HostCalls("ProNotificationSet 24"), 1) << "the tracker is made once";
}

TEST_F(ModeTest, ThrowingSlotIsStoppedAtTheNotificationAndThePluginGoesOn) {
    LoadAndClear();
    CQvxModeSwitch other;
    boost::signals2::scoped_connection c = other.Connect([](ProMode m) {
        if (m == 1) throw std::runtime_error("slot failed");
    });
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(Host().Notify(PRO_WINDOW_CHANGE_POST), 0);
    Host().OpenModel("box", sim::kModelPart);
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(out.find("CQvxProNotification::ProNotifyFunction() exception"), std::string::npos);
    Host().OpenModel("sheet", sim::kModelDrawing);
    EXPECT_EQ(g_qvxProE->Mode(), 6);
}

TEST_F(ModeTest, NotificationsAfterThePluginStoppedDoNothing) {
    LoadAndClear();
    ::testing::internal::CaptureStdout();
    user_terminate();
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(out.find("CQvxModeSwitchImpl::~CQvxModeSwitchImpl()"), std::string::npos);
    ASSERT_EQ(Host().notifications.count(PRO_WINDOW_CHANGE_POST), 1u);
    EXPECT_EQ(Host().Notify(PRO_WINDOW_CHANGE_POST), 0);
    Host().OpenModel("box", sim::kModelPart);
}

TEST_F(ModeTest, RefusedRegistrationCostsOnlyThatTrigger) {
    Host().refusedNotifications[PRO_WINDOW_CHANGE_POST] = PRO_TK_GENERAL_ERROR;
    ::testing::internal::CaptureStdout();
    LoadAndClear();
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(out.find("CQvxProNotification::Set<PRO_WINDOW_CHANGE_POST> status=-1\n"),
              std::string::npos);
    Host().OpenModel("box", sim::kModelPart);  // the retrieval still reports the mode
    EXPECT_EQ(g_qvxProE->Mode(), 1);
}

TEST_F(ModeTest, EveryModeOfTheTableHasItsNameAndEnglishText) {
    EXPECT_EQ(core::ActionSetName(21), "PRO_MODE_NC_MODEL");
    EXPECT_EQ(core::ModeDisplayText(21), "Nc model");
    EXPECT_EQ(core::ModeDisplayText(-1), "Default");
    EXPECT_EQ(core::FindModeRow(19), nullptr);
    int rows = 0;
    for (ProMode m = -5; m < 40; ++m) {
        if (!core::FindModeRow(m)) continue;
        ++rows;
        EXPECT_EQ(core::ActionSetName(m).rfind("PRO_MODE_", 0), 0u) << m;
        if (m != -2) {
            EXPECT_FALSE(core::ModeDisplayText(m).empty()) << m;
        }
    }
    EXPECT_EQ(rows, 23);
}

}  // namespace
}  // namespace qvx::testing
