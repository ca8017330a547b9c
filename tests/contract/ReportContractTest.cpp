#include <gmock/gmock.h>

#include <thread>

#include "HostSet.h"
#include "core/report.h"

using namespace ::testing;
using namespace core::report;

namespace {

class ReportContractTest : public HostContractTest {
protected:
    ReportContractTest() { m_set->BeInternalBuild(); }

    static Json::Value Params(int n) {
        Json::Value params;
        params["n"] = n;
        params["text"] = "\xE4\xBD\xA0 \"quoted\"";
        params["list"] = Json::arrayValue;
        params["wide"] = Json::Int64(9'007'199'254'740'993);
        return params;
    }
};

TEST_F(ReportContractTest, AnEventReachesTheServerUnchanged) {
    EXPECT_TRUE(Report("ClickAd", 4, Params(1), 7));

    const auto events = m_set->WaitForEvents(1);
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].name, "ClickAd");
    EXPECT_EQ(events[0].code, 4);
    EXPECT_EQ(events[0].params, Params(1));
    EXPECT_EQ(events[0].broker, 7);
    EXPECT_FALSE(events[0].timed);
}

TEST_F(ReportContractTest, EventsKeepTheirOrder) {
    for (int n = 0; n < 250; ++n) {
        ASSERT_TRUE(Report("Event", n, Json::Value(), 0));
    }

    const auto events = m_set->WaitForEvents(250);
    ASSERT_THAT(events, SizeIs(250));
    for (int n = 0; n < 250; ++n) {
        EXPECT_EQ(events[size_t(n)].code, n);
    }
}

TEST_F(ReportContractTest, ATextOf16KiBReachesTheServerUnchanged) {
    Json::Value params;
    params["error_content"] = std::string(16 << 10, 'x');

    EXPECT_TRUE(Report("SingleAdvertisementPullDataResult", 2, params, 0));

    const auto events = m_set->WaitForEvents(1);
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_TRUE(events[0].params == params);
}

TEST_F(ReportContractTest, TheBeginningOfALongerTextReachesTheServer) {
    Json::Value params;
    std::string body;
    while (body.size() < 8u << 20) {
        body += "{\"广告\":1}";
    }
    params["error_content"] = body;

    EXPECT_TRUE(Report("SingleAdvertisementPullDataResult", 2, params, 0));

    const auto events = m_set->WaitForEvents(1);
    ASSERT_THAT(events, SizeIs(1));
    const std::string arrived = events[0].params["error_content"].asString();
    EXPECT_EQ(arrived.compare(0, 16'000, body, 0, 16'000), 0);
}

TEST_F(ReportContractTest, AMeasurementReportsUnderItsEventsName) {
    const auto timer = ReportTimerStart("ExposeAd");
    ASSERT_TRUE(timer);

    EXPECT_TRUE(ReportTimerEnd(*timer, 1, Params(2), 0, 0));

    const auto events = m_set->WaitForEvents(1);
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].name, "ExposeAd");
    EXPECT_EQ(events[0].params, Params(2));
    EXPECT_TRUE(events[0].timed);
}

TEST_F(ReportContractTest, AnEventWithoutANameIsNotTaken) {
    EXPECT_FALSE(Report("", 1, Params(1), 0));
    EXPECT_EQ(ReportTimerStart(""), nullptr);
    EXPECT_FALSE(ReportTimerEnd("", 1, Params(1), 0, 0));

    EXPECT_TRUE(Report("Event", 1, Params(2), 0));
    EXPECT_THAT(m_set->WaitForEvents(1), SizeIs(1));
}

TEST_F(ReportContractTest, AnyThreadMayReport) {
    std::thread([] {
        const auto timer = ReportTimerStart("Measured");
        EXPECT_TRUE(Report("Event", 1, Params(1), 0));
        EXPECT_TRUE(timer && ReportTimerEnd(*timer, 2, Json::Value(), 0, 0));
    }).join();

    const auto events = m_set->WaitForEvents(2);
    ASSERT_THAT(events, SizeIs(2));
    EXPECT_EQ(events[0].name, "Event");
    EXPECT_EQ(events[1].name, "Measured");
}

}  // namespace
