#include "report/Measurements.h"

#include <gmock/gmock.h>

#include <set>
#include <thread>
#include <vector>

using namespace ::testing;

namespace {

class MeasurementsTest : public Test {
protected:
    int64_t now = 1'000;
    CMeasurements measurements{[this] { return now; }};
};

TEST_F(MeasurementsTest, TheTextBeginsWithTheEventAndTheEndGivesItBackWithTheTime) {
    const std::string text = measurements.Start("ExposeAd");
    EXPECT_THAT(text, StartsWith("ExposeAd"));
    EXPECT_NE(text, "ExposeAd");
    now += 1'234;

    const auto measured = measurements.End(text);

    ASSERT_TRUE(measured);
    EXPECT_EQ(measured->event, "ExposeAd");
    EXPECT_EQ(measured->millis, 1'234);
}

TEST_F(MeasurementsTest, ThoseOfOneEventAreApart) {
    const std::string first = measurements.Start("ExposeAd");
    now += 100;
    const std::string second = measurements.Start("ExposeAd");
    now += 10;

    EXPECT_NE(first, second);
    EXPECT_EQ(measurements.End(first)->millis, 110);
    now += 5;
    EXPECT_EQ(measurements.End(second)->millis, 15);
}

TEST_F(MeasurementsTest, EachEndsOnce) {
    const std::string text = measurements.Start("ExposeAd");
    EXPECT_TRUE(measurements.End(text));
    EXPECT_FALSE(measurements.End(text));
}

TEST_F(MeasurementsTest, WhatWasNeverBegunIsNotOpen) {
    const std::string text = measurements.Start("ExposeAd");
    const std::string number = text.substr(text.rfind('#'));
    for (const std::string& other :
         {std::string(), std::string("ExposeAd"), std::string("ExposeAd#"), std::string("#1x"), "Other" + number,
          text + "0", text + " ", std::string("ExposeAd#-1"), std::string("ExposeAd#99999999999999999999999")}) {
        EXPECT_FALSE(measurements.End(other)) << other;
    }
    EXPECT_TRUE(measurements.End(text));
}

TEST_F(MeasurementsTest, AnEventMayHoldTheMarkItself) {
    const std::string text = measurements.Start("a#1");
    EXPECT_EQ(CMeasurements::EventOf(text), "a#1");
    EXPECT_EQ(measurements.End(text)->event, "a#1");
    EXPECT_EQ(CMeasurements::EventOf("plain"), "plain");
}

TEST_F(MeasurementsTest, OfTooManyOpenOnesTheOldestIsForgotten) {
    std::vector<std::string> texts;
    for (size_t i = 0; i <= CMeasurements::kMostOpen; ++i) {
        texts.push_back(measurements.Start("ExposeAd"));
    }
    EXPECT_FALSE(measurements.End(texts[0]));
    EXPECT_TRUE(measurements.End(texts[1]));
    EXPECT_TRUE(measurements.End(texts.back()));
}

TEST_F(MeasurementsTest, AClockThatStepsBackMeasuresNothing) {
    const std::string text = measurements.Start("ExposeAd");
    now -= 50;
    EXPECT_EQ(measurements.End(text)->millis, 0);
}

TEST_F(MeasurementsTest, ThreadsGetMeasurementsOfTheirOwn) {
    std::vector<std::string> texts(200);
    std::vector<std::thread> threads;
    for (size_t thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (size_t i = 0; i < 50; ++i) {
                texts[thread * 50 + i] = measurements.Start("ExposeAd");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(std::set<std::string>(texts.begin(), texts.end()), SizeIs(200));
    EXPECT_THAT(texts, Each(ResultOf([this](const std::string& text) { return bool(measurements.End(text)); }, true)));
}

}  // namespace
