// What the device menu's button needs from the window system: the thread's menu state, the
// Alt key pair that closes an open menu, the foreground window, and the menu itself. The
// system's desktop is in use unless a test installs its own.
#pragma once

#include <cstdint>

namespace s3dm {
class I3dmouseSettings;
}

namespace qvx::nav {

/// Flags of the thread's GUI state: some menu is in use / a popup menu is open.
inline constexpr std::uint32_t kGuiInMenuMode = 0x04;
inline constexpr std::uint32_t kGuiPopupMenuMode = 0x10;

class IMenuDesktop {
public:
    /// The GUI state flags of the calling thread; 0 when they cannot be read.
    virtual std::uint32_t GuiThreadFlags() = 0;
    /// Presses and releases Alt as keyboard input: an open menu takes that as "close".
    virtual void SendAltKeyPair() = 0;
    /// The foreground window when this process owns it; null otherwise.
    virtual void* OwnForegroundWindow() = 0;
    /// Shows the device menu in `language` at the cursor, owned by `owner`, and returns once
    /// it closes: the id chosen, or 0. The toggles and the speed chosen are set in `settings`.
    /// Messages, the driver's among them, are dispatched meanwhile.
    virtual std::uint32_t TrackDeviceMenu(void* owner, std::uint16_t language,
                                          s3dm::I3dmouseSettings& settings) = 0;

protected:
    ~IMenuDesktop() = default;
};

/// The desktop in use.
IMenuDesktop& MenuDesktop();
/// Installs `desktop` (which must outlive its installation); null puts the system's back.
void SetMenuDesktop(IMenuDesktop* desktop);
/// The system's desktop: Win32's, or natively one with no window in the foreground.
IMenuDesktop& SystemMenuDesktop();

}  // namespace qvx::nav
