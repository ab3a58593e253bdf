// The driver's event record and the key vocabulary.
#include "client/detail/kvw_event.h"
#include "client/oxapp/virtual_key.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using oxapp::detail::CKvwEvent;

TEST(KvwEventTest, ZeroEventHasTypeFourAndPeriodSixteen) {
    CKvwEvent zero;
    EXPECT_EQ(zero.type, 4u);
    EXPECT_EQ(zero.motion.period, 16);
    EXPECT_EQ(zero.motion.tx, 0);
    EXPECT_EQ(zero.NormalisedType(), 4u);
}

TEST(KvwEventTest, PackedMotionUnpacksSignedFieldsWithZNegated) {
    // a: x = 5, z field = -3 (so tz = 3), y = -2; b: x = -1024, z field = 1023, y = 511.
    auto pack = [](std::int32_t x, std::int32_t z, std::int32_t y) {
        return (static_cast<std::uint32_t>(x) & 0x7FF) |
               ((static_cast<std::uint32_t>(z) & 0x7FF) << 11) |
               ((static_cast<std::uint32_t>(y) & 0x3FF) << 22);
    };
    CKvwEvent e(pack(5, -3, -2), pack(-1024, 1023, 511), 2);
    EXPECT_EQ(e.type, 2u);
    EXPECT_EQ(e.motion.tx, 5);
    EXPECT_EQ(e.motion.tz, 3);
    EXPECT_EQ(e.motion.ty, -2);
    EXPECT_EQ(e.motion.rx, -1024);
    EXPECT_EQ(e.motion.rz, -1023);
    EXPECT_EQ(e.motion.ry, 511);
    EXPECT_EQ(e.motion.period, 16);
}

TEST(KvwEventTest, MotionWithAllAxesZeroCountsAsZeroEvent) {
    CKvwEvent still(0, 0, 2);
    EXPECT_EQ(still.type, 2u);
    EXPECT_EQ(still.NormalisedType(), 4u);
    CKvwEvent moving(1, 0, 2);
    EXPECT_EQ(moving.NormalisedType(), 2u);
}

TEST(KvwEventTest, KeyEventsSetTheButtonBitOfTheirWord) {
    CKvwEvent down(33, 0, 12);
    EXPECT_EQ(down.motion.pressed, 2u) << "the shift is taken modulo 32";
    EXPECT_EQ(down.motion.released, 0u);
    CKvwEvent up(31, 0, 13);
    EXPECT_EQ(up.motion.released, 0x80000000u);
}

TEST(KvwEventTest, RawRecordIsCopiedWhole) {
    OxKvwEvent raw{};
    raw.type = 10;
    std::memset(raw.raw, 0xAB, sizeof raw.raw);
    CKvwEvent copy(raw);
    EXPECT_EQ(copy.type, 10u);
    EXPECT_EQ(copy.raw[5119], 0xAB);
    EXPECT_EQ(std::memcmp(copy.raw, raw.raw, sizeof raw.raw), 0);
}

TEST(VirtualKeyTest, LabelsAndNamesAtTheEdges) {
    EXPECT_EQ(s3dm::KeyLabel(0), L"");
    EXPECT_EQ(s3dm::KeyLabel(1), L"MENU");
    EXPECT_EQ(s3dm::KeyLabel(9), L"Roll +");
    EXPECT_EQ(s3dm::KeyLabel(22), L"10");
    EXPECT_EQ(s3dm::KeyLabel(35), L"Tilt -");
    EXPECT_EQ(s3dm::KeyLabel(36), L"");
    EXPECT_EQ(s3dm::KeyLabel(65537), L"");
    EXPECT_EQ(s3dm::KeyName(0), L"V3DK_INVALID");
    EXPECT_EQ(s3dm::KeyName(28), L"V3DK_PANZOOM");
    EXPECT_EQ(s3dm::KeyName(36), L"");
}

TEST(VirtualKeyTest, TranslationByProductMapAndList) {
    struct Case {
        std::uint32_t product, button;
        bool strict;
        std::uint32_t key;
    } cases[] = {
        {0x5101, 21, true, 65537},  // the last mapped button is a device code
        {0x5101, 1, true, 13},     {0x5101, 7, false, 3}, {0x5101, 22, true, 0},
        {0x5101, 22, false, 22},   {0x5101, 0, true, 0},  {0x5103, 15, true, 27},
        {0x5106, 4, true, 0},      {0x5106, 4, false, 4}, {0x5106, 27, true, 27},
        {0x5105, 31, true, 31},    {0x5105, 32, true, 0}, {0x9999, 77, true, 77},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(s3dm::TranslateKey(c.product, c.button, c.strict), c.key)
            << std::hex << c.product << " button " << std::dec << c.button << " strict "
            << c.strict;
    }
}

}  // namespace
