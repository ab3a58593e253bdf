#include "support/text_table.h"

#include "support/os.h"

namespace qvx {
namespace {

struct TextRow {
    std::uint32_t id;
    std::uint16_t langId;
    const char* utf8;
};

constexpr TextRow kTexts[] = {
#include "string_table.inc"
};

}  // namespace

std::optional<std::wstring> CompiledText(std::uint32_t id, std::uint16_t langId) {
    for (const TextRow& row : kTexts) {
        if (row.id == id && row.langId == langId) return os::WidenUtf8(row.utf8);
    }
    return std::nullopt;
}

}  // namespace qvx
