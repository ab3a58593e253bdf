// Short notices shown by the driver, above the host's graphics window. Texts that begin with
// "STR_" are keys that the driver turns into words of its own language.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qvx::nav {

/// `type` is passed to the driver as it is.
void ShowDriverNotice(const std::wstring& text, const char* caption, std::uint32_t type);

#ifndef _WIN32
struct CDriverNotice {
    std::wstring text;
    std::string caption;
    std::uint32_t type;
};
/// The notices shown so far on the native build, which has no driver; the list is emptied.
std::vector<CDriverNotice> TakeDriverNoticesForTest();
#endif

}  // namespace qvx::nav
