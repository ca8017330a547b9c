#include <gmock/gmock.h>

#include <set>
#include <thread>

#include "HostSet.h"
#include "core/random.h"
#include "core/time_date.h"

using namespace ::testing;
using core::time_date::GetSvrTimeMillis;
using core::time_date::GetSvrTimeStamp;

namespace {

using ClockContractTest = HostContractTest;
using RandomContractTest = HostContractTest;

int64_t RoundedDown(int64_t ms) {
    return ms >= 0 ? ms / 1000 : -((-ms + 999) / 1000);
}

}  // namespace

TEST_F(ClockContractTest, MillisecondsFollowTheServersTimeInBothDirections) {
    for (const int64_t time : std::vector<int64_t>{1'700'000'000'000, 1'800'000'000'000, 1'600'000'000'000}) {
        m_set->SetServerTime(time);
        EXPECT_THAT(GetSvrTimeMillis(), AllOf(Ge(time), Lt(time + 60'000)));
    }
}

TEST_F(ClockContractTest, SecondsAreTheMillisecondsRoundedDownAlsoWhenNegative) {
    for (const int64_t time :
         std::vector<int64_t>{1'700'000'000'999, 1'700'000'000'001, -1, -500, -123'456'999, -123'456'001}) {
        m_set->SetServerTime(time);
        const int64_t before = GetSvrTimeMillis();
        const int64_t seconds = GetSvrTimeStamp();
        const int64_t after = GetSvrTimeMillis();
        EXPECT_THAT(seconds, AllOf(Ge(RoundedDown(before)), Le(RoundedDown(after)))) << time;
    }
}

TEST_F(ClockContractTest, ClockIsCallableFromAnyThread) {
    m_set->SetServerTime(1'700'000'000'000);
    int64_t ms = 0;
    int64_t seconds = 0;

    std::thread([&] {
        ms = GetSvrTimeMillis();
        seconds = GetSvrTimeStamp();
    }).join();

    EXPECT_GE(ms, 1'700'000'000'000);
    EXPECT_GE(seconds, 1'700'000'000);
}

TEST_F(RandomContractTest, NumbersDifferAndUseAll32Bits) {
    std::set<uint32_t> numbers;
    uint32_t set = 0;
    uint32_t cleared = 0;
    for (int call = 0; call < 1000; ++call) {
        const uint32_t number = core::random::GetRandUInt32();
        numbers.insert(number);
        set |= number;
        cleared |= ~number;
    }

    EXPECT_THAT(numbers, SizeIs(Ge(990U)));
    EXPECT_EQ(set, 0xFFFFFFFFU);
    EXPECT_EQ(cleared, 0xFFFFFFFFU);
}

TEST_F(RandomContractTest, NumbersAreAvailableOnAnyThread) {
    std::set<uint32_t> numbers;

    std::thread([&] {
        for (int call = 0; call < 10; ++call) {
            numbers.insert(core::random::GetRandUInt32());
        }
    }).join();

    EXPECT_THAT(numbers, SizeIs(Ge(9U)));
}
