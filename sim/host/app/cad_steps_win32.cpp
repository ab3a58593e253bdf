// Scenario steps about the CAD session: models, the view, macros, the display style, pictures.
#include "runner_win32.h"

#include "sim/host/session.h"
#include "support/os.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

namespace sim {
namespace {

using Words = std::vector<std::string>;

// The standard orientations as the host names them, kept here apart from the plug-in's own
// table so that a scenario checks one against the other.
bool NamedOrientation(const std::string& name, Matrix4& m) {
    const double s2 = std::sqrt(0.5), s6 = std::sqrt(1.0 / 6), s3 = std::sqrt(1.0 / 3),
                 t = std::sqrt(2.0 / 3);
    struct Row {
        const char* name;
        double r[9];
    };
    const Row rows[] = {
        {"front", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
        {"back", {-1, 0, 0, 0, 1, 0, 0, 0, -1}},
        {"top", {1, 0, 0, 0, 0, 1, 0, -1, 0}},
        {"bottom", {-1, 0, 0, 0, 0, -1, 0, -1, 0}},
        {"left", {0, 0, -1, 0, 1, 0, 1, 0, 0}},
        {"right", {0, 0, 1, 0, 1, 0, -1, 0, 0}},
        {"iso1", {s2, -s6, s3, 0, t, s3, -s2, -s6, s3}},
        {"iso2", {-s2, s6, -s3, 0, t, s3, s2, s6, -s3}},
    };
    for (const Row& row : rows) {
        if (name != row.name) continue;
        m = Identity();
        for (int i = 0; i < 9; ++i) m[i / 3][i % 3] = row.r[i];
        return true;
    }
    return false;
}

std::string Shown(const Matrix4& m) {
    std::string text;
    char buf[64];
    for (int i = 0; i < 4; ++i) {
        std::snprintf(buf, sizeof buf, "(%.6g %.6g %.6g %.6g)", m[i][0], m[i][1], m[i][2], m[i][3]);
        text += buf;
    }
    return text;
}

bool Near(const Matrix4& a, const Matrix4& b, double tolerance) {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            if (std::fabs(a[i][j] - b[i][j]) > tolerance) return false;
        }
    }
    return true;
}

/// What `mark scale` remembers: the window's scale and how many frames had come.
struct CMark {
    double scale = 1.0;
    std::size_t frames = 0;
};

}  // namespace

void AddCadSteps(CScenarioRunner& runner) {
    CScenarioRunner* r = &runner;
    auto mark = std::make_shared<CMark>();
    runner.AddVerb("model", [r](const Words& args) {
        CSession& s = CSession::Instance();
        if (args.size() >= 2 && args[0] == "open") {
            int type = kModelPart;
            if (args.size() > 2 && args[2] == "assembly") {
                type = kModelAssembly;
            } else if (args.size() > 2 && args[2] == "drawing") {
                type = kModelDrawing;
            } else if (args.size() > 2 && args[2] != "part") {
                return r->Fail("usage: model open NAME [part|assembly|drawing]");
            }
            s.OpenModel(args[1], type);
        } else if (!args.empty() && args[0] == "close") {
            s.CloseModel();
        } else {
            return ModelDataStep(*r, args);
        }
        return true;
    });
    runner.AddVerb("macros", [r](const Words& args) {
        CSession& s = CSession::Instance();
        if (args.size() >= 1 && args[0] == "refuse-unknown") {
            s.refuseUnknownMacros = true;
        } else if (args.size() >= 2 && args[0] == "refuse") {
            s.refusedMacros.insert(args[1]);
        } else if (args.size() >= 1 && args[0] == "accept-all") {
            s.refuseUnknownMacros = false;
            s.refusedMacros.clear();
        } else {
            return r->Fail("usage: macros refuse-unknown | macros refuse TEXT | macros accept-all");
        }
        return true;
    });
    runner.AddVerb("picture", [r](const Words& args) {
        CSession& s = CSession::Instance();
        if (args.empty()) return r->Fail("usage: picture PATH [CAPTION]");
        if (!s.model) return r->Fail("no model to draw");
        std::ofstream out(std::filesystem::path(qvx::os::WidenUtf8(args[0])), std::ios::binary);
        out << RenderSvg(*s.model, s.orientation, s.panZoom, args.size() > 1 ? args[1] : "");
        r->Log("  picture " + args[0]);
        return out ? true : r->Fail("cannot write " + args[0]);
    });
    runner.AddVerb("panzoom", [r](const Words& args) {
        // panzoom SCALE TX TY: puts the window's pan-zoom matrix somewhere on purpose.
        if (args.size() < 3) return r->Fail("usage: panzoom SCALE TX TY");
        Matrix4 m = Identity();
        m[0][0] = m[1][1] = m[2][2] = std::stod(args[0]);
        m[3][0] = std::stod(args[1]);
        m[3][1] = std::stod(args[2]);
        CSession::Instance().panZoom = m;
        return true;
    });

    runner.AddVerb("mark", [r, mark](const Words& args) {
        if (args.size() != 1 || args[0] != "scale") return r->Fail("usage: mark scale");
        const CSession& s = CSession::Instance();
        *mark = {s.panZoom[0][0], s.panZoomFrames.size()};
        r->Log("  scale " + std::to_string(mark->scale) + " after " + std::to_string(mark->frames) +
               " frames");
        return true;
    });
    runner.AddExpectation("scale-ratio", [r, mark](const Words& args) {
        auto want = args.size() > 0 ? WholeNumber<double>(args[0]) : std::nullopt;
        auto tolerance =
            args.size() > 1 ? WholeNumber<double>(args[1]) : std::optional<double>(1e-9);
        if (!want || !tolerance) return r->Fail("usage: expect scale-ratio RATIO [TOLERANCE]");
        double ratio = CSession::Instance().panZoom[0][0] / mark->scale;
        return std::fabs(ratio - *want) <= *tolerance
                   ? true
                   : r->Fail("the scale changed by " + std::to_string(ratio));
    });
    runner.AddExpectation("scale-segments", [r, mark](const Words& args) {
        auto factor = args.size() > 0 ? WholeNumber<double>(args[0]) : std::nullopt;
        auto least = args.size() > 1 ? WholeNumber<double>(args[1]) : std::optional<double>(1);
        if (!factor || *factor <= 0 || *factor == 1 || !least) {
            return r->Fail("usage: expect scale-segments FACTOR [AT-LEAST]");
        }
        double ratio = CSession::Instance().panZoom[0][0] / mark->scale;
        double segments = std::log(ratio) / std::log(*factor);
        char shown[64];
        std::snprintf(shown, sizeof shown, "%.9g", segments);
        r->Log("  " + std::string(shown) + " segments");
        if (std::fabs(segments - std::round(segments)) > 1e-6) {
            return r->Fail("the scale changed by " + std::string(shown) + " segments");
        }
        return std::round(segments) >= *least ? true
                                              : r->Fail("only " + std::string(shown) + " segments");
    });
    runner.AddExpectation("frames-at-least", [r, mark](const Words& args) {
        if (args.empty()) return r->Fail("usage: expect frames-at-least N");
        std::size_t frames = CSession::Instance().panZoomFrames.size() - mark->frames;
        return frames >= std::stoul(args[0])
                   ? true
                   : r->Fail(std::to_string(frames) + " frames since the mark");
    });
    runner.AddExpectation("pivot-at", [r](const Words& args) {
        const CSession& s = CSession::Instance();
        auto tolerance =
            args.size() > 1 ? WholeNumber<double>(args[1]) : std::optional<double>(1e-6);
        if (args.empty() || (args[0] != "cursor" && args[0] != "centre") || !tolerance) {
            return r->Fail("usage: expect pivot-at cursor|centre [TOLERANCE]");
        }
        if (!s.lastTrack) return r->Fail("the host's mouse tracking has given no point");
        Point3 want =
            args[0] == "cursor" ? s.lastTrack->at : Point3{kWindowWidth / 2, kWindowHeight / 2, 0};
        double x = s.lastTrack->point[0] * s.panZoom[0][0] + s.panZoom[3][0];
        double y = s.lastTrack->point[1] * s.panZoom[1][1] + s.panZoom[3][1];
        char shown[96];
        std::snprintf(shown, sizeof shown, "the pivot shows at (%.6g, %.6g), not (%.6g, %.6g)", x,
                      y, want[0], want[1]);
        return std::fabs(x - want[0]) <= *tolerance && std::fabs(y - want[1]) <= *tolerance
                   ? true
                   : r->Fail(shown);
    });
    runner.AddExpectation("view", [r](const Words& args) {
        const CSession& s = CSession::Instance();
        Matrix4 want{};
        if (args.size() == 1) {
            if (!NamedOrientation(args[0], want)) return r->Fail("unknown view " + args[0]);
        } else if (args.size() == 9) {
            want = Identity();
            for (int i = 0; i < 9; ++i) want[i / 3][i % 3] = std::stod(args[i]);
        } else {
            return r->Fail("usage: expect view NAME | expect view 9 NUMBERS");
        }
        // The rotation part only: a roll about the window's centre adds a translation.
        Matrix4 got = s.orientation;
        for (int j = 0; j < 4; ++j) got[3][j] = want[3][j];
        return Near(got, want, 1e-9) ? true : r->Fail("the view is " + Shown(s.orientation));
    });
    runner.AddExpectation("fitted", [r](const Words&) {
        const CSession& s = CSession::Instance();
        if (!s.model) return r->Fail("no model");
        return Near(s.panZoom, FitPanZoom(*s.model, s.orientation), 1e-6)
                   ? true
                   : r->Fail("the model is not fitted: pan-zoom " + Shown(s.panZoom));
    });
    runner.AddExpectation("panzoom", [r](const Words& args) {
        if (args.size() < 3) return r->Fail("usage: expect panzoom SCALE TX TY");
        const Matrix4& m = CSession::Instance().panZoom;
        bool ok = std::fabs(m[0][0] - std::stod(args[0])) < 1e-6 &&
                  std::fabs(m[3][0] - std::stod(args[1])) < 1e-6 &&
                  std::fabs(m[3][1] - std::stod(args[2])) < 1e-6;
        return ok ? true : r->Fail("pan-zoom is " + Shown(m));
    });
    runner.AddExpectation("display-style", [r](const Words& args) {
        const std::string& style = CSession::Instance().displayStyle;
        return !args.empty() && style == args[0] ? true : r->Fail("the display style is " + style);
    });
    runner.AddExpectation("macro", [r](const Words& args) {
        const auto& macros = CSession::Instance().macros;
        return !args.empty() && std::find(macros.begin(), macros.end(), args[0]) != macros.end()
                   ? true
                   : r->Fail("the host received no such macro");
    });
    runner.AddExpectation("macros", [r](const Words& args) {
        std::size_t n = CSession::Instance().macros.size();
        return !args.empty() && n == std::stoul(args[0])
                   ? true
                   : r->Fail("the host received " + std::to_string(n) + " macros");
    });
    runner.AddExpectation("refreshes", [r](const Words& args) {
        int n = CSession::Instance().refreshCount;
        return !args.empty() && n == std::stoi(args[0])
                   ? true
                   : r->Fail("the window was refreshed " + std::to_string(n) + " times");
    });
}

}  // namespace sim
