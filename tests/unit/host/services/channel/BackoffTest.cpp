#include "channel/Backoff.h"

#include <gmock/gmock.h>

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

constexpr uint32_t kLowest = 0;
constexpr uint32_t kHighest = 0xFFFFFFFF;

TEST(BackoffTest, WaitsDoubleUpToTheCap) {
    CBackoff backoff(500ms, 3000ms);

    EXPECT_EQ(backoff.Next(kLowest), 250ms);
    EXPECT_EQ(backoff.Next(kLowest), 500ms);
    EXPECT_EQ(backoff.Next(kLowest), 1000ms);
    EXPECT_EQ(backoff.Next(kLowest), 1500ms);
    EXPECT_EQ(backoff.Next(kLowest), 1500ms);
}

TEST(BackoffTest, JitterSpreadsAWaitOverItsUpperHalf) {
    CBackoff backoff(1000ms, 1000ms);

    EXPECT_EQ(backoff.Next(kLowest), 500ms);
    EXPECT_EQ(backoff.Next(kHighest / 2), 749ms);
    EXPECT_EQ(backoff.Next(kHighest), 999ms);
}

TEST(BackoffTest, ResetBeginsAnew) {
    CBackoff backoff(500ms, 30s);
    backoff.Next(kLowest);
    backoff.Next(kLowest);

    backoff.Reset();

    EXPECT_EQ(backoff.Next(kLowest), 250ms);
}

}  // namespace
