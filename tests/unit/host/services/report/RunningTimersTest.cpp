#include "report/RunningTimers.h"

#include <gmock/gmock.h>

#include <set>
#include <thread>
#include <vector>

using namespace ::testing;

namespace {

class RunningTimersTest : public Test {
protected:
    int64_t now = 1'000;
    CRunningTimers timers{[this] { return now; }};
};

TEST_F(RunningTimersTest, TimerReturnsItsEventAndDuration) {
    const std::string text = timers.Start("ExposeAd");
    EXPECT_THAT(text, StartsWith("ExposeAd"));
    EXPECT_NE(text, "ExposeAd");
    now += 1'234;

    const auto measured = timers.End(text);

    ASSERT_TRUE(measured);
    EXPECT_EQ(measured->event, "ExposeAd");
    EXPECT_EQ(measured->millis, 1'234);
}

TEST_F(RunningTimersTest, TimersOfOneEventAreSeparate) {
    const std::string first = timers.Start("ExposeAd");
    now += 100;
    const std::string second = timers.Start("ExposeAd");
    now += 10;

    EXPECT_NE(first, second);
    EXPECT_EQ(timers.End(first)->millis, 110);
    now += 5;
    EXPECT_EQ(timers.End(second)->millis, 15);
}

TEST_F(RunningTimersTest, TimerEndsOnce) {
    const std::string text = timers.Start("ExposeAd");
    EXPECT_TRUE(timers.End(text));
    EXPECT_FALSE(timers.End(text));
}

TEST_F(RunningTimersTest, UnknownTextEndsNoTimer) {
    const std::string text = timers.Start("ExposeAd");
    const std::string number = text.substr(text.rfind('#'));
    for (const std::string& other :
         {std::string(), std::string("ExposeAd"), std::string("ExposeAd#"), std::string("#1x"), "Other" + number,
          text + "0", text + " ", std::string("ExposeAd#-1"), std::string("ExposeAd#99999999999999999999999")}) {
        EXPECT_FALSE(timers.End(other)) << other;
    }
    EXPECT_TRUE(timers.End(text));
}

TEST_F(RunningTimersTest, EventMayContainTheMark) {
    const std::string text = timers.Start("a#1");
    EXPECT_EQ(CRunningTimers::EventOf(text), "a#1");
    EXPECT_EQ(timers.End(text)->event, "a#1");
    EXPECT_EQ(CRunningTimers::EventOf("plain"), "plain");
}

TEST_F(RunningTimersTest, OldestTimerIsDiscardedBeyondTheMaximum) {
    std::vector<std::string> texts;
    for (size_t i = 0; i <= CRunningTimers::kMaxOpen; ++i) {
        texts.push_back(timers.Start("ExposeAd"));
    }
    EXPECT_FALSE(timers.End(texts[0]));
    EXPECT_TRUE(timers.End(texts[1]));
    EXPECT_TRUE(timers.End(texts.back()));
}

TEST_F(RunningTimersTest, DurationIsZeroWhenTheClockStepsBack) {
    const std::string text = timers.Start("ExposeAd");
    now -= 50;
    EXPECT_EQ(timers.End(text)->millis, 0);
}

TEST_F(RunningTimersTest, ThreadsGetSeparateTimers) {
    std::vector<std::string> texts(200);
    std::vector<std::thread> threads;
    for (size_t thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (size_t i = 0; i < 50; ++i) {
                texts[thread * 50 + i] = timers.Start("ExposeAd");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(std::set<std::string>(texts.begin(), texts.end()), SizeIs(200));
    EXPECT_THAT(texts, Each(ResultOf([this](const std::string& text) { return bool(timers.End(text)); }, true)));
}

}  // namespace
