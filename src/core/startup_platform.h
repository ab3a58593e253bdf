// The operating-system steps of the plug-in's start and stop: the thread's language, the
// scratch text directory, and the thread timer. A Win32 and a native implementation sit
// beside this header.
#pragma once

#include <cstdint>
#include <string>

namespace qvx::core {

/// The calling thread's user-interface language (a Windows language id in the low 16 bits).
std::uint32_t ThreadUiLanguage();

/// Empties the application text directory and fills it from the installation:
/// expands `appTextDirectory` to its long form (creating it first when that fails), deletes it
/// with all it holds, creates it again, appends "text" and creates that, and copies
/// `homeDirectory`\text into it recursively, overwriting. Returns the directory that now holds
/// the copy. Failures of the single steps are not examined.
std::wstring PrepareTextDirectory(const std::wstring& appTextDirectory,
                                  const std::wstring& homeDirectory);

/// Starts a thread timer (no window) that calls `callback` every `periodMs` on this thread's
/// message loop; `id` 0 asks for a new id. Returns the timer's id, 0 on failure.
std::uint32_t StartThreadTimer(std::uint32_t id, std::uint32_t periodMs, void (*callback)());
void StopThreadTimer(std::uint32_t id);

}  // namespace qvx::core
