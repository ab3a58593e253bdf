// Texts by id on Windows: the string resources of the module this code is linked into.
#include "support/language_id.h"
#include "support/own_module_win32.h"
#include "support/text_table.h"
#include "support/module_of_code_win32.h"
#include "support/windows_api.h"

namespace qvx {
namespace {

// Strings are stored sixteen to a block (block id / 16 + 1), each as a length word and that
// many characters; a length of zero means the block has no such string.
std::optional<std::wstring> FromLanguage(HMODULE module, std::uint32_t id, WORD langId) {
    HRSRC found = FindResourceExW(module, MAKEINTRESOURCEW(6) /* RT_STRING */,
                                  MAKEINTRESOURCEW(id / 16 + 1), langId);
    if (!found) return std::nullopt;
    auto* p = static_cast<const WCHAR*>(LockResource(LoadResource(module, found)));
    if (!p) return std::nullopt;
    for (std::uint32_t i = 0; i < id % 16; ++i) p += 1 + *p;
    if (*p == 0) return std::nullopt;
    return std::wstring(p + 1, *p);
}

}  // namespace

std::wstring LoadText(std::uint32_t id) { return LoadText(id, g_langId); }

std::wstring LoadText(std::uint32_t id, std::uint16_t langId) {
    HMODULE module = OwnModule();
    if (auto text = FromLanguage(module, id, langId)) return *text;
    const WCHAR* text = nullptr;
    // With a zero buffer size LoadStringW hands out a pointer into the resource itself.
    int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 && text ? std::wstring(text, static_cast<std::size_t>(length)) : L"";
}

}  // namespace qvx
