#include "core/startup_platform.h"

namespace qvx::core {
namespace {
std::uint32_t (*g_languageSource)() = nullptr;
}

std::uint32_t ThreadUiLanguage() {
    return g_languageSource ? g_languageSource() : SystemThreadUiLanguage();
}

void SetThreadUiLanguageSource(std::uint32_t (*source)()) { g_languageSource = source; }

}  // namespace qvx::core
