#include "nav/easing.h"

#include <gtest/gtest.h>

namespace {

TEST(EasingTest, ConstantAccelerationIsEvenAndEndsExactlyAtItsFinish) {
    easing::CConstantAcceleration ease(200, 200, 0.0);
    std::int64_t end = 0;
    ease.Finish(end);
    EXPECT_EQ(end, 400);
    EXPECT_EQ(ease.Position(-5), 0.0);
    EXPECT_EQ(ease.Position(0), 0.0);
    EXPECT_DOUBLE_EQ(ease.Position(100), 0.125);
    EXPECT_DOUBLE_EQ(ease.Position(200), 0.5);
    EXPECT_DOUBLE_EQ(ease.Position(300), 0.875);
    EXPECT_DOUBLE_EQ(ease.Position(400), 1.0);
    EXPECT_EQ(ease.Position(401), 1.0);
}

TEST(EasingTest, ConstantAccelerationIsContinuousAndMonotonicForUnevenHalves) {
    easing::CConstantAcceleration ease(150, 350, 0.0);
    double last = 0.0;
    for (std::int64_t t = 1; t <= 500; ++t) {
        double p = ease.Position(t);
        ASSERT_GE(p, last) << "t=" << t;
        ASSERT_LT(p - last, 0.01) << "a jump at t=" << t;
        last = p;
    }
    EXPECT_NEAR(last, 1.0, 1e-12);
}

TEST(EasingTest, ConstantVelocityIsAStraightLine) {
    easing::CConstantVelocity ease(100);
    std::int64_t end = 0;
    ease.Finish(end);
    EXPECT_EQ(end, 100);
    EXPECT_EQ(ease.Position(0), 0.0);
    EXPECT_DOUBLE_EQ(ease.Position(25), 0.25);
    EXPECT_EQ(ease.Position(100), 1.0);
    EXPECT_EQ(ease.Position(1000), 1.0);
}

}  // namespace
