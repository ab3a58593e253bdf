// The device settings at start, and the device menu's button.
#include "core/qvxproe.h"

#include "client/oxapp/device_interfaces.h"
#include "nav/menu_desktop.h"
#include "nav/device_menu.h"
#include "support/language_id.h"

namespace {

/// Counts one open device menu for as long as it lives, also when the menu's loop throws.
class CPopupDepthScope {
public:
    explicit CPopupDepthScope(std::int32_t& depth) : m_depth(depth) { ++m_depth; }
    CPopupDepthScope(const CPopupDepthScope&) = delete;
    CPopupDepthScope& operator=(const CPopupDepthScope&) = delete;
    ~CPopupDepthScope() { --m_depth; }

private:
    std::int32_t& m_depth;
};

}  // namespace

void CQvxProE::LoadSettingsToDriver() {
    m_settings->Load();
    // Saved after the driver has them, so that the file holds what the driver was given.
    StoreSettings();
}

void CQvxProE::StoreSettings() {
    auto config = ovk::interface_cast<oxapp::IAppcfg>(m_device);
    m_settings->Write(config.get());
    m_settings->Save();
}

void CQvxProE::ShowDriverUi() {
    if (auto command = ovk::interface_cast<oxapp::ICommand>(m_device)) command->ShowUi();
}

void CQvxProE::OnMenuButton(bool open) {
    using namespace qvx::nav;
    IMenuDesktop& desktop = MenuDesktop();
    const std::uint32_t flags = desktop.GuiThreadFlags();
    if (open) {
        // A menu in use while none of ours is open is the host's own: close it.
        if ((flags & (kGuiInMenuMode | kGuiPopupMenuMode)) != 0 && m_popupDepth == 0) {
            desktop.SendAltKeyPair();
        }
        return;
    }
    if ((flags & kGuiPopupMenuMode) != 0) {
        // A popup is open, ours among them: a second press closes it.
        desktop.SendAltKeyPair();
        return;
    }
    void* foreground = desktop.OwnForegroundWindow();
    if (!foreground) return;
    std::uint32_t chosen = 0;
    {
        CPopupDepthScope depth(m_popupDepth);
        chosen = desktop.TrackDeviceMenu(foreground, g_langId, *m_settings);
    }
    if (chosen == 0) return;
    if (chosen == kMenuCustomizeButtons) {
        ShowDriverUi();
        return;
    }
    StoreSettings();
}
