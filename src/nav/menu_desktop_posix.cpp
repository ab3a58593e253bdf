// The native build has no windows: no menu is ever open and nothing is in the foreground, so
// the device menu's button does nothing there.
#include "nav/menu_desktop.h"

namespace qvx::nav {
namespace {

class CNoDesktop final : public IMenuDesktop {
public:
    std::uint32_t GuiThreadFlags() override { return 0; }
    void SendAltKeyPair() override {}
    void* OwnForegroundWindow() override { return nullptr; }
    std::uint32_t TrackDeviceMenu(void*, std::uint16_t, s3dm::I3dmouseSettings&) override {
        return 0;
    }
};

}  // namespace

IMenuDesktop& SystemMenuDesktop() {
    static CNoDesktop desktop;
    return desktop;
}

}  // namespace qvx::nav
