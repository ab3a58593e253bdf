#include "nav/mcad_popup_menu_win32.h"

#include "nav/device_menu.h"
#include "support/settings/mouse_settings.h"

#include <commctrl.h>

namespace s3dm {
namespace {

using namespace qvx::nav;

// TPM_RETURNCMD and TPM_NONOTIFY with the left-aligned menu's animation, or with the
// right-aligned one's where menus drop to the left of their point.
constexpr UINT kTrackFlags = 0x0580;
constexpr UINT kTrackFlagsRightAligned = 0x0988;

bool AppendItem(HMENU menu, std::uint32_t id, std::uint16_t language) {
    return AppendMenuW(menu, MF_STRING, id, DeviceMenuText(id, language).c_str()) != FALSE;
}

bool IsChecked(HMENU menu, std::uint32_t id) {
    UINT state = GetMenuState(menu, id, MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && (state & MF_CHECKED) != 0;
}

}  // namespace

CMcadPopupMenu::CMcadPopupMenu(std::uint16_t language) : m_language(language) {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = 0x40FF;
    InitCommonControlsEx(&controls);
}

bool CMcadPopupMenu::Create() {
    m_menu.Reset(CreatePopupMenu());
    return m_menu && Fill();
}

bool CMcadPopupMenu::CreateBar() {
    m_menu.Reset(CreateMenu());
    return m_menu && Fill();
}

bool CMcadPopupMenu::Fill() {
    HMENU menu = m_menu.Get();
    ovklib::CMenuHandle speeds(CreatePopupMenu());
    if (!speeds) return false;
    for (const CSpeedRow& row : kSpeedRows) AppendItem(speeds.Get(), row.id, m_language);
    AppendItem(menu, kMenuRotate, m_language);
    AppendItem(menu, kMenuPanZoom, m_language);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    // Once appended, the submenu belongs to the menu and goes with it.
    if (AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(speeds.Get()),
                    DeviceMenuText(kMenuSpeed, m_language).c_str())) {
        speeds.Take();
    }
    AppendItem(menu, kMenuCustomizeButtons, m_language);
    return true;
}

std::uint32_t CMcadPopupMenu::Track(int x, int y, HWND window, void*, I3dmouseSettings* settings) {
    HMENU menu = m_menu.Get();
    if (!menu) return 0;
    if (settings) {
        CheckMenuItem(menu, kMenuRotate,
                      MF_BYCOMMAND | (settings->GetRotation() ? MF_CHECKED : MF_UNCHECKED));
        CheckMenuItem(menu, kMenuPanZoom,
                      MF_BYCOMMAND | (settings->GetPanZoom() ? MF_CHECKED : MF_UNCHECKED));
        CheckMenuRadioItem(menu, kMenuSpeedLow, kMenuSpeedHigh, SpeedRadioId(settings->GetSpeed()),
                           MF_BYCOMMAND);
    }
    UINT flags = GetSystemMetrics(SM_MENUDROPALIGNMENT) ? kTrackFlagsRightAligned : kTrackFlags;
    auto chosen = static_cast<std::uint32_t>(TrackPopupMenuEx(menu, flags, x, y, window, nullptr));
    // Nothing chosen, or the menu could not be shown: either way nothing changes.
    if (chosen != 0 && settings) ApplyDeviceMenuChoice(chosen, IsChecked(menu, chosen), *settings);
    return chosen;
}

}  // namespace s3dm
