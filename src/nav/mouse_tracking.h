// The model point under the cursor, by way of the host's mouse tracking, which returns only
// once the mouse moves: a helper thread nudges the pointer by posted messages meanwhile.
#pragma once

#include "toolkit/pro_types.h"

namespace qvx::nav {

/// The host's graphics window, as an opaque handle; null when there is none (no current
/// OpenGL device context, as under a display without OpenGL).
void* FindHostGraphicsWindow();
/// Makes FindHostGraphicsWindow() give `window` (null: look it up again); for tests.
void SetHostGraphicsWindowForTest(void* window);

/// Fills `point` with the pan-zoom space point under the cursor. Without a graphics window it
/// gives the window's centre. A failing host call leaves `point` as it was.
void TrackMousePosition(int option, int* state, double point[3]);

}  // namespace qvx::nav
