// CQvxProE: the one central object of the plug-in, between the host and the driver. It lives
// from user_initialize to user_terminate, on the host's main thread only; that single thread
// is its guard, so nothing here is locked.
#pragma once

#include "toolkit/pro_types.h"

#include "core/about_dialog.h"
#include "core/ui_command.h"

#include "client/oxapp/action_node.h"
#include "client/oxapp/device_interfaces.h"
#include "client/oxapp/ox_image.h"
#include "client/ovk/interface_ptr.h"
#include "client/ovk/signals.h"
#include "core/mode_switch.h"
#include "nav/command_bindings.h"
#include "support/main_loop.h"
#include "support/settings/mouse_settings.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace _Qvx {
class IFactory;
}
namespace qvx::lcd {
class CLcdCadInfoWindow;
}

class CQvxProE {
public:
    using CommandHandler = qvx::nav::CommandHandler;

    /// `version` is the host's display version; null counts as empty.
    explicit CQvxProE(const wchar_t* version);
    CQvxProE(const CQvxProE&) = delete;
    CQvxProE& operator=(const CQvxProE&) = delete;
    virtual ~CQvxProE();

    /// Brings the plug-in up: 1 when it runs, 0 when it stays idle (no driver, or too old).
    int Start();
    /// Takes everything down that Start() set up; may be called again, always returns 0.
    int Stop();

    /// Connects the driver and fills the binding table; false when the plug-in must stay idle.
    bool ConnectDriver();

    /// A text identifier of an action from the driver; acts on press only.
    void OnCommand(const char* id, bool pressed);
    /// A numeric command code from the driver with its two parameter arrays of 16 each.
    void OnCommandEx(unsigned code, bool pressed, int* ints, float* floats);
    /// The driver's configuration values changed.
    void OnValueChanged();
    /// The device menu's button: `open` true closes a menu of the host's; false opens the
    /// device menu at the cursor, or closes it when it is open.
    void OnMenuButton(bool open);
    /// The host's mode changed (or the action tree must be published again for `mode`): the
    /// driver makes the mode's action set current; a mode not yet published also gets the
    /// images (once per build) and the tree, whose root carries the set's name and text.
    void OnProMode(ProMode mode);
    ProMode Mode() const { return m_mode; }

    /// Every 2,000 ms: rebuilds and republishes the action tree when a host configuration
    /// file changed.
    void OnConfigTimer();

    const std::wstring& Version() const { return m_version; }
    const std::wstring& HomeDirectory() const { return m_homeDirectory; }
    const std::wstring& TextDirectory() const { return m_textDirectory; }
    std::uint32_t TimerId() const { return m_timerId.Id(); }
    const std::map<std::uint32_t, const CommandHandler*>& Commands() const { return m_commands; }
    const oxapp::CActionNode* ActionTree() const { return m_actionTree.get(); }
    const std::vector<oxapp::COxImage>& ActionImages() const { return m_actionImages; }
    s3dm::C3dmouseSettings& Settings() { return *m_settings; }
    std::int32_t PopupDepth() const { return m_popupDepth; }
    /// The driver's device object; empty when the plug-in has no driver.
    const ovk::interface_ptr<ovk::IObject>& Device() const { return m_device; }
    const qvx::lcd::CLcdCadInfoWindow* LcdApplet() const { return m_lcd.get(); }

    /// Copies the binding table's three groups into m_commands; a later row for a code
    /// replaces an earlier one.
    void FillCommandTable();

    /// Adds the plug-in's menu before the host's "Help": button mapping, help, About. 1 when
    /// the last host call succeeded; 0 also when the host refused the menu itself, and then
    /// no entry is added.
    int SetupMenu();
    /// The menu's three commands, run from their access callbacks. Each returns 0.
    static int ProQvxAboutCmdActFn(uiCmdCmdId id, uiCmdValue* value, void* data);
    static int ProQvxButtonMappingEditorCmdActFn(uiCmdCmdId id, uiCmdValue* value, void* data);
    static int ProQvxHelpCmdActFn(uiCmdCmdId id, uiCmdValue* value, void* data);
    const CAboutDialog& AboutDialog() const { return m_aboutDialog; }

private:
    // The steps of Start() that belong to other parts of the plug-in, in their order.
    void BuildActionTree();
    void LoadSettingsToDriver();
    /// The settings to the driver, then to the file.
    void StoreSettings();
    /// Opens the driver's own user interface, where the user maps the buttons.
    void ShowDriverUi();
    void AddHostMenu();
    void CreateLcdApplet();
    void EndLcdApplet();
    void ConnectModeSignal();
    void DisconnectModeSignal();
    bool HostConfigurationChanged();

    std::wstring m_version;
    CAboutDialog m_aboutDialog;
    std::wstring m_homeDirectory;
    std::wstring m_textDirectory;
    std::shared_ptr<s3dm::C3dmouseSettings> m_settings =
        std::make_shared<s3dm::C3dmouseSettings>(L"QvxProENGINEER");
    std::int32_t m_popupDepth = 0;  ///< device menus open right now
    CQvxModeSwitch m_modeSwitch;
    boost::signals2::connection m_modeConnection;
    /// The LCD applet, from Start() to Stop(); empty when it could not be made.
    std::shared_ptr<qvx::lcd::CLcdCadInfoWindow> m_lcd;
    /// What the LCD window asks for the host's document data.
    std::shared_ptr<_Qvx::IFactory> m_lcdFactory;
    /// The modes whose action set the driver already has, with the set's name.
    std::map<ProMode, std::string> m_actionSets;
    /// The 2,000 ms configuration poll; its Id() is 0 while none runs.
    qvx::CThreadTimer m_timerId;
    ProMode m_mode = -3;
    CQvxUiCommand<&CQvxProE::ProQvxAboutCmdActFn> m_about{"ProQvxAbout"};
    CQvxUiCommand<&CQvxProE::ProQvxButtonMappingEditorCmdActFn> m_buttonMappingEditor{
        "ProQvxButtonMappingEditor"};
    CQvxUiCommand<&CQvxProE::ProQvxHelpCmdActFn> m_help{"ProQvxHelp"};
    /// Handlers of the binding tables, which live as long as the module: a dispatch reaches
    /// one without copying it, so it cannot fail to allocate (and lose a release) on the way.
    std::map<std::uint32_t, const CommandHandler*> m_commands;
    /// What the device's buttons can be given; rebuilt whole when the host's files change.
    std::unique_ptr<oxapp::CActionNode> m_actionTree;
    /// The icons of the tree's actions, gathered by builds until a publish sends them.
    std::vector<oxapp::COxImage> m_actionImages;
    ovk::interface_ptr<ovk::IObject> m_device;
    /// The device's publishing interface; empty without a device or when it has none.
    ovk::interface_ptr<oxapp::IAppcfg> m_appcfg;
    std::vector<ovk::interface_ptr<ovk::ISlot>> m_connections;
};

/// The one CQvxProE of the process; empty before user_initialize and after user_terminate.
extern std::unique_ptr<CQvxProE> g_qvxProE;
