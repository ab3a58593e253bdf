// The device menu is bound to its command already; the menu itself is not built yet, so the
// command does nothing for now.
#include "nav/popup_menu.h"

namespace qvx::nav {

void ToggleDeviceMenu() {}

}  // namespace qvx::nav
