#include "core/TimeAndRandom.h"

#include <gmock/gmock.h>

#include <chrono>
#include <limits>

#include "core/MainThreadPoster.h"

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

class SetClockTest : public Test {
protected:
    int64_t local = 1'700'000'000'000;
    int64_t steady = 5'000;
    CTimeAndRandom clock{{[this] { return local; }, [this] { return steady; }}};
};

TEST_F(SetClockTest, TimeFollowsTheSteadyClockWhenTheUserSetsTheLocalOne) {
    constexpr int64_t hour = 3'600'000;
    clock.SetServerTimeMs(1'600'000'000'000);

    steady += 10;
    local -= hour;
    EXPECT_EQ(clock.ServerTimeMs(), 1'600'000'000'010);

    steady += 10;
    local += 40 * 24 * hour;
    EXPECT_EQ(clock.ServerTimeMs(), 1'600'000'000'020);
}

TEST_F(SetClockTest, TimeIsTheServersLatest) {
    clock.SetServerTimeMs(1'600'000'000'000);
    steady += 10;
    clock.SetServerTimeMs(1'500'000'000'000);
    steady += 10;

    EXPECT_EQ(clock.ServerTimeMs(), 1'500'000'000'010);
}

TEST_F(SetClockTest, TimeIsTheLocalClockWhileTheServerHasSetNone) {
    local -= 1'000;
    clock.SetServerTimeMs(0);

    EXPECT_EQ(clock.ServerTimeMs(), 1'699'999'999'000);
}

TEST(TimeAndRandomTest, MillisSinceBootIncludeSuspends) {
    const auto before = CTimeAndRandom::MillisSinceBoot();
    const auto suspended = CTimeAndRandom::SuspendedMillis();
    const auto steady = CMainThreadPoster::SteadyMillis();

    EXPECT_GE(suspended, -1);
    EXPECT_THAT(steady + suspended - before, AllOf(Ge(-1), Lt(5'000)));
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
