// The device's popup menu at the cursor.
#pragma once

namespace qvx::nav {

/// Opens the device menu, or closes it when it is open.
void ToggleDeviceMenu();

}  // namespace qvx::nav
