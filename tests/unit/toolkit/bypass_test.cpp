#include "toolkit/undostack_bypass.h"

#include <gtest/gtest.h>

TEST(UndostackBypassTest, NeverActiveWhetherBegunOrNestedOrEnded) {
    CQvxUndostackClearBypass outer(true);
    CQvxUndostackClearBypass inner(false);
    inner.Begin();
    EXPECT_FALSE(outer.IsActive());
    EXPECT_FALSE(inner.IsActive());
    inner.End();
    outer.End();
    EXPECT_FALSE(outer.IsActive());
}
