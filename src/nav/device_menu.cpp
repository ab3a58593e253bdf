#include "nav/device_menu.h"

#include "support/settings/mouse_settings.h"
#include "support/text_table.h"

namespace qvx::nav {
namespace {

constexpr wchar_t kSquare = L'\u25A0';

}  // namespace

std::uint32_t SpeedRadioId(float speed) {
    for (const CSpeedRow& row : kSpeedRows) {
        if (row.speed >= speed) return row.id;
    }
    return kMenuSpeedHigh;
}

std::wstring DeviceMenuText(std::uint32_t id, std::uint16_t language) {
    std::wstring text = LoadText(id, language);
    for (const CSpeedRow& row : kSpeedRows) {
        if (row.id == id) text.append(static_cast<std::size_t>(row.squares), kSquare);
    }
    return text;
}

void ApplyDeviceMenuChoice(std::uint32_t id, bool wasChecked, s3dm::I3dmouseSettings& settings) {
    if (id == kMenuRotate) {
        settings.SetRotation(!wasChecked);
    } else if (id == kMenuPanZoom) {
        settings.SetPanZoom(!wasChecked);
    }
    for (const CSpeedRow& row : kSpeedRows) {
        if (row.id == id) settings.SetSpeed(row.speed);
    }
}

}  // namespace qvx::nav
