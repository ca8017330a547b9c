#include "core/ServerClock.h"

#include <gmock/gmock.h>

#include <chrono>
#include <limits>

#include "core/Random.h"

using namespace ::testing;

namespace {

int64_t LocalMillis() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

TEST(ServerClockTest, WithoutAWordFromTheServerItIsTheLocalClock) {
    const CServerClock clock;
    const int64_t before = LocalMillis();

    const int64_t told = clock.ServerTimeMillis();

    EXPECT_THAT(told, AllOf(Ge(before), Le(LocalMillis())));
}

TEST(ServerClockTest, TheServersTimeRunsOnFromWhatItTold) {
    CServerClock clock;
    const int64_t before = LocalMillis();
    clock.SetServerTimeMillis(1'000'000);

    const int64_t told = clock.ServerTimeMillis();

    EXPECT_THAT(told, AllOf(Ge(1'000'000), Le(1'000'000 + LocalMillis() - before)));
}

TEST(ServerClockTest, ATimeThatIsNoneIsIgnored) {
    CServerClock clock;
    clock.SetServerTimeMillis(1'000'000);
    clock.SetServerTimeMillis(0);
    clock.SetServerTimeMillis(-5);
    clock.SetServerTimeMillis(std::numeric_limits<int64_t>::max());

    EXPECT_THAT(clock.ServerTimeMillis(), AllOf(Ge(1'000'000), Lt(2'000'000)));
}

TEST(RandomTest, NumbersUseAllTheirBits) {
    CRandom random;
    uint32_t ones = 0;
    uint32_t zeros = 0xFFFFFFFF;
    for (int i = 0; i < 1000; ++i) {
        const uint32_t number = random.Next();
        ones |= number;
        zeros &= number;
    }
    EXPECT_EQ(ones, 0xFFFFFFFFu);
    EXPECT_EQ(zeros, 0u);
}

}  // namespace
