// The configuration poll's timer and the thread's language, through the plug-in's seams.
#include "plugin_fixture.h"
#include "core/startup_platform.h"

namespace qvx::testing {
namespace {

TEST_F(PluginTest, ConfigTimerRunsWhileStartedAndNotAfterStop) {
    Load();
    ASSERT_TRUE(g_qvxProE);
    EXPECT_EQ(m_loop.FireTimers(), 1u);
    user_terminate();
    EXPECT_EQ(m_loop.FireTimers(), 0u) << "a timer outlived the plug-in";
}

TEST_F(PluginTest, ThreadLanguageDecidesWhenProLangIsUnset) {
    core::SetThreadUiLanguageSource([]() -> std::uint32_t { return 0x0411; });
    Load();
    core::SetThreadUiLanguageSource(nullptr);
    EXPECT_EQ(g_langCode, L"ja-JP");
}

}  // namespace
}  // namespace qvx::testing
