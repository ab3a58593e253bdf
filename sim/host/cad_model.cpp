#include "sim/host/cad_model.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace sim {

Matrix4 Identity() {
    Matrix4 m{};
    for (int i = 0; i < 4; ++i) m[i][i] = 1.0;
    return m;
}

Matrix4 Multiply(const Matrix4& a, const Matrix4& b) {
    Matrix4 r{};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            for (int k = 0; k < 4; ++k) r[i][j] += a[i][k] * b[k][j];
        }
    }
    return r;
}

Point3 Transform(const Point3& p, const Matrix4& m) {
    Point3 r{};
    for (int j = 0; j < 3; ++j) r[j] = p[0] * m[0][j] + p[1] * m[1][j] + p[2] * m[2][j] + m[3][j];
    return r;
}

CModel MakeSamplePart(const std::string& name) {
    CModel model;
    model.name = name;
    model.type = kModelPart;
    static int handles = 0;
    model.handle = ++handles;
    // Its mass properties as the host computes them with the model's own density (steel).
    model.mass = CMassProperties{571250, 7.85e-06, 4.484};
    const double x0 = -60, x1 = 60, y0 = -40, y1 = 40, z0 = -25, z1 = 25, ridge = 70;
    auto edge = [&](Point3 a, Point3 b) { model.edges.push_back({a, b}); };
    // The block.
    for (double y : {y0, y1}) {
        edge({x0, y, z0}, {x1, y, z0});
        edge({x1, y, z0}, {x1, y, z1});
        edge({x1, y, z1}, {x0, y, z1});
        edge({x0, y, z1}, {x0, y, z0});
    }
    for (double x : {x0, x1}) {
        for (double z : {z0, z1}) edge({x, y0, z}, {x, y1, z});
    }
    // The roof: a ridge along X above the block's middle.
    edge({x0, ridge, 0}, {x1, ridge, 0});
    for (double x : {x0, x1}) {
        edge({x, y1, z0}, {x, ridge, 0});
        edge({x, y1, z1}, {x, ridge, 0});
    }
    // A chimney standing on the roof near +X, +Z.
    const double c0 = 30, c1 = 45, d0 = 8, d1 = 20, top = 85;
    for (double cx : {c0, c1}) {
        for (double cz : {d0, d1}) edge({cx, 55, cz}, {cx, top, cz});
    }
    edge({c0, top, d0}, {c1, top, d0});
    edge({c1, top, d0}, {c1, top, d1});
    edge({c1, top, d1}, {c0, top, d1});
    edge({c0, top, d1}, {c0, top, d0});
    model.boxMin = {x0, y0, z0};
    model.boxMax = {x1, top, z1};
    return model;
}

Matrix4 FitPanZoom(const CModel& model, const Matrix4& orientation) {
    double lo[3] = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                    std::numeric_limits<double>::max()};
    double hi[3] = {-lo[0], -lo[1], -lo[2]};
    for (int corner = 0; corner < 8; ++corner) {
        Point3 p = {corner & 1 ? model.boxMax[0] : model.boxMin[0],
                    corner & 2 ? model.boxMax[1] : model.boxMin[1],
                    corner & 4 ? model.boxMax[2] : model.boxMin[2]};
        Point3 v = Transform(p, orientation);
        for (int i = 0; i < 3; ++i) {
            lo[i] = std::min(lo[i], v[i]);
            hi[i] = std::max(hi[i], v[i]);
        }
    }
    double w = std::max(hi[0] - lo[0], 1e-9);
    double h = std::max(hi[1] - lo[1], 1e-9);
    double scale = 0.85 * std::min(kWindowWidth / w, kWindowHeight / h);
    Matrix4 m = Identity();
    m[0][0] = m[1][1] = m[2][2] = scale;
    m[3][0] = kWindowWidth / 2 - scale * (lo[0] + hi[0]) / 2;
    m[3][1] = kWindowHeight / 2 - scale * (lo[1] + hi[1]) / 2;
    m[3][2] = -scale * (lo[2] + hi[2]) / 2;
    return m;
}

Matrix4 RollAboutWindowCentre(const Matrix4& orientation, const Matrix4& panZoom, double degrees) {
    // The view point at the window's centre, through the inverse of the pan-zoom matrix.
    Point3 c = {(kWindowWidth / 2 - panZoom[3][0]) / panZoom[0][0],
                (kWindowHeight / 2 - panZoom[3][1]) / panZoom[1][1], 0.0};
    double a = degrees * std::acos(-1.0) / 180.0;
    Matrix4 toCentre = Identity(), rotate = Identity(), back = Identity();
    toCentre[3][0] = -c[0];
    toCentre[3][1] = -c[1];
    rotate[0][0] = std::cos(a);
    rotate[0][1] = std::sin(a);
    rotate[1][0] = -std::sin(a);
    rotate[1][1] = std::cos(a);
    back[3][0] = c[0];
    back[3][1] = c[1];
    return Multiply(Multiply(Multiply(orientation, toCentre), rotate), back);
}

std::string RenderSvg(const CModel& model, const Matrix4& orientation, const Matrix4& panZoom,
                      const std::string& caption) {
    const double px = 640.0 / kWindowWidth;
    auto screen = [&](const Point3& p) {
        Point3 w = Transform(Transform(p, orientation), panZoom);
        return std::array<double, 2>{w[0] * px, (kWindowHeight - w[1]) * px};
    };
    std::string svg;
    char buf[256];
    svg +=
        "<svg xmlns='http://www.w3.org/2000/svg' width='640' height='540' "
        "viewBox='0 0 640 540'>\n";
    svg += "<rect width='640' height='540' fill='#f4f6fa' stroke='#889'/>\n";
    for (const CEdge& e : model.edges) {
        auto a = screen(e.from), b = screen(e.to);
        std::snprintf(buf, sizeof buf,
                      "<line x1='%.2f' y1='%.2f' x2='%.2f' y2='%.2f' stroke='#123' "
                      "stroke-width='2'/>\n",
                      a[0], a[1], b[0], b[1]);
        svg += buf;
    }
    const char* names[3] = {"X", "Y", "Z"};
    const char* colours[3] = {"#c00", "#080", "#00c"};
    for (int i = 0; i < 3; ++i) {
        Point3 tip{};
        tip[i] = 40.0;
        auto o = screen({0, 0, 0}), t = screen(tip);
        std::snprintf(buf, sizeof buf,
                      "<line x1='%.2f' y1='%.2f' x2='%.2f' y2='%.2f' stroke='%s' "
                      "stroke-width='3'/><text x='%.2f' y='%.2f' fill='%s' font-size='18' "
                      "font-family='sans-serif'>%s</text>\n",
                      o[0], o[1], t[0], t[1], colours[i], t[0] + 4, t[1] - 4, colours[i], names[i]);
        svg += buf;
    }
    svg += "<text x='12' y='28' font-size='20' font-family='sans-serif' fill='#333'>" + caption +
           "</text>\n</svg>\n";
    return svg;
}

}  // namespace sim
