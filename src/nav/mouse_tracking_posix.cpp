// The native build has no graphics window of its own; when a look-up hands one in, the host's
// tracking runs without a wiggler.
#include "nav/mouse_tracking.h"
#include "toolkit/pro_toolkit.h"

namespace qvx::nav {

void* LookUpHostGraphicsWindow() { return nullptr; }

void TrackWithWiggler(void*, int option, int* state, double point[3]) {
    ProMouseTrack(option, state, point);
}

}  // namespace qvx::nav
