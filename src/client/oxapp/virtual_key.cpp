#include "client/oxapp/virtual_key.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

namespace s3dm {
namespace {

struct KeyText {
    const wchar_t* name;
    const wchar_t* label;
};

constexpr std::array<KeyText, 36> kKeys = {{
    {L"V3DK_INVALID", L""},
    {L"V3DK_MENU", L"MENU"},
    {L"V3DK_FIT", L"FIT"},
    {L"V3DK_TOP", L"T"},
    {L"V3DK_LEFT", L"L"},
    {L"V3DK_RIGHT", L"R"},
    {L"V3DK_FRONT", L"F"},
    {L"V3DK_BOTTOM", L"B"},
    {L"V3DK_BACK", L"BK"},
    {L"V3DK_ROLL_CW", L"Roll +"},
    {L"V3DK_ROLL_CCW", L"Roll -"},
    {L"V3DK_ISO1", L"ISO1"},
    {L"V3DK_ISO2", L"ISO2"},
    {L"V3DK_1", L"1"},
    {L"V3DK_2", L"2"},
    {L"V3DK_3", L"3"},
    {L"V3DK_4", L"4"},
    {L"V3DK_5", L"5"},
    {L"V3DK_6", L"6"},
    {L"V3DK_7", L"7"},
    {L"V3DK_8", L"8"},
    {L"V3DK_9", L"9"},
    {L"V3DK_10", L"10"},
    {L"V3DK_ESC", L"ESC"},
    {L"V3DK_ALT", L"ALT"},
    {L"V3DK_SHIFT", L"SHIFT"},
    {L"V3DK_CTRL", L"CTRL"},
    {L"V3DK_ROTATE", L"Rotate"},
    {L"V3DK_PANZOOM", L"Pan Zoom"},
    {L"V3DK_DOMINANT", L"Dom"},
    {L"V3DK_PLUS", L"+"},
    {L"V3DK_MINUS", L"-"},
    {L"V3DK_SPIN_CW", L"Spin +"},
    {L"V3DK_SPIN_CCW", L"Spin -"},
    {L"V3DK_TILT_CW", L"Tilt +"},
    {L"V3DK_TILT_CCW", L"Tilt -"},
}};

struct DeviceKeys {
    std::uint32_t product;
    std::vector<std::uint32_t> keys;
    bool mapped;  ///< button n (from 1) is keys[n - 1]
};

std::vector<std::uint32_t> Range(std::uint32_t first, std::uint32_t last) {
    std::vector<std::uint32_t> keys;
    for (std::uint32_t k = first; k <= last; ++k) keys.push_back(k);
    return keys;
}

const std::vector<DeviceKeys>& DeviceTable() {
    // 65537 is a device-specific code outside the enumeration; it has no label.
    static const std::vector<DeviceKeys> table = {
        {0x5101,
         {13, 14, 15, 16, 17, 18, 3, 4, 5, 6, 23, 24, 25, 26, 2, 1, 30, 31, 29, 27, 65537},
         true},
        {0x5103, {13, 14, 3, 4, 5, 6, 23, 24, 25, 26, 2, 1, 30, 31, 27}, true},
        {0x5102, {1, 2}, false},
        {0x5104, {1, 2}, false},
        {0x5105, Range(1, 31), false},
        {0x5106, {1, 2, 3, 5, 6, 9, 13, 14, 15, 16, 23, 24, 25, 26, 27}, false},
        {0x5108, {1, 2}, false},
        {0x5107, Range(1, 22), false},
    };
    return table;
}

}  // namespace

std::wstring KeyLabel(std::uint32_t key) {
    return key >= 1 && key < kKeys.size() ? kKeys[key].label : L"";
}

std::wstring KeyName(std::uint32_t key) { return key < kKeys.size() ? kKeys[key].name : L""; }

std::uint32_t TranslateKey(std::uint32_t product, std::uint32_t button, bool strict) {
    const auto& table = DeviceTable();
    auto row = std::find_if(table.begin(), table.end(),
                            [&](const DeviceKeys& r) { return r.product == product; });
    if (row == table.end()) return button;
    if (row->mapped) {
        if (button >= 1 && button <= row->keys.size()) return row->keys[button - 1];
        return strict ? 0 : button;
    }
    if (!strict) return button;
    return std::find(row->keys.begin(), row->keys.end(), button) != row->keys.end() ? button : 0;
}

}  // namespace s3dm
