// The plug-in's user-interface language: the Windows language id that picks string tables,
// and the language folder name of the help files. Chosen once at start-up.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "support/language_id.h"

namespace qvx::core {

struct LanguageRow {
    std::uint16_t langId;
    const wchar_t* proLangName;  ///< the name in PRO_LANG
    const wchar_t* code;         ///< g_langCode
    const wchar_t* thirdColumn;  ///< kept with the row; nothing reads it
};

/// The seven languages the plug-in ships, searched in order; the first match wins.
const LanguageRow* FindLanguageByProLang(std::wstring_view proLang);
const LanguageRow* FindLanguageById(std::uint16_t langId);

/// The language id for a narrow name ("de", "german", "zh-CN", ...), ignoring case.
std::optional<std::uint16_t> LanguageIdForName(std::string_view name);

/// Sets g_langId from a narrow name; a name that is not known leaves it as it is.
void SetLanguageIdFromName(std::string_view name);

/// The start-up choice: PRO_LANG when it is set and not empty (the thread's language is then
/// not asked, even when PRO_LANG names no known language), otherwise the low 16 bits of the
/// thread's UI language. A match sets g_langId and g_langCode; no match leaves both.
void ChooseLanguage(const std::optional<std::wstring>& proLang, std::uint32_t threadUiLanguage);

}  // namespace qvx::core
