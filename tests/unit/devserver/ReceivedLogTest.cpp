#include "ReceivedLog.h"

#include <gtest/gtest.h>

namespace {

using devserver::CReceivedLog;
using devserver::ReceivedFrame;

TEST(ReceivedLogTest, KeepsTheLastTenThousandAndNumbersOn) {
    CReceivedLog log;
    for (int i = 0; i < 10'003; ++i) {
        log.Add(ReceivedFrame());
    }

    EXPECT_EQ(log.Entries().size(), 10'000u);
    EXPECT_EQ(log.Entries().front().number, 4u);
    EXPECT_EQ(log.Entries().back().number, 10'003u);
}

TEST(ReceivedLogTest, ForgetsTheOldestWhenBodiesGrowTooLarge) {
    CReceivedLog log;
    ReceivedFrame large;
    large.body.assign(CReceivedLog::kMaxBytes / 2, 'x');

    log.Add(large);
    log.Add(large);
    EXPECT_EQ(log.Entries().size(), 2u);
    log.Add(large);

    EXPECT_EQ(log.Entries().size(), 2u);
    EXPECT_EQ(log.Entries().front().number, 2u);
}

}  // namespace
