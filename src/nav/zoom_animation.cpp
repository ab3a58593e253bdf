#include "nav/zoom_animation.h"

#include "nav/message_pump.h"
#include "nav/standard_views.h"
#include "toolkit/pro_toolkit.h"

std::uint32_t g_zoomGeneration = 0;

namespace qvx::nav {
namespace {

constexpr const wchar_t* kAnimationOption = L"max_animation_time";
constexpr unsigned kFrameMs = 16;
const double kExtent[3] = {kWindowWidth, kWindowHeight, 0.0};

/// Sets "max_animation_time" to "0.0" for its life and puts the saved text back at the end.
class CAnimationOptionScope {
public:
    CAnimationOptionScope() {
        ProConfigoptGet(kAnimationOption, m_saved);
        ProConfigoptSet(kAnimationOption, L"0.0");
    }
    ~CAnimationOptionScope() {
        // A host that throws here must not end the process, as an exception leaving a
        // destructor would; the option then keeps the value the host left it.
        try {
            ProConfigoptSet(kAnimationOption, m_saved);
        } catch (...) {
        }
    }
    CAnimationOptionScope(const CAnimationOptionScope&) = delete;
    CAnimationOptionScope& operator=(const CAnimationOptionScope&) = delete;

private:
    ProLine m_saved = {};
};

// Sets one frame of scale `s`; `position()` is asked once per axis for the way done.
template <typename PositionFn>
void SetFrame(ProWindowId window, const ProMatrix m, const double c[3], const double d[3], double k,
              double s, bool centreOnPivot, PositionFn position) {
    ProMatrix frame = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    for (int i = 0; i < 3; ++i) {
        const double p = position();
        double e = centreOnPivot ? c[i] + p * d[i] : c[i] + p * k * d[i];
        frame[i][i] = m[i][i] * s;
        frame[3][i] = kExtent[i] * 0.5 - frame[i][i] * e;
    }
    ProWindowPanZoomMatrixSet(window, frame);
    ProWindowRefresh(window);
}

}  // namespace

void AnimateZoom(ProWindowId window, const double* pivot, double factor, easing::IEase& ease,
                 bool centreOnPivot) {
    const std::uint32_t generation = ++g_zoomGeneration;
    if (factor > 0.99 && factor < 1.01) return;

    ProMatrix m = {};
    ProWindowCurrentMatrixGet(m);
    double c[3], d[3];
    for (int i = 0; i < 3; ++i) {
        c[i] = (kExtent[i] * 0.5 - m[3][i]) / m[i][i];
        d[i] = pivot[i] - c[i];
    }
    const double k = 1.0 - 1.0 / factor;

    CAnimationOptionScope option;
    {
        CTimerPeriodScope period;
        const std::int64_t start = AnimationNowMs();
        for (;;) {
            if (PumpMessages(kFrameMs)) break;
            if (g_zoomGeneration != generation) break;
            const std::int64_t elapsed = AnimationNowMs() - start;
            const double s = 1.0 / (1.0 - ease.Position(elapsed) * k);
            SetFrame(window, m, c, d, k, s, centreOnPivot, [&] { return ease.Position(elapsed); });
            std::int64_t end = 0;
            ease.Finish(end);
            if (elapsed >= end) break;
        }
    }
    // A cancelled run leaves its last frame to the newer run; otherwise the exact end.
    if (g_zoomGeneration == generation) {
        SetFrame(window, m, c, d, k, factor, centreOnPivot, [] { return 1.0; });
    }
}

}  // namespace qvx::nav
