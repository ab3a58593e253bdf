// The plug-in's menu in the host's menu bar and the three commands behind its entries.
#include "core/qvxproe.h"

#include "client/oxapp/device_interfaces.h"
#include "core/help.h"
#include "support/boundary.h"
#include "toolkit/undostack_bypass.h"

namespace {

/// The host finds the menu's labels in this file of the text directory.
constexpr const wchar_t* kMessageFile = L"qvxproengineer.txt";
constexpr const char* kMenu = "QvxProE";
constexpr const char* kButtonMappingItem = "QvxButtonMappingEditor";
constexpr const char* kButtonMappingKey = "-QVX BUTTONMAPPING EDITOR";
constexpr const char* kButtonMappingIcon = "qvxbuttonmapping.gif";
constexpr const char* kHelpItem = "QvxHelp";
constexpr const char* kHelpKey = "-QVX HELP";
constexpr const char* kHelpIcon = "qvxhelp.gif";
constexpr const char* kAboutItem = "QvxAbout";
constexpr const char* kAboutKey = "-QVX ABOUT";

// Gives a command its label, help and description from the message file, and its icon.
template <typename Command>
void Designate(const Command& command, const char* key, const char* icon) {
    ProCmdDesignate(command.Id(), key, key, key, kMessageFile);
    ProCmdIconSet(command.Id(), icon);
}

}  // namespace

// A host call that throws costs the menu's remaining entries, not the start of the plug-in.
void CQvxProE::AddHostMenu() {
    qvx::CallAtBoundary("CQvxProE::SetupMenu", 0, [this] { return SetupMenu(); });
}

int CQvxProE::SetupMenu() {
    CQvxUndostackClearBypass bypass(true);
    if (ProMenubarMenuAdd(kMenu, "-QVX MENU", "Help", /*after=*/0, kMessageFile) !=
        PRO_TK_NO_ERROR) {
        return 0;
    }
    // Statuses of the entries are not looked at: an entry the host refuses is simply missing.
    m_buttonMappingEditor.Add();
    Designate(m_buttonMappingEditor, kButtonMappingKey, kButtonMappingIcon);
    ProMenubarmenuPushbuttonAdd(kMenu, kButtonMappingItem, kButtonMappingKey, kButtonMappingKey,
                                nullptr, /*after=*/0, m_buttonMappingEditor.Id(), kMessageFile);

    m_help.Add();
    Designate(m_help, kHelpKey, kHelpIcon);
    ProMenubarmenuPushbuttonAdd(kMenu, kHelpItem, kHelpKey, kHelpKey, kButtonMappingItem,
                                /*after=*/1, m_help.Id(), kMessageFile);

    // About has neither designation nor icon.
    m_about.Add();
    ProError status =
        ProMenubarmenuPushbuttonAdd(kMenu, kAboutItem, kAboutKey, kAboutKey, kHelpItem, /*after=*/1,
                                    m_about.Id(), kMessageFile);
    return status == PRO_TK_NO_ERROR ? 1 : 0;
}

int CQvxProE::ProQvxAboutCmdActFn(uiCmdCmdId, uiCmdValue*, void*) {
    if (!g_qvxProE) return 0;
    CAboutDialog& about = g_qvxProE->m_aboutDialog;
    // The entry toggles: chosen while the dialog is open, it closes it.
    if (about.Window()) {
        about.Destroy();
    } else {
        about.DoModal(qvx::core::ActiveWindow(), 0);
    }
    return 0;
}

int CQvxProE::ProQvxButtonMappingEditorCmdActFn(uiCmdCmdId, uiCmdValue*, void*) {
    if (!g_qvxProE || !g_qvxProE->m_device) return 0;
    if (auto command = ovk::interface_cast<oxapp::ICommand>(g_qvxProE->m_device)) command->ShowUi();
    return 0;
}

int CQvxProE::ProQvxHelpCmdActFn(uiCmdCmdId, uiCmdValue*, void*) {
    if (g_qvxProE) qvx::core::OpenDriverHelp();
    return 0;
}
