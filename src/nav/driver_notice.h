// Short notices shown by the driver, above the host's graphics window. Texts that begin with
// "STR_" are keys that the driver turns into words of its own language.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace qvx::nav {

/// `type` is passed to the driver as it is.
void ShowDriverNotice(const std::wstring& text, const char* caption, std::uint32_t type);

/// Where notices go instead of the driver; `caption` may be null.
using DriverNoticeSink =
    std::function<void(const std::wstring& text, const char* caption, std::uint32_t type)>;
/// Sends notices to `sink` from now on; an empty function sends them to the driver again.
void SetDriverNoticeSink(DriverNoticeSink sink);

}  // namespace qvx::nav
