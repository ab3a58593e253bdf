#include "sim/host/session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

namespace sim {
namespace {

using ConfigoptSetFn = ProError (*)(const wchar_t*, const wchar_t*);

class FaultGateTest : public ::testing::Test {
protected:
    void SetUp() override { CSession::Instance().Reset(); }
    void TearDown() override { CSession::Instance().Reset(); }

    // The entry the plug-in would find in the host's table.
    static ConfigoptSetFn ConfigoptSet() {
        for (const QvxHostFunction& f : AllHostFunctions()) {
            if (std::strcmp(f.name, "ProConfigoptSet_v") == 0) {
                return reinterpret_cast<ConfigoptSetFn>(f.entry);
            }
        }
        return nullptr;
    }
    static ProError Set(const wchar_t* value) { return ConfigoptSet()(L"opt", value); }
    static std::wstring Value() { return CSession::Instance().configOptions[L"opt"]; }
};

TEST_F(FaultGateTest, NthCallFailsAloneAndTheBodyDoesNotRun) {
    ASSERT_NE(ConfigoptSet(), nullptr);
    CSession::Instance().faults["ProConfigoptSet"] = {CSession::EFault::Status, PRO_TK_E_NOT_FOUND,
                                                      /*nth=*/2};
    EXPECT_EQ(Set(L"a"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Set(L"b"), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(Value(), L"a") << "a failed call changes nothing";
    EXPECT_EQ(Set(L"c"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Value(), L"c");
}

TEST_F(FaultGateTest, WithoutNthEveryCallFailsAndIsLogged) {
    CSession::Instance().faults["ProConfigoptSet"] = {CSession::EFault::Status,
                                                      PRO_TK_GENERAL_ERROR, /*nth=*/0};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Set(L"x"), PRO_TK_GENERAL_ERROR) << "call " << i;
    EXPECT_EQ(CSession::Instance().calls.back(), "ProConfigoptSet fails on purpose with -1");
}

TEST_F(FaultGateTest, ThrowLeavesThroughTheEntry) {
    CSession::Instance().faults["ProConfigoptSet"] = {CSession::EFault::Throw, PRO_TK_GENERAL_ERROR,
                                                      /*nth=*/1};
    EXPECT_THROW(Set(L"x"), std::runtime_error);
    EXPECT_EQ(Set(L"y"), PRO_TK_NO_ERROR) << "only the first call throws";
}

}  // namespace
}  // namespace sim
