// Texts by id on the native build: the compiled-in table, English as the default search.
#include "support/language_id.h"
#include "support/text_table.h"

namespace qvx {

std::wstring LoadText(std::uint32_t id) {
    if (auto text = CompiledText(id, g_langId)) return *text;
    return CompiledText(id, /*langId=*/0x0409).value_or(L"");
}

}  // namespace qvx
