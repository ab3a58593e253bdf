#include "nav/standard_views.h"

#include "catalogue/action.h"
#include "toolkit/pro_toolkit.h"

#include <cmath>

namespace qvx::nav {
namespace {

/// The host's value for the axis that points out of the screen.
constexpr int kScreenNormalAxis = 103;

}  // namespace

std::array<std::array<double, 4>, 4> StandardViewMatrix(EStandardView view) {
    // Computed, not written as decimals, so they are the nearest doubles to the true roots.
    const double s2 = std::sqrt(0.5);
    const double s6 = std::sqrt(1.0 / 6.0);
    const double s3 = std::sqrt(1.0 / 3.0);
    const double t = std::sqrt(2.0 / 3.0);
    std::array<std::array<double, 3>, 3> r{};
    switch (view) {
        case EStandardView::Front:
            r = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
            break;
        case EStandardView::Back:
            r = {{{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}}};
            break;
        case EStandardView::Top:
            r = {{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}};
            break;
        case EStandardView::Bottom:
            r = {{{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}}};
            break;
        case EStandardView::Left:
            r = {{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}};
            break;
        case EStandardView::Right:
            r = {{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}};
            break;
        case EStandardView::Iso1:
            r = {{{s2, -s6, s3}, {0, t, s3}, {-s2, -s6, s3}}};
            break;
        case EStandardView::Iso2:
            r = {{{-s2, s6, -s3}, {0, t, s3}, {s2, s6, -s3}}};
            break;
    }
    std::array<std::array<double, 4>, 4> m{};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) m[i][j] = r[i][j];
    }
    m[3][3] = 1.0;
    return m;
}

void ViewRefit() {
    try {
        CAction refit(L"ProCmdViewRefit", L"", CAction::kProCmd, L"", L"");
        refit.Execute();
    } catch (...) {
    }
}

void SetStandardView(EStandardView view) {
    try {
        auto table = StandardViewMatrix(view);
        ProMatrix matrix;
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) matrix[i][j] = table[i][j];
        }
        ProViewMatrixSet(nullptr, nullptr, matrix);
        ViewRefit();
    } catch (...) {
    }
}

void RollView(double angle) {
    try {
        ProViewRotate(nullptr, nullptr, kScreenNormalAxis, angle);
        ProWindowRefresh(-1);
    } catch (...) {
    }
}

bool WindowCentreToModel(ProWindowId, double point[3]) {
    ProMatrix m = {};
    ProWindowCurrentMatrixGet(m);
    const double min[3] = {0.0, 0.0, 0.0};
    const double max[3] = {kWindowWidth, kWindowHeight, 0.0};
    // Depth has no extent, and the division by m[2][2] is done all the same.
    for (int i = 0; i < 3; ++i) point[i] = ((max[i] - min[i]) * 0.5 - m[3][i]) / m[i][i];
    return true;
}

}  // namespace qvx::nav
