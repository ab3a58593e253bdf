// The simulated host's session state and its load-time table.
#include "sim/host/session.h"

#include <algorithm>
#include <cstring>

namespace sim {

CSession& CSession::Instance() {
    static CSession session;
    return session;
}

void CSession::Reset() {
    displayVersion = "8.0.4.0";
    build = "M040";
    textDirectory.clear();
    wcharSize = 2;
    std::memset(errorText, 0, sizeof errorText);
    messages.clear();
    calls.clear();
    m_omitted.clear();
    notifications.clear();
    refusedNotifications.clear();
    forcedMode.reset();
    sectionActive = 0;
    verstampsOpen = 0;
    m_behind.clear();
    CloseModel();
    configOptions.clear();
    configOptions[L"max_animation_time"] = L"1.0";
    unknownCommands.clear();
    commandIds.clear();
    macros.clear();
    refuseUnknownMacros = false;
    refusedMacros.clear();
    refreshCount = 0;
    repaintCount = 0;
    panZoomFrames.clear();
    cursor.reset();
    graphicsWindow = nullptr;
    lastTrack.reset();
    faults.clear();
    callTotals.clear();
    addedCommands.clear();
    menuBar.clear();
    for (const char* name : {"File", "Edit", "View", "Insert", "Analysis", "Info", "Applications",
                             "Tools", "Window", "Help"}) {
        menuBar.push_back({name, name, {}});
    }
    helpShown.clear();
}

CSession::EFault CSession::TakeFault(const std::string& name) {
    ++callTotals[name];
    auto found = faults.find(name);
    if (found == faults.end()) return EFault::None;
    CFault& fault = found->second;
    ++fault.calls;
    if (fault.nth != 0 && fault.calls != fault.nth) return EFault::None;
    Record(name + (fault.kind == EFault::Throw
                       ? " throws on purpose"
                       : " fails on purpose with " + std::to_string(fault.status)));
    return fault.kind;
}

Point3 CSession::PanZoomPoint(const Point3& w) const {
    Point3 p{};
    for (int i = 0; i < 3; ++i) p[i] = (w[i] - panZoom[3][i]) / panZoom[i][i];
    return p;
}

void CSession::OpenModel(const std::string& name, int type) {
    PutCurrentBehind();
    model = MakeSamplePart(name);
    model->type = type;
    orientation = Identity();
    savedViews.clear();
    displayStyle = "Shading";
    Refit();
    Notify(18);
    Notify(24);
}

void CSession::CloseModel() {
    model.reset();
    orientation = Identity();
    panZoom = Identity();
    savedViews.clear();
    if (!m_behind.empty()) {
        BringForward(m_behind.size() - 1);
        Notify(24);
    }
}

bool CSession::ActivateWindow(const std::string& name) {
    for (std::size_t i = 0; i < m_behind.size(); ++i) {
        if (m_behind[i].model.name != name) continue;
        PutCurrentBehind();
        BringForward(i);
        Notify(24);
        return true;
    }
    if (!model || model->name != name) return false;
    Notify(24);
    return true;
}

void CSession::PutCurrentBehind() {
    if (!model) return;
    m_behind.push_back({*model, orientation, panZoom, savedViews, displayStyle});
    model.reset();
}

void CSession::BringForward(std::size_t index) {
    CWindow window = std::move(m_behind[index]);
    m_behind.erase(m_behind.begin() + static_cast<std::ptrdiff_t>(index));
    model = std::move(window.model);
    orientation = window.orientation;
    panZoom = window.panZoom;
    savedViews = std::move(window.savedViews);
    displayStyle = std::move(window.displayStyle);
}

CModel* CSession::FindModel(ProMdl handle) {
    if (model && HandleOf(*model) == handle) return &*model;
    for (CWindow& window : m_behind) {
        if (HandleOf(window.model) == handle) return &window.model;
    }
    return nullptr;
}

ProMdl CSession::HandleOf(const CModel& model) {
    return reinterpret_cast<ProMdl>(static_cast<std::uintptr_t>(model.handle));
}

ProError CSession::Notify(ProNotifyType type) {
    auto found = notifications.find(type);
    if (found == notifications.end() || !found->second) return 0;
    Record("notification " + std::to_string(type));
    ProError status = found->second();
    if (status != 0)
        Record("notification " + std::to_string(type) + " -> " + std::to_string(status));
    return status;
}

std::optional<ProMode> CSession::CurrentMode() const {
    if (forcedMode) return forcedMode;
    if (!model) return std::nullopt;
    switch (model->type) {
        case kModelAssembly:
            return 5;
        case kModelDrawing:
            return 6;
        default:
            return 1;
    }
}

void CSession::Refit() {
    if (model) panZoom = FitPanZoom(*model, orientation);
}

const QvxToolkitArgs* CSession::Args() {
    m_table.clear();
    for (const QvxHostFunction& f : AllHostFunctions()) {
        std::string name = f.name;
        name.resize(name.size() - 2);  // without "_v"
        if (!m_omitted.count(name)) m_table.push_back(f);
    }
    m_args = QvxToolkitArgs{};
    m_args.structSize = sizeof m_args;
    m_args.functions = m_table.data();
    m_args.functionCount = static_cast<std::uint32_t>(m_table.size());
    m_args.displayVersion = displayVersion.c_str();
    m_args.build = build.c_str();
    m_args.textDirectory = textDirectory.c_str();
    m_args.wcharSize = wcharSize;
    m_args.errorText = errorText;
    m_args.errorTextSize = sizeof errorText;
    return &m_args;
}

void CSession::Record(std::string line) {
    calls.push_back(std::move(line));
    if (onCall) onCall(calls.back());
}

}  // namespace sim
