#include "lcd/lcd_applet.h"

#include "support/boundary.h"

namespace qvx::lcd {

std::shared_ptr<CLcdCadInfoWindow> StartLcdApplet(std::shared_ptr<_Qvx::IFactory> factory,
                                                  const std::wstring& name) {
    return qvx::CallAtBoundary(
        "CLcdCadInfoWindow::Create", std::shared_ptr<CLcdCadInfoWindow>(), [&] {
            auto window = std::make_shared<CLcdCadInfoWindow>(std::move(factory), name);
            return window->Create() ? window : nullptr;
        });
}

}  // namespace qvx::lcd
