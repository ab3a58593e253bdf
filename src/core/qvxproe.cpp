// CQvxProE's construction, start and stop.
#include "core/qvxproe.h"

#include "catalogue/pro_commands.h"
#include "core/action_tree.h"
#include "core/language.h"
#include "core/startup_platform.h"
#include "lcd/lcd_applet.h"
#include "lcd/proe_factory.h"
#include "support/os.h"
#include "support/registry.h"
#include "toolkit/host_table.h"

std::unique_ptr<CQvxProE> g_qvxProE;

namespace {

constexpr const wchar_t* kInstallKey = L"SOFTWARE\\Quorvex\\QvxProENGINEER";
/// Room for the installation directory, in characters with the terminator.
constexpr std::size_t kHomeDirectoryCapacity = 262;
/// Room for the host's application text directory, a path of the host's platform.
constexpr int kTextDirectoryCapacity = 260;
constexpr std::uint32_t kConfigTimerMs = 2000;

void OnConfigTimerTick() {
    if (g_qvxProE) g_qvxProE->OnConfigTimer();
}

}  // namespace

CQvxProE::CQvxProE(const wchar_t* version) : m_version(version ? version : L"") {
    qvx::core::SetLanguageIdFromName("en-US");
    if (m_version.find(L"Wildfire") == std::wstring::npos) {
        m_version = L"Creo Parametric " + m_version;
    }
    qvx::core::ChooseLanguage(qvx::os::GetEnv(L"PRO_LANG"), qvx::core::ThreadUiLanguage());
}

CQvxProE::~CQvxProE() { Stop(); }

int CQvxProE::Start() {
    // A missing key or value leaves the home directory empty; start-up goes on regardless.
    m_homeDirectory = qvx::os::ReadRegistryString(qvx::os::RegistryRoot::LocalMachine, kInstallKey,
                                                  L"Home Directory", kHomeDirectoryCapacity)
                          .value_or(L"");
    BuildActionTree();
    if (!ConnectDriver()) return 0;
    LoadSettingsToDriver();

    wchar_t appTextDirectory[kTextDirectoryCapacity] = {};
    QvxTkTextDirectoryGet(appTextDirectory, kTextDirectoryCapacity);
    m_textDirectory = qvx::core::PrepareTextDirectory(appTextDirectory, m_homeDirectory);

    AddHostMenu();
    CreateLcdApplet();
    ConnectModeSignal();
    m_timerId.Start(kConfigTimerMs, &OnConfigTimerTick);
    return 1;
}

int CQvxProE::Stop() {
    m_timerId.Stop();
    DisconnectModeSignal();
    EndLcdApplet();
    // The table and the connections go before the device they came from.
    m_commands.clear();
    m_connections.clear();
    m_appcfg.reset();
    m_device.reset();
    return 0;
}

void CQvxProE::OnConfigTimer() {
    if (!HostConfigurationChanged()) return;
    BuildActionTree();
    m_actionSets.clear();
    OnProMode(m_mode);
}

void CQvxProE::BuildActionTree() {
    qvx::core::BuildActionTree(TheProECommands(), m_actionTree, m_actionImages);
}

// Until the pieces behind them exist, these steps of Start() and Stop() do nothing.
void CQvxProE::CreateLcdApplet() {
    m_lcdFactory = std::make_shared<qvx::lcd::CLcdProeFactory>();
    m_lcd = qvx::lcd::StartLcdApplet(m_lcdFactory, m_version);
}
void CQvxProE::EndLcdApplet() { m_lcd.reset(); }
bool CQvxProE::HostConfigurationChanged() { return TheProECommands().CheckMapkeyFiles(); }
