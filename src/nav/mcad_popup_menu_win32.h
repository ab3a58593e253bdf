// The device menu as a Win32 popup menu: the two toggles, the speed submenu and the entry that
// opens the driver's own user interface.
#pragma once

#include "support/win32_handles.h"

#include <cstdint>

namespace s3dm {

class I3dmouseSettings;

class CMcadPopupMenu {
public:
    /// `language` is the language of the menu's texts.
    explicit CMcadPopupMenu(std::uint16_t language);
    CMcadPopupMenu(const CMcadPopupMenu&) = delete;
    CMcadPopupMenu& operator=(const CMcadPopupMenu&) = delete;
    virtual ~CMcadPopupMenu() = default;

    /// Makes and fills the popup menu; false when the system gave no menu.
    bool Create();
    /// The same as a menu bar's menu.
    bool CreateBar();

    /// Marks the settings' toggles and speed, shows the menu at screen point (x, y) owned by
    /// `window`, and waits in the menu's loop. Returns the id chosen, or 0; a toggle or a
    /// speed chosen is set in `settings`.
    std::uint32_t Track(int x, int y, HWND window, void* reserved, I3dmouseSettings* settings);

    HMENU Handle() const { return m_menu.Get(); }

private:
    bool Fill();

    ovklib::CMenuHandle m_menu;
    std::uint16_t m_language;
};

}  // namespace s3dm
