#include "nav/driver_notice.h"

#include "client/detail/oxapp_shim.h"
#include "nav/mouse_tracking.h"
#include "support/os.h"

namespace qvx::nav {

void ShowDriverNotice(const std::wstring& text, const char* caption, std::uint32_t type) {
    // The driver's message box takes narrow text; names of saved views are UTF-8.
    OxMessageBox(FindHostGraphicsWindow(), os::NarrowUtf8(text).c_str(), caption, type);
}

}  // namespace qvx::nav
