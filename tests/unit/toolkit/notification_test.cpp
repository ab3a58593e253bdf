// The notification multiplexer: one host callback per type, handlers in order, statuses and
// exceptions of handlers, and the registration and removal behaviour that is kept on purpose.
#include "sim/host/session.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_notification.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::string> g_ran;

template <int N>
ProError Returns() {
    g_ran.push_back(std::to_string(N));
    return N;
}

ProError Throws() {
    g_ran.push_back("throws");
    throw std::runtime_error("handler failed");
}

class NotificationTest : public ::testing::Test {
protected:
    void SetUp() override {
        sim::CSession::Instance().Reset();
        qvx::toolkit::InstallHostTable(sim::CSession::Instance().Args());
        g_ran.clear();
    }
    static long HostCalls(const std::string& text) {
        const auto& calls = sim::CSession::Instance().calls;
        return std::count_if(calls.begin(), calls.end(), [&](const std::string& c) {
            return c.find(text) != std::string::npos;
        });
    }
};

// The map is process-wide, so each test takes notification types of its own.

TEST_F(NotificationTest, OneHostCallbackPerTypeAndHandlersRunInOrder) {
    EXPECT_EQ(CQvxProNotification::Set<101>(&Returns<0>), 0);
    EXPECT_EQ(CQvxProNotification::Set<101>(&Returns<0>), 0);
    EXPECT_EQ(HostCalls("ProNotificationSet 101"), 1);
    EXPECT_EQ(CQvxProNotification::Handlers(101).size(), 2u) << "the same handler may stand twice";
    EXPECT_EQ(sim::CSession::Instance().Notify(101), 0);
    EXPECT_EQ(g_ran, (std::vector<std::string>{"0", "0"}));
}

TEST_F(NotificationTest, LastNonZeroStatusWinsAndThrowingHandlerDoesNotStopTheOthers) {
    CQvxProNotification::Set<102>(&Returns<3>);
    CQvxProNotification::Set<102>(&Throws);
    CQvxProNotification::Set<102>(&Returns<0>);
    CQvxProNotification::Set<102>(&Returns<5>);
    CQvxProNotification::Set<102>(&Returns<0>);
    ::testing::internal::CaptureStdout();
    ProError status = sim::CSession::Instance().Notify(102);
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, 5);
    EXPECT_EQ(g_ran, (std::vector<std::string>{"3", "throws", "0", "5", "0"}));
    EXPECT_EQ(out,
              "CQvxProNotification::ProNotifyFunction() status=3\n"
              "CQvxProNotification::ProNotifyFunction() exception\n"
              "CQvxProNotification::ProNotifyFunction() status=5\n");
}

TEST_F(NotificationTest, RefusedRegistrationKeepsTheListAndTheNextSetReportsSuccess) {
    sim::CSession::Instance().refusedNotifications[103] = PRO_TK_GENERAL_ERROR;
    EXPECT_EQ(CQvxProNotification::Set<103>(&Returns<0>), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(CQvxProNotification::Set<103>(&Returns<0>), 0);
    EXPECT_EQ(HostCalls("ProNotificationSet 103"), 1) << "the second Set asks the host nothing";
    EXPECT_EQ(CQvxProNotification::Handlers(103).size(), 2u);
    EXPECT_EQ(sim::CSession::Instance().notifications.count(103), 0u);
}

TEST_F(NotificationTest, UnsetOfTheLastHandlerLeavesTheHostCallbackWhichThenCallsNothing) {
    CQvxProNotification::Set<104>(&Returns<7>);
    CQvxProNotification::Set<104>(&Returns<7>);
    EXPECT_EQ(CQvxProNotification::Unset(104, &Returns<7>), 0);
    EXPECT_EQ(CQvxProNotification::Handlers(104).size(), 1u) << "only the first occurrence goes";
    EXPECT_EQ(CQvxProNotification::Unset(104, &Returns<7>), 0);
    EXPECT_EQ(CQvxProNotification::Unset(104, &Returns<7>), 0) << "a handler not there";
    EXPECT_EQ(CQvxProNotification::Unset(999, &Returns<7>), 0) << "a type never set";
    EXPECT_EQ(HostCalls("ProNotificationUnset"), 0);
    ASSERT_EQ(sim::CSession::Instance().notifications.count(104), 1u);
    EXPECT_EQ(sim::CSession::Instance().Notify(104), 0);
    EXPECT_TRUE(g_ran.empty());
}

}  // namespace
