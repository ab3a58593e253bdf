// The two ways the driver gives orders: action identifiers and numeric command codes.
#include "core/qvxproe.h"

#include "catalogue/action.h"
#include "client/oxapp/client_flags.h"
#include "client/oxapp/device_factory.h"
#include "client/oxapp/device_interfaces.h"
#include "client/oxapp/signal_interfaces.h"
#include "nav/popup_menu.h"
#include "support/boundary.h"
#include "toolkit/undostack_bypass.h"

#include <algorithm>
#include <optional>

namespace {

// Commands and the library's callback; no motion, no keys.
constexpr std::uint32_t kDeviceFlags = oxapp::kFlagCommands | oxapp::kFlagCallback;
static_assert(kDeviceFlags == 48);
constexpr std::int32_t kOldestDriver = 10;

}  // namespace

bool CQvxProE::ConnectDriver() {
    m_device = oxapp::CreateSmartDevice(kDeviceFlags);
    if (!m_device) return false;

    // A device that cannot tell its version is taken as it is.
    if (auto info = ovk::interface_cast<oxapp::IInfo>(m_device)) {
        OxVersionInfo version{};
        info->GetInfo(&version);
        if (version.major < kOldestDriver) {
            m_device.reset();
            return false;
        }
    }
    auto cfgSignals = ovk::interface_cast<oxapp::IAppcfgSignals>(m_device);
    auto cmdSignals = ovk::interface_cast<oxapp::IAppcmdSignals>(m_device);
    if (!cfgSignals || !cmdSignals) {
        m_device.reset();
        return false;
    }
    m_connections.emplace_back(cfgSignals->ConnectValueChanged([this]() { OnValueChanged(); }));
    m_connections.emplace_back(cmdSignals->ConnectCommand(
        [this](const char* id, bool pressed) { OnCommand(id, pressed); }));
    m_connections.emplace_back(cmdSignals->ConnectCommandEx(
        [this](std::uint32_t code, bool pressed, const void* ints, const void* floats) {
            OnCommandEx(code, pressed, static_cast<int*>(const_cast<void*>(ints)),
                        static_cast<float*>(const_cast<void*>(floats)));
        }));
    FillCommandTable();
    // Like every callback, the menu button reaches the plug-in through the global pointer and
    // does nothing once it is gone.
    qvx::nav::SetMenuButtonHandler([](bool open) {
        if (g_qvxProE) g_qvxProE->OnMenuButton(open);
    });
    // Kept for each change of mode, which then costs no cast.
    m_appcfg = ovk::interface_cast<oxapp::IAppcfg>(m_device);
    return true;
}

void CQvxProE::FillCommandTable() {
    for (const auto* group : {&qvx::nav::AnimatedZoomBindings(), &qvx::nav::ViewBindings(),
                              &qvx::nav::MenuBindings()}) {
        for (const qvx::nav::CCommandBinding& row : *group) m_commands[row.code] = &row.handler;
    }
}

// The three slots are the driver's way in: nothing of any kind goes back into it.

void CQvxProE::OnCommand(const char* id, bool pressed) {
    // Press only, parse, run, in a bypass scope: the action's own entry for the driver.
    qvx::CallAtBoundary("CQvxProE::OnCommand", [&] { CAction::ExecuteFromDriver(id, pressed); });
}

void CQvxProE::OnCommandEx(unsigned code, bool pressed, int* ints, float* floats) {
    qvx::CallAtBoundary("CQvxProE::OnCommandEx", [&] {
        auto it = m_commands.find(code);
        if (it == m_commands.end()) return;
        // The driver client always passes arrays of sixteen; a missing one counts as zeros.
        boost::array<int, 16> intArray{};
        boost::array<float, 16> floatArray{};
        if (ints) std::copy(ints, ints + 16, intArray.begin());
        if (floats) std::copy(floats, floats + 16, floatArray.begin());
        // A release must reach its handler whatever fails before it: a held zoom runs until its
        // release arrives. Without memory for the scope, a press goes no further.
        std::optional<CQvxUndostackClearBypass> bypass;
        try {
            bypass.emplace(true);
        } catch (...) {
            if (pressed) throw;
        }
        // The handler itself, not the table's entry: a nested command may run inside it and
        // the table may change there, but the binding tables stay.
        const CommandHandler& handler = *it->second;
        handler(pressed, intArray, floatArray);
    });
}

void CQvxProE::OnValueChanged() {
    qvx::CallAtBoundary("CQvxProE::OnValueChanged", [this] {
        if (!m_device) return;
        auto config = ovk::interface_cast<oxapp::IAppcfg>(m_device);
        m_settings->Read(config.get());
        m_settings->Save();
    });
}
