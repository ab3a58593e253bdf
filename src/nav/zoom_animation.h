// One animated change of the window's pan-zoom matrix, and the generation counter by which a
// newer animation cancels an older one still on the stack.
#pragma once

#include "nav/easing.h"
#include "toolkit/pro_types.h"

#include <cstdint>

/// Raised by every AnimateZoom call; one thread touches it.
extern std::uint32_t g_zoomGeneration;

namespace qvx::nav {

/// Zooms the window by `factor` about `pivot` (pan-zoom space) along `ease`, one frame per
/// 16 ms pump. With `centreOnPivot` the pivot travels to the window's centre; otherwise it
/// stays where it is on the screen. Changes under 1% are not animated. The host's option
/// "max_animation_time" is "0.0" while frames are set and has its old text afterwards.
void AnimateZoom(ProWindowId window, const double* pivot, double factor, easing::IEase& ease,
                 bool centreOnPivot);

}  // namespace qvx::nav
