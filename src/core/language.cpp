// The language tables and the start-up choice of language.
#include "core/language.h"

#include "support/text_compare.h"

#include <array>

namespace qvx::core {
namespace {

constexpr std::array<LanguageRow, 7> kLanguages = {{
    {0x0409, L"english", L"en-US", L"en_US"},
    {0x0409, L"C", L"en-US", L"en_US"},
    {0x0407, L"german", L"de-DE", L"de_DE"},
    {0x040C, L"french", L"fr-FR", L"fr_FR"},
    {0x0804, L"chinese-simplified", L"zh-CN", L"ch_CH"},
    {0x0804, L"chs", L"zh-CN", L"ch_CH"},
    {0x0411, L"japanese", L"ja-JP", L"jp_JP"},
}};

struct NamedId {
    const char* name;
    std::uint16_t langId;
};

constexpr std::array<NamedId, 22> kNamedIds = {{
    {"english", 0x0409},
    {"en-US", 0x0409},
    {"en_US", 0x0409},
    {"en", 0x0409},
    {"german", 0x0407},
    {"de-DE", 0x0407},
    {"de_DE", 0x0407},
    {"de", 0x0407},
    {"french", 0x040C},
    {"fr-FR", 0x040C},
    {"fr_FR", 0x040C},
    {"fr", 0x040C},
    {"chinese", 0x0804},
    {"simpl_chinese", 0x0804},
    {"simplified_chinese", 0x0804},
    {"zh-CN", 0x0804},
    {"ch_CH", 0x0804},
    {"ch", 0x0804},
    {"japanese", 0x0411},
    {"ja-JP", 0x0411},
    {"jp_JP", 0x0411},
    {"ja", 0x0411},
}};

/// PRO_LANG is read into a buffer of this many characters; a longer value counts as a failed
/// read.
constexpr std::size_t kProLangCapacity = 260;

void Apply(const LanguageRow* row) {
    if (!row) return;
    g_langId = row->langId;
    g_langCode = row->code;
}

}  // namespace

const LanguageRow* FindLanguageByProLang(std::wstring_view proLang) {
    for (const LanguageRow& row : kLanguages) {
        if (EqualsIgnoringCase(proLang, row.proLangName)) return &row;
    }
    return nullptr;
}

const LanguageRow* FindLanguageById(std::uint16_t langId) {
    for (const LanguageRow& row : kLanguages) {
        if (row.langId == langId) return &row;
    }
    return nullptr;
}

std::optional<std::uint16_t> LanguageIdForName(std::string_view name) {
    for (const NamedId& entry : kNamedIds) {
        if (EqualsIgnoringCase(name, entry.name)) return entry.langId;
    }
    return std::nullopt;
}

void SetLanguageIdFromName(std::string_view name) {
    if (auto id = LanguageIdForName(name)) g_langId = *id;
}

void ChooseLanguage(const std::optional<std::wstring>& proLang, std::uint32_t threadUiLanguage) {
    std::wstring text = proLang && proLang->size() < kProLangCapacity ? *proLang : std::wstring();
    if (!text.empty()) {
        Apply(FindLanguageByProLang(text));
        return;
    }
    Apply(FindLanguageById(static_cast<std::uint16_t>(threadUiLanguage & 0xFFFF)));
}

}  // namespace qvx::core
