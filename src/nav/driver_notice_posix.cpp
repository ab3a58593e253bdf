#include "nav/driver_notice.h"

#include <utility>

namespace qvx::nav {
namespace {
std::vector<CDriverNotice> g_notices;
}

void ShowDriverNotice(const std::wstring& text, const char* caption, std::uint32_t type) {
    g_notices.push_back({text, caption ? caption : "", type});
}

std::vector<CDriverNotice> TakeDriverNoticesForTest() { return std::exchange(g_notices, {}); }

}  // namespace qvx::nav
