// String values of the system registry, for the installation folders the plug-in looks up.
// The native build keeps an in-process registry instead, which tests fill.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace qvx::os {

enum class RegistryRoot { LocalMachine, CurrentUser };

/// Which registry a 32-bit program on 64-bit Windows reads: its own redirected view, or the
/// 64-bit one where 64-bit installers write. Elsewhere both are the same registry.
enum class RegistryView { Own, Native64 };

/// Reads a string value with room for `capacity` characters (a longer value is cut), opening
/// the key for reading only. Empty optional when the key or the value is missing or not text.
std::optional<std::wstring> ReadRegistryString(RegistryRoot root, const std::wstring& key,
                                               const std::wstring& value, std::size_t capacity,
                                               RegistryView view = RegistryView::Own);

/// Writes (creating the key) or, with an empty optional, deletes a string value. For the
/// simulated host and tests; the plug-in itself never writes the registry.
bool WriteRegistryString(RegistryRoot root, const std::wstring& key, const std::wstring& value,
                         const std::optional<std::wstring>& data);

}  // namespace qvx::os
