// The device menu's contents: the speed row that is marked, and the texts by language.
#include "nav/device_menu.h"

#include <gtest/gtest.h>

namespace qvx::nav {
namespace {

TEST(DeviceMenuTest, TheMarkedSpeedIsTheFirstRowAtOrAboveTheSpeed) {
    const std::pair<float, std::uint32_t> cases[] = {
        {0.0f, kMenuSpeedLow},  {0.25f, kMenuSpeedLow},   {0.3f, kMenuSpeedSlower},
        {1.0f, kMenuSpeedMid},  {1.5f, kMenuSpeedFaster}, {4.0f, kMenuSpeedHigh},
        {8.0f, kMenuSpeedHigh}, {-3.0f, kMenuSpeedLow},
    };
    for (const auto& [speed, id] : cases) EXPECT_EQ(SpeedRadioId(speed), id) << speed;
}

TEST(DeviceMenuTest, TextsComeInTheMenusLanguageWithEnglishForTheRest) {
    EXPECT_EQ(DeviceMenuText(kMenuRotate, 0x0409), L"Rotate");
    EXPECT_EQ(DeviceMenuText(kMenuCustomizeButtons, 0x0407), L"Customize Buttons...")
        << "German has no menu texts of its own";
    EXPECT_EQ(DeviceMenuText(kMenuSpeed, 0x040C), L"Vitesse");
    EXPECT_EQ(DeviceMenuText(kMenuSpeedLow, 0x0409), L"Low\u25A0");
    EXPECT_EQ(DeviceMenuText(kMenuSpeedHigh, 0x0411), L"高速\u25A0\u25A0\u25A0\u25A0\u25A0");
}

}  // namespace
}  // namespace qvx::nav
