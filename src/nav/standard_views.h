// Standard views, refit, rolls, and the window centre in pan-zoom space. A view matrix is the
// host's ProMatrix: a model point as a row vector times the matrix gives view coordinates.
#pragma once

#include "toolkit/pro_types.h"

#include <array>

namespace qvx::nav {

enum class EStandardView { Front, Back, Top, Bottom, Left, Right, Iso1, Iso2 };

/// The host's window extents in its own screen units, whatever the window's pixel size.
inline constexpr double kWindowWidth = 1000.0;
inline constexpr double kWindowHeight = 843.75;

/// The orientation of a standard view: rows 1 to 3 as listed, zero translation.
std::array<std::array<double, 4>, 4> StandardViewMatrix(EStandardView view);

/// Asks the host to fit the model into the window, through its own refit command.
void ViewRefit();
/// Sets the current view's orientation to a standard view, then refits.
void SetStandardView(EStandardView view);
/// Turns the view about the axis out of the screen by `angle` degrees and redraws; no refit.
void RollView(double angle);
/// The point of pan-zoom space at the window's centre; always succeeds.
bool WindowCentreToModel(ProWindowId window, double point[3]);

}  // namespace qvx::nav
