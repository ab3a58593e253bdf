// The configuration timer, driven by the native build's test timers.
#include "plugin_fixture.h"
#include "core/timer_posix.h"

namespace qvx::testing {
namespace {

TEST_F(PluginTest, ConfigTimerRunsWhileStartedAndNotAfterStop) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_EQ(core::FireThreadTimersForTest(), 1u);
    user_terminate();
    EXPECT_EQ(core::FireThreadTimersForTest(), 0u) << "a timer outlived the plug-in";
}

TEST_F(PluginTest, ThreadLanguageDecidesWhenProLangIsUnset) {
    core::g_threadUiLanguageForTest = 0x0411;
    Load();
    core::g_threadUiLanguageForTest = 0x0409;
    EXPECT_EQ(g_langCode, L"ja-JP");
}

}  // namespace
}  // namespace qvx::testing
