// The pointer wiggler's single step, which a test may replace to see the wiggler's thread fail.
#pragma once

#include "support/windows_api.h"

#include <functional>

namespace qvx::nav {

/// One nudge: a mouse move at `client` (client coordinates) posted to `window`.
using WiggleStep = std::function<void(HWND window, POINT client)>;

/// Installs `step` for wigglers started from now on; an empty function puts the posted
/// WM_MOUSEMOVE back.
void SetWiggleStep(WiggleStep step);

}  // namespace qvx::nav
