// Test controls of the native build's stand-ins for thread timers and the thread language.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qvx::core {

/// Runs every running thread timer's callback once; returns how many ran.
std::size_t FireThreadTimersForTest();

/// What ThreadUiLanguage() answers on the native build.
extern std::uint32_t g_threadUiLanguageForTest;

}  // namespace qvx::core
