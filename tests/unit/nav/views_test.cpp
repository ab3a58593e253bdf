// Standard views, refit and rolls, from a command code to what the host shows.
#include "nav_fixture.h"

#include "nav/command_codes.h"
#include "nav/standard_views.h"
#include "support/os.h"

#include <cmath>
#include <fstream>

namespace qvx::testing {
namespace {

using nav::EStandardView;

const char kRefit[] = "~ Command `ProCmdViewRefit`;";

TEST(StandardViewMatrixTest, EveryViewIsARotationWithNoTranslation) {
    for (int v = 0; v <= static_cast<int>(EStandardView::Iso2); ++v) {
        auto m = nav::StandardViewMatrix(static_cast<EStandardView>(v));
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                double dot = 0;
                for (int k = 0; k < 3; ++k) dot += m[i][k] * m[j][k];
                EXPECT_NEAR(dot, i == j ? 1.0 : 0.0, 1e-15) << "view " << v << " rows " << i << j;
            }
            EXPECT_EQ(m[i][3], 0.0);
            EXPECT_EQ(m[3][i], 0.0);
        }
        EXPECT_EQ(m[3][3], 1.0);
        double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                     m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                     m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
        EXPECT_NEAR(det, 1.0, 1e-15) << "view " << v << " is a reflection";
    }
}

TEST(StandardViewMatrixTest, IsometricEntriesAreTheRootsToFullPrecision) {
    auto iso1 = nav::StandardViewMatrix(EStandardView::Iso1);
    EXPECT_DOUBLE_EQ(iso1[0][0], 0.7071067811865476);
    EXPECT_DOUBLE_EQ(iso1[0][1], -0.408248290463863);
    EXPECT_DOUBLE_EQ(iso1[1][2], 0.5773502691896257);
    EXPECT_DOUBLE_EQ(iso1[1][1], 0.816496580927726);
    auto iso2 = nav::StandardViewMatrix(EStandardView::Iso2);
    EXPECT_DOUBLE_EQ(iso2[2][1], 0.408248290463863);
    EXPECT_DOUBLE_EQ(iso2[2][2], -0.5773502691896257);
}

TEST_F(NavTest, TopSetsTheMatrixThenRefitsAndReleaseDoesNothing) {
    Host().panZoom[3][0] = 5000;  // the model far off screen
    Send(V3DCMD_TOP, true);
    auto top = nav::StandardViewMatrix(EStandardView::Top);
    ExpectMatrixNear(Host().orientation, {top[0], top[1], top[2], top[3]}, 0);
    ASSERT_EQ(Host().macros, std::vector<std::string>{kRefit});
    ExpectMatrixNear(Host().panZoom, sim::FitPanZoom(*Host().model, Host().orientation), 1e-9);

    Send(V3DCMD_TOP, false);
    EXPECT_EQ(Host().macros.size(), 1u);
    Send(V3DCMD_TOP, true);
    EXPECT_EQ(Host().macros.size(), 2u) << "a second press sets the view again";
}

TEST_F(NavTest, FitRunsTheHostRefitOnlyAndLeavesTheOrientation) {
    auto before = Host().orientation;
    Host().panZoom[0][0] = Host().panZoom[1][1] = Host().panZoom[2][2] = 0.01;
    Send(V3DCMD_FIT, true);
    EXPECT_EQ(Host().macros, std::vector<std::string>{kRefit});
    ExpectMatrixNear(Host().orientation, before, 0);
    EXPECT_GT(Host().panZoom[0][0], 1.0);
}

TEST_F(NavTest, EveryViewCodeGivesItsMatrix) {
    struct Case {
        unsigned code;
        EStandardView view;
    } cases[] = {{V3DCMD_FRONT, EStandardView::Front}, {V3DCMD_BACK, EStandardView::Back},
                 {V3DCMD_TOP, EStandardView::Top},     {V3DCMD_BOTTOM, EStandardView::Bottom},
                 {V3DCMD_LEFT, EStandardView::Left},   {V3DCMD_RIGHT, EStandardView::Right},
                 {V3DCMD_ISO1, EStandardView::Iso1},   {V3DCMD_ISO2, EStandardView::Iso2}};
    auto pictures = os::GetEnv(L"QVX_PICTURE_DIR");
    for (const Case& c : cases) {
        Send(c.code, true);
        auto m = nav::StandardViewMatrix(c.view);
        SCOPED_TRACE(c.code);
        ExpectMatrixNear(Host().orientation, {m[0], m[1], m[2], m[3]}, 0);
        if (pictures) {
            static const char* names[] = {"front", "back",  "top",  "bottom",
                                          "left",  "right", "iso1", "iso2"};
            std::string name = names[static_cast<int>(c.view)];
            std::ofstream(os::NarrowUtf8(*pictures) + "/view-" + name + ".svg")
                << sim::RenderSvg(*Host().model, Host().orientation, Host().panZoom,
                                  name + " (code " + std::to_string(c.code) + ")");
        }
    }
}

TEST_F(NavTest, RollsTurnByAQuarterWithTheirSignsKeepingZoomAndCentre) {
    Send(V3DCMD_FRONT, true);
    auto zoom = Host().panZoom;
    auto centre = [&] {
        // The model point at the window's centre.
        auto m = Host().orientation;
        double vx = (nav::kWindowWidth / 2 - Host().panZoom[3][0]) / Host().panZoom[0][0];
        double vy = (nav::kWindowHeight / 2 - Host().panZoom[3][1]) / Host().panZoom[1][1];
        return std::array<double, 2>{vx - m[3][0], vy - m[3][1]};
    };
    auto before = centre();
    Host().calls.clear();
    Send(V3DCMD_ROLL_CW, true);
    Send(V3DCMD_ROLL_CCW, true);
    Send(V3DCMD_ROLL_CCW, false);
    std::vector<std::string> rotations;
    for (const auto& call : Host().calls) {
        if (call.rfind("ProViewRotate", 0) == 0) rotations.push_back(call);
    }
    EXPECT_EQ(rotations, (std::vector<std::string>{"ProViewRotate axis 103 angle -90.000000",
                                                   "ProViewRotate axis 103 angle 90.000000"}));
    EXPECT_EQ(Host().refreshCount, 2);
    EXPECT_EQ(Host().macros.size(), 1u) << "no refit after a roll";
    ExpectMatrixNear(Host().panZoom, zoom, 0);
    auto after = centre();
    EXPECT_NEAR(after[0], before[0], 1e-9);
    EXPECT_NEAR(after[1], before[1], 1e-9);
}

TEST_F(NavTest, RollClockwiseTurnsTheModelXAxisDown) {
    Send(V3DCMD_FRONT, true);
    Send(V3DCMD_ROLL_CW, true);
    sim::Point3 x = sim::Transform({1, 0, 0}, Host().orientation);
    sim::Point3 o = sim::Transform({0, 0, 0}, Host().orientation);
    EXPECT_NEAR(x[0] - o[0], 0.0, 1e-12);
    EXPECT_NEAR(x[1] - o[1], -1.0, 1e-12);
}

TEST_F(NavTest, WindowCentreOfAScaledAndShiftedWindow) {
    Host().panZoom = sim::Identity();
    Host().panZoom[0][0] = Host().panZoom[1][1] = Host().panZoom[2][2] = 2.0;
    Host().panZoom[3][0] = 100.0;
    double point[3] = {-1, -1, -1};
    EXPECT_TRUE(nav::WindowCentreToModel(1, point));
    EXPECT_DOUBLE_EQ(point[0], 200.0);
    EXPECT_DOUBLE_EQ(point[1], 210.9375);
    EXPECT_DOUBLE_EQ(point[2], 0.0);
}

TEST_F(NavTest, WithoutAModelEveryViewCommandChangesNothing) {
    Host().CloseModel();
    for (unsigned code : {2u, 3u, 9u, 10u, 11u, 76u, 112u}) Send(code, true);
    ExpectMatrixNear(Host().orientation, sim::Identity(), 0);
    EXPECT_FALSE(Host().model);
}

}  // namespace
}  // namespace qvx::testing
