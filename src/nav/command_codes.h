// The driver's numeric command codes that the plug-in answers. The numbers are the driver's
// contract; codes 2 to 12 equal the device keys of the same names.
#pragma once

#include <cstdint>

enum V3DCMD : std::uint32_t {
    V3DCMD_FIT = 2,
    V3DCMD_TOP = 3,
    V3DCMD_LEFT = 4,
    V3DCMD_RIGHT = 5,
    V3DCMD_FRONT = 6,
    V3DCMD_BOTTOM = 7,
    V3DCMD_BACK = 8,
    V3DCMD_ROLL_CW = 9,
    V3DCMD_ROLL_CCW = 10,
    V3DCMD_ISO1 = 11,
    V3DCMD_ISO2 = 12,
    V3DCMD_MENU_POPUP = 38,
    V3DCMD_ZOOM_CURSOR_CENTRED_B = 42,
    V3DCMD_ZOOM_CURSOR_CENTRED_A = 43,
    V3DCMD_ZOOM_WINDOW_B = 44,
    V3DCMD_ZOOM_WINDOW_A = 45,
    V3DCMD_ZOOM_CURSOR_FIXED_B = 46,
    V3DCMD_ZOOM_CURSOR_FIXED_A = 47,
    V3DCMD_ZOOM_IN = 48,
    V3DCMD_ZOOM_OUT = 49,
    V3DCMD_VIEW_1 = 76,
    V3DCMD_VIEW_2 = 77,
    V3DCMD_VIEW_3 = 78,
    V3DCMD_SAVE_VIEW_1 = 112,
    V3DCMD_SAVE_VIEW_2 = 113,
    V3DCMD_SAVE_VIEW_3 = 114,
};
