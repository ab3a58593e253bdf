// Animated zoom on a virtual clock: a button is pressed at 0 and released when the test says,
// with messages delivered inside the animation's pump as the host's thread would.
#include "nav_fixture.h"

#include "nav/command_codes.h"
#include "nav/easing.h"
#include "nav/mouse_tracking.h"
#include "nav/standard_views.h"
#include "nav/zoom_animation.h"
#include "nav/zoom_drivers.h"

#include "support/boundary.h"

#include <cmath>
#include <stdexcept>

namespace qvx::testing {
namespace {

class ZoomTest : public NavTest {
protected:
    void SetUp() override {
        NavTest::SetUp();
        m_loop.Reset();
        m_scale = Host().panZoom[0][0];
    }
    void TearDown() override {
        m_loop.Reset();
        NavTest::TearDown();
    }

    /// Presses `code` at 0 and releases it at `releaseMs`.
    void PressFor(unsigned code, std::int64_t releaseMs, float parameter = 0.0f) {
        m_loop.Schedule(releaseMs, [=] { Send(code, false, parameter); });
        Send(code, true, parameter);
    }
    double ScaleRatio() const { return Host().panZoom[0][0] / m_scale; }
    std::vector<std::string> OptionSets() const {
        std::vector<std::string> sets;
        for (const auto& call : Host().calls) {
            if (call.rfind("ProConfigoptSet", 0) == 0) sets.push_back(call.substr(16));
        }
        return sets;
    }

    double m_scale = 0;
};

TEST_F(ZoomTest, TapZoomsInByExactlyFiveAndRestoresTheOption) {
    PressFor(V3DCMD_ZOOM_IN, 50);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
    EXPECT_EQ(OptionSets(),
              (std::vector<std::string>{"max_animation_time 0.0", "max_animation_time 1.0"}));
    // Frames every 16 ms over the 400 ms step, then the exact end.
    ASSERT_GE(Host().panZoomFrames.size(), 25u);
    for (std::size_t i = 1; i < Host().panZoomFrames.size(); ++i) {
        EXPECT_GE(Host().panZoomFrames[i].matrix[0][0],
                  Host().panZoomFrames[i - 1].matrix[0][0] * (1 - 1e-12))
            << "frame " << i;
    }
    EXPECT_EQ(m_loop.OpenTimerPeriods(), 0);
}

TEST_F(ZoomTest, HoldZoomsByOneAndAHalfPerPeriodWithoutTheTapStep) {
    PressFor(V3DCMD_ZOOM_IN, 1000);
    double segments = std::log(ScaleRatio()) / std::log(std::pow(1.5, 1.0 / 3.0));
    EXPECT_NEAR(segments, std::round(segments), 1e-9) << "ends on a whole segment";
    EXPECT_GE(std::round(segments), 6.0);
    for (const auto& frame : Host().panZoomFrames) {
        EXPECT_LE(frame.matrix[0][0] / m_scale, ScaleRatio() + 1e-9) << "no five-times step";
    }
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
}

TEST_F(ZoomTest, ZoomOutHeldStepsByTwoThirdsPerPeriod) {
    PressFor(V3DCMD_ZOOM_OUT, 700);
    double segments = std::log(ScaleRatio()) / std::log(std::pow(2.0 / 3.0, 1.0 / 3.0));
    EXPECT_NEAR(segments, std::round(segments), 1e-9);
    EXPECT_LT(ScaleRatio(), 1.0);
}

TEST_F(ZoomTest, ParameterIsTheFirstFactorOfBothCodesOfAPair) {
    PressFor(V3DCMD_ZOOM_WINDOW_A, 20, 1.5f);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 1.5);
    m_scale = Host().panZoom[0][0];
    PressFor(V3DCMD_ZOOM_WINDOW_B, 20, 0.75f);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 0.75);
}

TEST_F(ZoomTest, SecondPressDuringAHoldOfTheSameDriverIsIgnored) {
    int frames = 0;
    m_loop.Schedule(500, [&] {
        frames = static_cast<int>(Host().panZoomFrames.size());
        Send(V3DCMD_ZOOM_IN, true);  // returns at once: the button is down already
        EXPECT_EQ(static_cast<int>(Host().panZoomFrames.size()), frames);
    });
    PressFor(V3DCMD_ZOOM_IN, 800);
    EXPECT_GT(frames, 0);
}

TEST_F(ZoomTest, AnotherDriverCancelsOneSegmentAndTheOptionComesBackInTheEnd) {
    m_loop.Schedule(500, [&] {
        m_loop.Schedule(520, [] { Send(V3DCMD_ZOOM_WINDOW_A, false, 2.0f); });
        Send(V3DCMD_ZOOM_WINDOW_A, true, 2.0f);
    });
    std::uint32_t before = g_zoomGeneration;
    PressFor(V3DCMD_ZOOM_IN, 1200);
    EXPECT_GT(g_zoomGeneration - before, 8u);
    EXPECT_GT(ScaleRatio(), 2.0);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
    auto sets = OptionSets();
    ASSERT_FALSE(sets.empty());
    EXPECT_EQ(sets.back(), "max_animation_time 1.0");
}

TEST_F(ZoomTest, NestedRunSavesAndRestoresTheZeroAndTheOuterRestoresTheOriginal) {
    double atNested = 0;
    m_loop.Schedule(300, [&] {
        atNested = Host().panZoom[0][0];
        easing::CConstantVelocity ease(50);
        double pivot[3] = {0, 0, 0};
        nav::AnimateZoom(1, pivot, 2.0, ease, false);
    });
    easing::CConstantVelocity ease(400);
    double pivot[3] = {0, 0, 0};
    nav::AnimateZoom(1, pivot, 3.0, ease, false);
    EXPECT_EQ(OptionSets(),
              (std::vector<std::string>{"max_animation_time 0.0", "max_animation_time 0.0",
                                        "max_animation_time 0.0", "max_animation_time 1.0"}));
    EXPECT_DOUBLE_EQ(Host().panZoom[0][0], 2.0 * atNested)
        << "the cancelled outer run leaves the nested run's end";
}

TEST_F(ZoomTest, QuitDuringTheWaitLeavesWithoutAnimating) {
    m_loop.Schedule(100, [this] { m_loop.PostQuit(); });
    Send(V3DCMD_ZOOM_IN, true);
    EXPECT_TRUE(Host().panZoomFrames.empty());
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
    m_loop.Reset();
    PressFor(V3DCMD_ZOOM_IN, 10);  // the flags were cleared on the way out
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0);
}

TEST_F(ZoomTest, QuitDuringTheAnimationStillEndsExactlyAndRestores) {
    m_loop.Schedule(50, [] { Send(V3DCMD_ZOOM_IN, false); });
    m_loop.Schedule(400, [this] { m_loop.PostQuit(); });
    Send(V3DCMD_ZOOM_IN, true);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0");
}

TEST_F(ZoomTest, ChangesUnderOnePercentAreNotAnimatedButStillCancel) {
    easing::CConstantVelocity ease(100);
    double pivot[3] = {0, 0, 0};
    std::uint32_t before = g_zoomGeneration;
    nav::AnimateZoom(1, pivot, 1.0, ease, false);
    nav::AnimateZoom(1, pivot, 1.009, ease, false);
    EXPECT_EQ(g_zoomGeneration, before + 2);
    EXPECT_TRUE(Host().panZoomFrames.empty());
    for (double factor : {1.01, 0.99}) {
        m_scale = Host().panZoom[0][0];
        nav::AnimateZoom(1, pivot, factor, ease, false);
        EXPECT_DOUBLE_EQ(ScaleRatio(), factor);
    }
}

TEST_F(ZoomTest, NoWindowDropsThePressAndClearsTheFlags) {
    Host().CloseModel();
    PressFor(V3DCMD_ZOOM_OUT, 50);
    EXPECT_TRUE(Host().panZoomFrames.empty());
    Host().OpenModel("again.prt");
    m_scale = Host().panZoom[0][0];
    m_loop.Reset();
    PressFor(V3DCMD_ZOOM_OUT, 50);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 0.2);
}

TEST_F(ZoomTest, ZeroOrNegativeHoldSettingsNeverHoldAndNeverHang) {
    nav::ZoomAboutWindowCentre(2.0, 1.5, 200, 200, /*holdPeriod=*/0, /*holdDelay=*/0, true);
    nav::ZoomAboutWindowCentre(2.0, 1.5, 200, 200, 0, 0, false);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 2.0);
    m_loop.Schedule(1000, [] { nav::ZoomAboutWindowCentre(2.0, -1.0, 200, 200, -5, -1, false); });
    nav::ZoomAboutWindowCentre(2.0, -1.0, 200, 200, -5, -1, true);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 4.0);
}

TEST_F(ZoomTest, PivotAtTheCentreGivesTheSamePictureEitherWay) {
    double centre[3];
    nav::WindowCentreToModel(1, centre);
    auto start = Host().panZoom;
    easing::CConstantVelocity ease(64);
    nav::AnimateZoom(1, centre, 3.0, ease, true);
    auto centring = Host().panZoom;
    Host().panZoom = start;
    nav::AnimateZoom(1, centre, 3.0, ease, false);
    ExpectMatrixNear(Host().panZoom, centring, 1e-9);
}

// Any handle stands for the graphics window here: the simulated host answers the tracking from
// its cursor, as long as it has no window of its own.
TEST_F(ZoomTest, CursorPivotStaysPutOrTravelsToTheCentre) {
    int window = 0;
    nav::SetHostGraphicsWindowLookup([&window] { return &window; });
    Host().cursor = sim::Point3{800.0, 600.0, 0.0};
    sim::Point3 under = Host().PanZoomPoint(*Host().cursor);
    PressFor(V3DCMD_ZOOM_CURSOR_FIXED_A, 10, 2.0f);
    auto fixed = Host().panZoom;
    EXPECT_NEAR(under[0] * fixed[0][0] + fixed[3][0], 800.0, 1e-9);
    EXPECT_NEAR(under[1] * fixed[1][1] + fixed[3][1], 600.0, 1e-9);

    under = Host().PanZoomPoint(*Host().cursor);
    PressFor(V3DCMD_ZOOM_CURSOR_CENTRED_A, 10, 2.0f);
    auto centred = Host().panZoom;
    EXPECT_NEAR(under[0] * centred[0][0] + centred[3][0], 500.0, 1e-9);
    EXPECT_NEAR(under[1] * centred[1][1] + centred[3][1], 421.875, 1e-9);
    nav::SetHostGraphicsWindowLookup(nullptr);
}

TEST_F(ZoomTest, WithoutAGraphicsWindowTheCursorZoomIsAboutTheCentre) {
    Host().cursor = sim::Point3{800.0, 600.0, 0.0};
    double centre[3];
    nav::WindowCentreToModel(1, centre);
    PressFor(V3DCMD_ZOOM_CURSOR_FIXED_A, 10, 2.0f);
    auto m = Host().panZoom;
    EXPECT_NEAR(centre[0] * m[0][0] + m[3][0], 500.0, 1e-9);
    EXPECT_NEAR(centre[1] * m[1][1] + m[3][1], 421.875, 1e-9);
}

TEST_F(ZoomTest, FailedMouseTrackingZoomsAboutTheOrigin) {
    int window = 0;
    nav::SetHostGraphicsWindowLookup([&window] { return &window; });
    Host().cursor.reset();
    auto before = Host().panZoom;
    PressFor(V3DCMD_ZOOM_CURSOR_FIXED_A, 10, 2.0f);
    nav::SetHostGraphicsWindowLookup(nullptr);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 2.0);
    // The origin of pan-zoom space stays where it was on the screen.
    EXPECT_NEAR(Host().panZoom[3][0], before[3][0], 1e-9);
    EXPECT_NEAR(Host().panZoom[3][1], before[3][1], 1e-9);
}

TEST_F(ZoomTest, HandlerThatThrowsStopsAtTheSlotAndTheNextPressWorks) {
    bool thrown = false;
    Host().onCall = [&thrown](const std::string& line) {
        if (!thrown && line.rfind("ProWindowPanZoomMatrixSet", 0) == 0) {
            thrown = true;
            throw std::runtime_error("host failed");
        }
    };
    const std::uint64_t before = BoundaryCatchCount();
    ::testing::internal::CaptureStdout();
    PressFor(V3DCMD_ZOOM_IN, 50);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "CQvxProE::OnCommandEx failed error=host failed\n");
    Host().onCall = nullptr;
    ASSERT_TRUE(thrown);
    EXPECT_EQ(BoundaryCatchCount() - before, 1u);
    EXPECT_EQ(Host().configOptions[L"max_animation_time"], L"1.0") << "restored on the way out";
    m_loop.Reset();
    m_scale = Host().panZoom[0][0];
    PressFor(V3DCMD_ZOOM_IN, 50);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0) << "the driver's flags were cleared on the way out";
}

TEST_F(ZoomTest, HostThatThrowsWhenTheOptionIsPutBackEndsOnlyThatZoom) {
    int sets = 0;
    Host().onCall = [&sets](const std::string& line) {
        if (line.rfind("ProConfigoptSet", 0) == 0 && ++sets == 2) throw std::runtime_error("no");
    };
    PressFor(V3DCMD_ZOOM_IN, 50);
    Host().onCall = nullptr;
    EXPECT_EQ(sets, 2) << "the put-back was reached";
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0);
    m_loop.Reset();
    m_scale = Host().panZoom[0][0];
    PressFor(V3DCMD_ZOOM_IN, 50);
    EXPECT_DOUBLE_EQ(ScaleRatio(), 5.0);
}

}  // namespace
}  // namespace qvx::testing
