#include "nav/popup_menu.h"

namespace qvx::nav {
namespace {

std::function<void(bool)>& Handler() {
    static std::function<void(bool)> handler;
    return handler;
}

}  // namespace

void SetMenuButtonHandler(std::function<void(bool open)> handler) {
    Handler() = std::move(handler);
}

void ToggleDeviceMenu() {
    // A copy: the plug-in may take its handler away while this one waits in the menu's loop.
    std::function<void(bool)> handler = Handler();
    if (!handler) return;
    handler(true);
    handler(false);
}

}  // namespace qvx::nav
