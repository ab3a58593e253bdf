// The model point under the cursor, by way of the host's mouse tracking, which returns only
// once the mouse moves: a helper thread nudges the pointer by posted messages meanwhile.
#pragma once

#include "toolkit/pro_types.h"

#include <functional>

namespace qvx::nav {

/// The host's graphics window, as an opaque handle; null when there is none (no current
/// OpenGL device context, as under a display without OpenGL, and always on the native build).
void* FindHostGraphicsWindow();
/// Makes FindHostGraphicsWindow() answer from `lookup`; an empty function puts the look-up
/// through the current OpenGL device context back.
void SetHostGraphicsWindowLookup(std::function<void*()> lookup);

/// Fills `point` with the pan-zoom space point under the cursor. Without a graphics window it
/// gives the window's centre. A failing host call leaves `point` as it was.
void TrackMousePosition(int option, int* state, double point[3]);

}  // namespace qvx::nav
