// The zoom drivers are bound into the command table already; the animation behind them is not
// built yet, so a zoom command does nothing for now.
#include "nav/zoom_drivers.h"

namespace qvx::nav {

void ZoomToCursorCentring(double, double, int, int, int, int, bool) {}
void ZoomAboutCursor(double, double, int, int, int, int, bool) {}
void ZoomAboutWindowCentre(double, double, int, int, int, int, bool) {}

}  // namespace qvx::nav
