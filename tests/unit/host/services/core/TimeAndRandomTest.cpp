#include "core/TimeAndRandom.h"

#include <gmock/gmock.h>

#include <chrono>
#include <limits>

using namespace ::testing;

namespace {

int64_t LocalMillis() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

TEST(TimeAndRandomTest, TimeIsTheLocalClockUntilTheServerSetsIt) {
    const CTimeAndRandom clock;
    const int64_t before = LocalMillis();

    const int64_t actual = clock.ServerTimeMs();

    EXPECT_THAT(actual, AllOf(Ge(before), Le(LocalMillis())));
}

TEST(TimeAndRandomTest, TimeRunsOnFromTheServersTime) {
    CTimeAndRandom clock;
    const int64_t before = LocalMillis();
    clock.SetServerTimeMs(1'000'000);

    const int64_t actual = clock.ServerTimeMs();

    EXPECT_THAT(actual, AllOf(Ge(1'000'000), Le(1'000'000 + LocalMillis() - before)));
}

TEST(TimeAndRandomTest, TimeIgnoresValuesOutOfRange) {
    CTimeAndRandom clock;
    clock.SetServerTimeMs(1'000'000);
    clock.SetServerTimeMs(0);
    clock.SetServerTimeMs(-5);
    clock.SetServerTimeMs(std::numeric_limits<int64_t>::max());

    EXPECT_THAT(clock.ServerTimeMs(), AllOf(Ge(1'000'000), Lt(2'000'000)));
}

TEST(TimeAndRandomTest, NumbersUseAllTheirBits) {
    CTimeAndRandom random;
    uint32_t ones = 0;
    uint32_t zeros = 0xFFFFFFFF;
    for (int i = 0; i < 1000; ++i) {
        const uint32_t number = random.RandomNumber();
        ones |= number;
        zeros &= number;
    }
    EXPECT_EQ(ones, 0xFFFFFFFFu);
    EXPECT_EQ(zeros, 0u);
}

}  // namespace
