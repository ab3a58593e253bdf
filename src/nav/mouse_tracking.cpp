#include "nav/mouse_tracking.h"

#include "nav/standard_views.h"

namespace qvx::nav {
namespace {
void* g_windowForTest = nullptr;
}

// The platform's half: finds the window, and tracks with the pointer wiggled.
void* LookUpHostGraphicsWindow();
void TrackWithWiggler(void* window, int option, int* state, double point[3]);

void* FindHostGraphicsWindow() {
    return g_windowForTest ? g_windowForTest : LookUpHostGraphicsWindow();
}

void SetHostGraphicsWindowForTest(void* window) { g_windowForTest = window; }

void TrackMousePosition(int option, int* state, double point[3]) {
    void* window = FindHostGraphicsWindow();
    if (!window) {
        WindowCentreToModel(-1, point);
        return;
    }
    TrackWithWiggler(window, option, state, point);
}

}  // namespace qvx::nav
