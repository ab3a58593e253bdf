// Texts by id on the native build: the compiled-in table; English, then the language-neutral
// texts, as the default search.
#include "support/language_id.h"
#include "support/text_table.h"

namespace qvx {

std::wstring LoadText(std::uint32_t id) { return LoadText(id, g_langId); }

std::wstring LoadText(std::uint32_t id, std::uint16_t langId) {
    if (auto text = CompiledText(id, langId)) return *text;
    if (auto text = CompiledText(id, /*langId=*/0x0409)) return *text;
    return CompiledText(id, /*langId=*/0).value_or(L"");
}

}  // namespace qvx
