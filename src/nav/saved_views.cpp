#include "nav/saved_views.h"

#include "nav/driver_notice.h"
#include "support/os.h"
#include "toolkit/pro_toolkit.h"

namespace qvx::nav {
namespace {

// The driver's message box types of the two notices, passed to it as they are.
constexpr std::uint32_t kStoredNotice = 1;
constexpr std::uint32_t kEmptySlotNotice = 2;

}  // namespace

void ViewStore(std::string name) {
    try {
        std::wstring wide = os::WidenUtf8(name);
        ProView view = nullptr;
        if (ProViewStore(nullptr, wide.c_str(), &view) != PRO_TK_NO_ERROR) return;
        ShowDriverNotice(wide + L" saved", "STR_HINT", kStoredNotice);
    } catch (...) {
    }
}

void ViewRetrieve(std::string name) {
    try {
        std::wstring wide = os::WidenUtf8(name);
        ProView view = nullptr;
        if (ProViewRetrieve(nullptr, wide.c_str(), &view) == PRO_TK_E_NOT_FOUND) {
            ShowDriverNotice(L"STR_HOLD_TO_SAVE", "STR_HINT", kEmptySlotNotice);
        }
    } catch (...) {
    }
}

}  // namespace qvx::nav
