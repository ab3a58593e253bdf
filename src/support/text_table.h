// The plug-in's own texts by id: category names, mode names, menu and dialog texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace qvx {

/// The text `id` in g_langId; when that language has none, the platform's default search
/// (Windows: the module's string resources as LoadString finds them; native: English).
/// Empty when no language has the id.
std::wstring LoadText(std::uint32_t id);
/// The same in `langId` instead of g_langId.
std::wstring LoadText(std::uint32_t id, std::uint16_t langId);

/// The compiled-in table, made from the same source as the DLL's string resources: the text
/// of `id` in exactly `langId`, if it has one.
std::optional<std::wstring> CompiledText(std::uint32_t id, std::uint16_t langId);

}  // namespace qvx
