// The simulated host's view, window and option functions.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"
#include "support/os.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

namespace sim {
namespace {

constexpr int kScreenNormalAxis = 103;
constexpr ProWindowId kWindow = 1;

CSession& S() { return CSession::Instance(); }

Matrix4 FromPro(const ProMatrix m) {
    Matrix4 r{};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) r[i][j] = m[i][j];
    }
    return r;
}

void ToPro(const Matrix4& m, ProMatrix out) {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) out[i][j] = m[i][j];
    }
}

std::string Row(const Matrix4& m, int i) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "(%.6g %.6g %.6g %.6g)", m[i][0], m[i][1], m[i][2], m[i][3]);
    return buf;
}

std::string Shown(const Matrix4& m) { return Row(m, 0) + Row(m, 1) + Row(m, 2) + Row(m, 3); }

ProError ViewMatrixGet(ProMdl, ProView, double (*matrix)[4]) {
    if (!S().model || !matrix) return PRO_TK_BAD_CONTEXT;
    ToPro(S().orientation, matrix);
    return PRO_TK_NO_ERROR;
}

ProError ViewMatrixSet(ProMdl, ProView, double (*matrix)[4]) {
    S().Record(std::string("ProViewMatrixSet ") + (matrix ? Shown(FromPro(matrix)) : "null"));
    if (!S().model || !matrix) return PRO_TK_BAD_CONTEXT;
    S().orientation = FromPro(matrix);
    return PRO_TK_NO_ERROR;
}

ProError ViewRotate(ProMdl, ProView, int axis, double angle) {
    S().Record("ProViewRotate axis " + std::to_string(axis) + " angle " + std::to_string(angle));
    if (!S().model) return PRO_TK_BAD_CONTEXT;
    if (axis != kScreenNormalAxis) return PRO_TK_BAD_INPUTS;
    S().orientation = RollAboutWindowCentre(S().orientation, S().panZoom, angle);
    return PRO_TK_NO_ERROR;
}

ProError ViewStore(ProMdl, const wchar_t* name, ProView* view) {
    S().Record("ProViewStore " + qvx::os::NarrowUtf8(name ? name : L""));
    if (!S().model || !name) return PRO_TK_BAD_CONTEXT;
    S().savedViews[name] = {S().orientation, S().panZoom};
    if (view) *view = nullptr;
    return PRO_TK_NO_ERROR;
}

ProError ViewRetrieve(ProMdl, const wchar_t* name, ProView* view) {
    S().Record("ProViewRetrieve " + qvx::os::NarrowUtf8(name ? name : L""));
    if (!S().model || !name) return PRO_TK_BAD_CONTEXT;
    auto it = S().savedViews.find(name);
    if (it == S().savedViews.end()) return PRO_TK_E_NOT_FOUND;
    S().orientation = it->second.first;
    S().panZoom = it->second.second;
    if (view) *view = nullptr;
    return PRO_TK_NO_ERROR;
}

ProError WindowCurrentGet(ProWindowId* window) {
    if (!window) return PRO_TK_BAD_INPUTS;
    *window = S().model ? kWindow : -1;
    return S().model ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

ProError WindowActivate(ProWindowId window) {
    S().Record("ProWindowActivate " + std::to_string(window));
    return S().model ? PRO_TK_NO_ERROR : PRO_TK_BAD_CONTEXT;
}

ProError WindowCurrentMatrixGet(double (*matrix)[4]) {
    if (!S().model || !matrix) return PRO_TK_BAD_CONTEXT;
    ToPro(S().panZoom, matrix);
    return PRO_TK_NO_ERROR;
}

ProError WindowPanZoomMatrixSet(ProWindowId window, double (*matrix)[4]) {
    if (!S().model || !matrix || (window != kWindow && window != -1)) return PRO_TK_BAD_CONTEXT;
    S().panZoom = FromPro(matrix);
    S().panZoomFrames.push_back({qvx::os::MonotonicMs(), S().panZoom});
    char frame[96];
    std::snprintf(frame, sizeof frame, "ProWindowPanZoomMatrixSet scale %.6g at (%.6g, %.6g)",
                  matrix[0][0], matrix[3][0], matrix[3][1]);
    S().Record(frame);
    return PRO_TK_NO_ERROR;
}

ProError WindowRefresh(ProWindowId window) {
    ++S().refreshCount;
    S().Record("ProWindowRefresh " + std::to_string(window));
    return S().model ? PRO_TK_NO_ERROR : PRO_TK_BAD_CONTEXT;
}

ProError ConfigoptGet(const wchar_t* option, wchar_t* value) {
    if (!option || !value) return PRO_TK_BAD_INPUTS;
    auto it = S().configOptions.find(option);
    if (it == S().configOptions.end()) return PRO_TK_E_NOT_FOUND;
    std::size_t n = std::min<std::size_t>(it->second.size(), 79);
    std::wmemcpy(value, it->second.data(), n);
    value[n] = L'\0';
    return PRO_TK_NO_ERROR;
}

ProError ConfigoptSet(const wchar_t* option, const wchar_t* value) {
    if (!option || !value) return PRO_TK_BAD_INPUTS;
    S().Record("ProConfigoptSet " + qvx::os::NarrowUtf8(option) + " " + qvx::os::NarrowUtf8(value));
    S().configOptions[option] = value;
    return PRO_TK_NO_ERROR;
}

}  // namespace

void AddViewFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&ViewMatrixGet>(table, "ProViewMatrixGet_v");
    AddHostFunction<&ViewMatrixSet>(table, "ProViewMatrixSet_v");
    AddHostFunction<&ViewRotate>(table, "ProViewRotate_v");
    AddHostFunction<&ViewStore>(table, "ProViewStore_v");
    AddHostFunction<&ViewRetrieve>(table, "ProViewRetrieve_v");
    AddHostFunction<&WindowCurrentGet>(table, "ProWindowCurrentGet_v");
    AddHostFunction<&WindowActivate>(table, "ProWindowActivate_v");
    AddHostFunction<&WindowCurrentMatrixGet>(table, "ProWindowCurrentMatrixGet_v");
    AddHostFunction<&WindowPanZoomMatrixSet>(table, "ProWindowPanZoomMatrixSet_v");
    AddHostFunction<&WindowRefresh>(table, "ProWindowRefresh_v");
    AddHostFunction<&ConfigoptGet>(table, "ProConfigoptGet_v");
    AddHostFunction<&ConfigoptSet>(table, "ProConfigoptSet_v");
}

}  // namespace sim
