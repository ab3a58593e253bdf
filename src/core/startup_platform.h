// The operating-system steps of the plug-in's start: the thread's language and the scratch
// text directory. A Win32 and a native implementation sit beside this header.
#pragma once

#include <cstdint>
#include <string>

namespace qvx::core {

/// The calling thread's user-interface language (a Windows language id in the low 16 bits).
/// The native build has no such setting and answers 0x0409.
std::uint32_t ThreadUiLanguage();
/// Makes ThreadUiLanguage() ask `source` instead of the system; null puts the system back.
void SetThreadUiLanguageSource(std::uint32_t (*source)());
/// The system's answer, whatever source is set.
std::uint32_t SystemThreadUiLanguage();

/// Empties the application text directory and fills it from the installation:
/// expands `appTextDirectory` to its long form (creating it first when that fails), deletes it
/// with all it holds, creates it again, appends "text" and creates that, and copies
/// `homeDirectory`\text into it recursively, overwriting. Returns the directory that now holds
/// the copy. Failures of the single steps are not examined.
std::wstring PrepareTextDirectory(const std::wstring& appTextDirectory,
                                  const std::wstring& homeDirectory);

}  // namespace qvx::core
