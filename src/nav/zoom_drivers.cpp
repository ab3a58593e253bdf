// The three zoom drivers: tap or hold, the eased step, and the steady held zoom.
#include "nav/zoom_drivers.h"

#include "nav/easing.h"
#include "nav/message_pump.h"
#include "nav/mouse_tracking.h"
#include "nav/standard_views.h"
#include "nav/zoom_animation.h"
#include "toolkit/pro_toolkit.h"

#include <atomic>
#include <cmath>

namespace qvx::nav {
namespace {

/// The button and the loop of one driver; each driver has its own pair.
struct CZoomFlags {
    std::atomic<bool> pressed{false};
    std::atomic<bool> running{false};
};

/// Clears both flags on every way out of a running driver.
class CZoomFlagsGuard {
public:
    explicit CZoomFlagsGuard(CZoomFlags& flags) : m_flags(flags) {}
    ~CZoomFlagsGuard() {
        m_flags.running.exchange(false);
        m_flags.pressed.exchange(false);
    }
    CZoomFlagsGuard(const CZoomFlagsGuard&) = delete;
    CZoomFlagsGuard& operator=(const CZoomFlagsGuard&) = delete;

private:
    CZoomFlags& m_flags;
};

enum class EPivot { WindowCentre, Cursor };

void RunZoomDriver(CZoomFlags& flags, EPivot pivotKind, bool centreOnPivot, double firstFactor,
                   double holdFactor, int acceleration, int deceleration, int holdPeriod,
                   int holdDelay, bool pressed) {
    if (flags.pressed.exchange(pressed) || !pressed) return;
    if (flags.running.exchange(true)) return;
    CZoomFlagsGuard guard(flags);

    const std::int64_t start = AnimationNowMs();
    ProWindowId window = -1;
    if (ProWindowCurrentGet(&window) != PRO_TK_NO_ERROR || window == -1) return;

    double pivot[3] = {0.0, 0.0, 0.0};
    if (pivotKind == EPivot::WindowCentre) {
        if (!WindowCentreToModel(window, pivot)) return;
    } else {
        int state = 0;
        TrackMousePosition(0, &state, pivot);
    }

    bool hold = false;
    if (holdDelay >= 1) {
        // Tell a tap from a hold: the button still down after the delay is a hold.
        do {
            if (AnimationNowMs() - start > holdDelay) {
                hold = true;
                break;
            }
            if (PumpMessages(16)) return;
        } while (flags.pressed.load());
    }
    if (!hold) {
        easing::CConstantAcceleration ease(acceleration, deceleration, 0.0);
        AnimateZoom(window, pivot, firstFactor, ease, centreOnPivot);
    }
    if (holdPeriod > 0 && holdFactor > 0) {
        constexpr int kSegmentMs = 100;
        const double step = std::pow(holdFactor, static_cast<double>(kSegmentMs) / holdPeriod);
        easing::CConstantVelocity ease(kSegmentMs);
        while (flags.pressed.load()) AnimateZoom(window, pivot, step, ease, false);
    }
}

}  // namespace

void ZoomToCursorCentring(double firstFactor, double holdFactor, int acceleration, int deceleration,
                          int holdPeriod, int holdDelay, bool pressed) {
    static CZoomFlags flags;
    RunZoomDriver(flags, EPivot::Cursor, true, firstFactor, holdFactor, acceleration, deceleration,
                  holdPeriod, holdDelay, pressed);
}

void ZoomAboutCursor(double firstFactor, double holdFactor, int acceleration, int deceleration,
                     int holdPeriod, int holdDelay, bool pressed) {
    static CZoomFlags flags;
    RunZoomDriver(flags, EPivot::Cursor, false, firstFactor, holdFactor, acceleration, deceleration,
                  holdPeriod, holdDelay, pressed);
}

void ZoomAboutWindowCentre(double firstFactor, double holdFactor, int acceleration,
                           int deceleration, int holdPeriod, int holdDelay, bool pressed) {
    static CZoomFlags flags;
    RunZoomDriver(flags, EPivot::WindowCentre, true, firstFactor, holdFactor, acceleration,
                  deceleration, holdPeriod, holdDelay, pressed);
}

}  // namespace qvx::nav
