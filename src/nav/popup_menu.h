// The device's popup menu at the cursor, behind command code 38.
#pragma once

#include <functional>

namespace qvx::nav {

/// What the device menu's button does; the plug-in's core installs it while it runs, and an
/// empty function takes it away.
void SetMenuButtonHandler(std::function<void(bool open)> handler);

/// Code 38 pressed: the menu button's handler with true, then straight away with false. The
/// first closes a menu of the host's; the second opens the device menu, or closes it.
void ToggleDeviceMenu();

}  // namespace qvx::nav
