#include "nav/mouse_tracking.h"

#include "nav/standard_views.h"

namespace qvx::nav {

// The platform's half: finds the window, and tracks with the pointer wiggled.
void* LookUpHostGraphicsWindow();
void TrackWithWiggler(void* window, int option, int* state, double point[3]);

namespace {
std::function<void*()>& Lookup() {
    static std::function<void*()> lookup;
    return lookup;
}
}  // namespace

void* FindHostGraphicsWindow() { return Lookup() ? Lookup()() : LookUpHostGraphicsWindow(); }

void SetHostGraphicsWindowLookup(std::function<void*()> lookup) { Lookup() = std::move(lookup); }

void TrackMousePosition(int option, int* state, double point[3]) {
    void* window = FindHostGraphicsWindow();
    if (!window) {
        WindowCentreToModel(-1, point);
        return;
    }
    TrackWithWiggler(window, option, state, point);
}

}  // namespace qvx::nav
