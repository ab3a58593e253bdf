// The boundary catch-all: results pass through, every kind of exception stops there.
#include "support/boundary.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

TEST(BoundaryTest, ResultPassesThroughAndNothingIsCounted) {
    std::uint64_t before = qvx::BoundaryCatchCount();
    EXPECT_EQ(qvx::CallAtBoundary("Test::Plain", -1, [] { return 7; }), 7);
    EXPECT_EQ(qvx::BoundaryCatchCount(), before);
}

TEST(BoundaryTest, AnyExceptionBecomesTheFallbackAndOneLine) {
    struct NotAStdException {};
    ::testing::internal::CaptureStdout();
    std::uint64_t before = qvx::BoundaryCatchCount();
    EXPECT_EQ(
        qvx::CallAtBoundary("Test::Std", -1, []() -> int { throw std::runtime_error("boom"); }),
        -1);
    EXPECT_EQ(qvx::CallAtBoundary("Test::Other", 0L, []() -> long { throw NotAStdException(); }),
              0L);
    qvx::CallAtBoundary("Test::Void", [] { throw 42; });
    std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(qvx::BoundaryCatchCount() - before, 3u);
    EXPECT_EQ(out,
              "Test::Std failed error=boom\n"
              "Test::Other failed error=unknown\n"
              "Test::Void failed error=unknown\n");
}

}  // namespace
