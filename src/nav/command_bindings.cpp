// The rows of the binding table.
#include "nav/command_bindings.h"

#include "nav/command_codes.h"
#include "nav/popup_menu.h"
#include "nav/saved_views.h"
#include "nav/standard_views.h"
#include "nav/zoom_drivers.h"

#include <boost/bind/bind.hpp>

namespace qvx::nav {
namespace {

using namespace boost::placeholders;

constexpr animation_times_t kTimes{200, 200, 300};
constexpr int kHoldDelayMs = 240;

using ZoomDriverFn = void (*)(double, double, int, int, int, int, bool);

// The targets are bound as the functions they are: a call hands the bound one to the invoker
// by reference. (Wrapped otherwise, each call would build a new function from the wrapper, on
// the heap, and a release could be lost to memory running out.)
CCommandBinding OnPress(std::uint32_t code, boost::function<void()> target) {
    return {code, 0, boost::bind(&InvokeOnPress, target, _1, _2, _3)};
}

// The float parameter is the first factor; the hold factor is 1.5 whatever the parameter.
CCommandBinding ZoomWithParameter(std::uint32_t code, ZoomDriverFn driver) {
    boost::function<void(float, bool)> target =
        boost::bind(driver, _1, 1.5, kTimes.acceleration, kTimes.deceleration, kTimes.holdPeriod,
                    kHoldDelayMs, _2);
    return {code, 0, boost::bind(&InvokeWithParameter, target, _1, _2, _3)};
}

CCommandBinding ZoomWithState(std::uint32_t code, ZoomDriverFn driver, double firstFactor,
                              double holdFactor) {
    boost::function<void(bool)> target =
        boost::bind(driver, firstFactor, holdFactor, kTimes.acceleration, kTimes.deceleration,
                    kTimes.holdPeriod, kHoldDelayMs, _1);
    return {code, 0, boost::bind(&InvokeWithState, target, _1, _2, _3)};
}

CCommandBinding StandardView(std::uint32_t code, EStandardView view) {
    return OnPress(code, boost::bind(&SetStandardView, view));
}

}  // namespace

void InvokeOnPress(const boost::function<void()>& target, bool pressed, boost::array<int, 16>,
                   boost::array<float, 16>) {
    if (pressed) target();
}

void InvokeWithState(const boost::function<void(bool)>& target, bool pressed, boost::array<int, 16>,
                     boost::array<float, 16>) {
    target(pressed);
}

void InvokeWithParameter(const boost::function<void(float, bool)>& target, bool pressed,
                         boost::array<int, 16>, boost::array<float, 16> floats) {
    target(floats[0], pressed);
}

const std::vector<CCommandBinding>& AnimatedZoomBindings() {
    // Each pair shares one target: the driver tells A from B only by the parameter it sends.
    static const std::vector<CCommandBinding> rows = {
        ZoomWithParameter(V3DCMD_ZOOM_CURSOR_CENTRED_A, &ZoomToCursorCentring),
        ZoomWithParameter(V3DCMD_ZOOM_CURSOR_CENTRED_B, &ZoomToCursorCentring),
        ZoomWithParameter(V3DCMD_ZOOM_CURSOR_FIXED_A, &ZoomAboutCursor),
        ZoomWithParameter(V3DCMD_ZOOM_CURSOR_FIXED_B, &ZoomAboutCursor),
        ZoomWithParameter(V3DCMD_ZOOM_WINDOW_A, &ZoomAboutWindowCentre),
        ZoomWithParameter(V3DCMD_ZOOM_WINDOW_B, &ZoomAboutWindowCentre),
        // Never called: the view group's row for the same code replaces it.
        OnPress(V3DCMD_FIT, &ViewRefit),
        ZoomWithState(V3DCMD_ZOOM_IN, &ZoomToCursorCentring, 5.0, 1.5),
        ZoomWithState(V3DCMD_ZOOM_OUT, &ZoomAboutWindowCentre, 0.2, 2.0 / 3.0),
    };
    return rows;
}

const std::vector<CCommandBinding>& ViewBindings() {
    static const std::vector<CCommandBinding> rows = {
        OnPress(V3DCMD_FIT, &ViewRefit),
        StandardView(V3DCMD_TOP, EStandardView::Top),
        StandardView(V3DCMD_LEFT, EStandardView::Left),
        StandardView(V3DCMD_RIGHT, EStandardView::Right),
        StandardView(V3DCMD_FRONT, EStandardView::Front),
        StandardView(V3DCMD_BOTTOM, EStandardView::Bottom),
        StandardView(V3DCMD_BACK, EStandardView::Back),
        OnPress(V3DCMD_ROLL_CW, boost::bind(&RollView, -90.0)),
        OnPress(V3DCMD_ROLL_CCW, boost::bind(&RollView, 90.0)),
        StandardView(V3DCMD_ISO1, EStandardView::Iso1),
        StandardView(V3DCMD_ISO2, EStandardView::Iso2),
        OnPress(V3DCMD_VIEW_1, boost::bind(&ViewRetrieve, std::string("Quorvex V1"))),
        OnPress(V3DCMD_VIEW_2, boost::bind(&ViewRetrieve, std::string("Quorvex V2"))),
        OnPress(V3DCMD_VIEW_3, boost::bind(&ViewRetrieve, std::string("Quorvex V3"))),
        OnPress(V3DCMD_SAVE_VIEW_1, boost::bind(&ViewStore, std::string("Quorvex V1"))),
        OnPress(V3DCMD_SAVE_VIEW_2, boost::bind(&ViewStore, std::string("Quorvex V2"))),
        OnPress(V3DCMD_SAVE_VIEW_3, boost::bind(&ViewStore, std::string("Quorvex V3"))),
    };
    return rows;
}

const std::vector<CCommandBinding>& MenuBindings() {
    static const std::vector<CCommandBinding> rows = {
        OnPress(V3DCMD_MENU_POPUP, &ToggleDeviceMenu),
    };
    return rows;
}

}  // namespace qvx::nav
