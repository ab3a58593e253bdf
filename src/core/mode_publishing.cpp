// CQvxProE and the host's mode: the driver is told which action set is current, and a mode
// seen for the first time also gets the images and the action tree under its name.
#include "core/qvxproe.h"

#include "core/mode_table.h"

void CQvxProE::OnProMode(ProMode mode) {
    m_mode = mode;
    oxapp::IAppcfg* appcfg = m_appcfg.get();
    if (!m_device || !appcfg) return;

    // A mode already published is only made current: no tree walk, no allocation.
    if (auto known = m_actionSets.find(mode); known != m_actionSets.end()) {
        appcfg->ActivateActionSet(known->second.c_str());
        return;
    }
    const std::string& name =
        m_actionSets.emplace(mode, qvx::core::ActionSetName(mode)).first->second;
    appcfg->ActivateActionSet(name.c_str());
    std::string label = qvx::core::ModeDisplayText(mode);

    // The images go once: the list is emptied by the first publish after a build.
    if (!m_actionImages.empty()) {
        std::vector<oxImage_t> records = oxapp::ImageRecords(m_actionImages);
        appcfg->WriteActionImages(records.data(), static_cast<std::uint32_t>(records.size()));
        m_actionImages.clear();
    }
    if (m_actionTree) {
        m_actionTree->SetId(name.c_str());
        m_actionTree->SetLabel(label.c_str());
        appcfg->WriteActions(m_actionTree->Record());
    }
}

void CQvxProE::ConnectModeSignal() {
    m_modeConnection = m_modeSwitch.Connect([this](ProMode mode) { OnProMode(mode); });
}

void CQvxProE::DisconnectModeSignal() {
    if (m_modeConnection.connected()) m_modeConnection.disconnect();
}
