// The device menu's contents, apart from any window system: its items and their ids, the
// speed rows, the texts, and what a choice does to the settings.
#pragma once

#include <cstdint>
#include <string>

namespace s3dm {
class I3dmouseSettings;
}

namespace qvx::nav {

enum EDeviceMenuId : std::uint32_t {
    kMenuRotate = 24576,
    kMenuPanZoom = 24577,
    kMenuSpeed = 24592,
    kMenuSpeedLow = 24593,
    kMenuSpeedSlower = 24594,
    kMenuSpeedMid = 24595,
    kMenuSpeedFaster = 24596,
    kMenuSpeedHigh = 24597,
    kMenuCustomizeButtons = 24641,
};

struct CSpeedRow {
    std::uint32_t id;
    float speed;
    int squares;  ///< the row's length mark behind its text
};

/// The speed submenu from the lowest speed to the highest.
inline constexpr CSpeedRow kSpeedRows[] = {
    {kMenuSpeedLow, 0.25f, 1},   {kMenuSpeedSlower, 0.5f, 2}, {kMenuSpeedMid, 1.0f, 3},
    {kMenuSpeedFaster, 2.0f, 4}, {kMenuSpeedHigh, 4.0f, 5},
};

/// The speed row to mark for `speed`: the first at or above it; above the highest, the
/// highest.
std::uint32_t SpeedRadioId(float speed);

/// An item's text in `language`; a speed row's text carries its squares.
std::wstring DeviceMenuText(std::uint32_t id, std::uint16_t language);

/// What choosing `id` does to `settings`: a toggle turns its flag to the opposite of the mark
/// it showed (`wasChecked`), a speed row sets its speed; other ids change nothing.
void ApplyDeviceMenuChoice(std::uint32_t id, bool wasChecked, s3dm::I3dmouseSettings& settings);

}  // namespace qvx::nav
