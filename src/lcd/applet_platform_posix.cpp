// The native build has no windows and no LCD manager: the applet never connects.
#include "lcd/applet_platform.h"

namespace qvx::lcd {
namespace {

class CNoWindowPlatform : public IAppletPlatform {
public:
    WindowId CreateHiddenWindow(IAppletWindowHandler&) override { return 0; }
    void CloseWindow(WindowId) override {}
    bool IsWindow(WindowId) override { return false; }
    bool StartTimer(WindowId, std::uint32_t, std::uint32_t) override { return false; }
    void StopTimer(WindowId, std::uint32_t) override {}
    bool ManagerRunning() override { return false; }
    bool Post(WindowId, std::uint32_t, std::uintptr_t, std::intptr_t) override { return false; }
    void OpenControlPanel() override {}
};

}  // namespace

IAppletPlatform& SystemAppletPlatform() {
    static CNoWindowPlatform platform;
    return platform;
}

}  // namespace qvx::lcd
