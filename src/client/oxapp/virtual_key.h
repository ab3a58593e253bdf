// The vocabulary of device keys, their labels, and the tables that turn a device's button
// numbers into keys.
#pragma once

#include <cstdint>
#include <string>

namespace s3dm {

enum e3dmouse_virtual_key : std::uint32_t {
    V3DK_INVALID = 0,
    V3DK_MENU,
    V3DK_FIT,
    V3DK_TOP,
    V3DK_LEFT,
    V3DK_RIGHT,
    V3DK_FRONT,
    V3DK_BOTTOM,
    V3DK_BACK,
    V3DK_ROLL_CW,
    V3DK_ROLL_CCW,
    V3DK_ISO1,
    V3DK_ISO2,
    V3DK_1,
    V3DK_2,
    V3DK_3,
    V3DK_4,
    V3DK_5,
    V3DK_6,
    V3DK_7,
    V3DK_8,
    V3DK_9,
    V3DK_10,
    V3DK_ESC,
    V3DK_ALT,
    V3DK_SHIFT,
    V3DK_CTRL,
    V3DK_ROTATE,
    V3DK_PANZOOM,
    V3DK_DOMINANT,
    V3DK_PLUS,
    V3DK_MINUS,
    V3DK_SPIN_CW,
    V3DK_SPIN_CCW,
    V3DK_TILT_CW,
    V3DK_TILT_CCW,
};

/// The text a button shows for `key`; empty outside 1 to 35.
std::wstring KeyLabel(std::uint32_t key);
/// The enumerator's name, e.g. L"V3DK_ROLL_CW"; empty outside 0 to 35.
std::wstring KeyName(std::uint32_t key);

/// A device's button number as a key. An unknown product gives `button` unchanged. For a
/// product with a button map, an unmapped button gives 0 when `strict`, else `button`; for
/// one without, `strict` keeps only the buttons in the product's key list.
std::uint32_t TranslateKey(std::uint32_t product, std::uint32_t button, bool strict);

}  // namespace s3dm
