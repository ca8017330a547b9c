#include "report/ReportService.h"

#include <QTemporaryDir>
#include <cmath>
#include <set>
#include <thread>

#include "framework/JsonText.h"
#include "http/HttpExchange.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class ReportServiceTest : public ScriptedHostTest {
protected:
    ReportServiceTest() { Restart(); }

    ~ReportServiceTest() override {
        http.Forget();
        log.Forget();
    }

    void Restart() {
        service.reset();
        ReportOptions options;
        options.steadyClock = [this] { return time.Now(); };
        service =
            std::make_unique<CReportService>(folder.filePath(QStringLiteral("reports.sqlite")),
                                             ReportDeps{http, domains, timeAndRandom, poster, "device-1"}, options);
    }

    static ReportEvent Event(const std::string& name, Json::Value params = {}) { return {name, 4, params, 9}; }

    /// The events in the outbox.
    std::vector<Json::Value> Waiting() {
        std::vector<Json::Value> events;
        for (const OutboxEvent& event : service->Outbox().Read(0, 1000, 1 << 30)) {
            std::string error;
            events.push_back(*host::ParseJson(event.json, error));
        }
        return events;
    }

    void AcceptLast() {
        std::string error;
        const auto body = host::ParseJson(http.Started().back().request.m_strBody, error);
        Json::Value answer;
        for (const Json::Value& event : (*body)["events"]) {
            answer["accepted"].append(event["id"]);
        }
        http.Answer(http.LastTask(), answer.toStyledString());
    }

    QTemporaryDir folder;
    std::unique_ptr<CReportService> service;
};

TEST_F(ReportServiceTest, AnEventCarriesWhoWhereAndWhen) {
    random.WillReturn({0x01234567, 0x89ABCDEF, 0, 0xFFFFFFFF});
    service->SetUser(501);
    Json::Value params;
    params["k"] = "v";

    EXPECT_TRUE(service->Report(Event("ClickAd", params)));

    const auto events = Waiting();
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0]["id"].asString(), "0123456789abcdef00000000ffffffff");
    EXPECT_EQ(events[0]["name"].asString(), "ClickAd");
    EXPECT_EQ(events[0]["code"].asInt(), 4);
    EXPECT_EQ(events[0]["params"], params);
    EXPECT_EQ(events[0]["broker"].asInt(), 9);
    EXPECT_EQ(events[0]["user"].asUInt64(), 501u);
    EXPECT_EQ(events[0]["device"].asString(), "device-1");
    EXPECT_EQ(events[0]["atMs"].asInt64(), CVirtualTime::kFirstServerTime);
    EXPECT_FALSE(events[0].isMember("durationMs"));
}

TEST_F(ReportServiceTest, AMeasurementCarriesItsDurationUnderTheEventsName) {
    const auto first = service->TimerStart("ExposeAd");
    time.Advance(3s);
    const auto second = service->TimerStart("ExposeAd");
    time.Advance(500ms);

    EXPECT_TRUE(service->TimerEnd(Event(*first)));
    time.Advance(7ms);
    EXPECT_TRUE(service->TimerEnd(Event(*second)));

    const auto events = Waiting();
    ASSERT_THAT(events, SizeIs(2));
    EXPECT_EQ(events[0]["name"].asString(), "ExposeAd");
    EXPECT_EQ(events[0]["durationMs"].asInt64(), 3500);
    EXPECT_EQ(events[1]["name"].asString(), "ExposeAd");
    EXPECT_EQ(events[1]["durationMs"].asInt64(), 507);
}

TEST_F(ReportServiceTest, AMeasurementThatIsNotOpenGivesFalseAndALine) {
    const auto timer = service->TimerStart("ExposeAd");
    EXPECT_TRUE(service->TimerEnd(Event(*timer)));

    EXPECT_FALSE(service->TimerEnd(Event(*timer)));
    EXPECT_FALSE(service->TimerEnd(Event("ExposeAd")));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("No measurement " + *timer + " is open"), Error("No measurement ExposeAd is open")));
    EXPECT_THAT(Waiting(), SizeIs(1));
}

TEST_F(ReportServiceTest, EventsOfAMomentGoTogether) {
    service->Report(Event("a"));
    time.Advance(150ms);
    service->Report(Event("b"));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(200));

    time.Advance(50ms);

    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_THAT(http.Started()[0].request.m_strBody, AllOf(HasSubstr(R"("name":"a")"), HasSubstr(R"("name":"b")")));
    AcceptLast();
    time.Settle();
    service->Report(Event("c"));
    time.Advance(200ms);
    EXPECT_THAT(http.Started(), SizeIs(2));
}

TEST_F(ReportServiceTest, WhatWasLeftAtTheEndIsSentAfterTheNextStartUnderTheSameIds) {
    domains.Set("api", "");
    for (int n = 0; n < 5; ++n) {
        EXPECT_TRUE(service->Report(Event("Event" + std::to_string(n))));
    }
    const auto before = Waiting();

    Restart();
    domains.Set("api", "https://ads.test");
    service->SendNow();

    ASSERT_THAT(http.Started(), SizeIs(1));
    std::string error;
    const auto body = host::ParseJson(http.Started()[0].request.m_strBody, error);
    ASSERT_EQ((*body)["events"].size(), 5u);
    for (int n = 0; n < 5; ++n) {
        EXPECT_EQ((*body)["events"][n], before[size_t(n)]);
    }
    AcceptLast();
    EXPECT_TRUE(service->Outbox().IsEmpty());
}

TEST_F(ReportServiceTest, AnEventThatTheServerTookBeforeTheAnswerWasLostIsSentAgainAndThenGone) {
    service->Report(Event("a"));
    time.Advance(200ms);
    const std::string sent = http.Started().back().request.m_strBody;

    Restart();
    service->SendNow();

    EXPECT_EQ(http.Started().back().request.m_strBody, sent);
    AcceptLast();
    EXPECT_TRUE(service->Outbox().IsEmpty());
}

TEST_F(ReportServiceTest, IdsAreApartAndOfThirtyTwoDigits) {
    std::set<std::string> ids;
    for (int n = 0; n < 500; ++n) {
        service->Report(Event("a"));
    }
    for (const Json::Value& event : Waiting()) {
        ids.insert(event["id"].asString());
    }
    EXPECT_THAT(ids, SizeIs(500));
    EXPECT_THAT(ids, Each(MatchesRegex("[0-9a-f]{32}")));
}

TEST_F(ReportServiceTest, WhatCantBeSentIsNotTaken) {
    EXPECT_FALSE(service->Report(Event("Endless", HUGE_VAL)));
    Json::Value huge;
    for (size_t i = 0; i < ReportOptions().maxEventBytes / 1000; ++i) {
        huge.append(std::string(1000, 'x'));
    }
    EXPECT_FALSE(service->Report(Event("Huge", huge)));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("The event Endless holds what can't be written as JSON"),
                                         Error(StartsWith("The event Huge is too large to be reported: "))));
    EXPECT_THAT(Waiting(), IsEmpty());
}

// Bodies of an ad server's largest answer, as the module puts them into an event.
struct LargestAnswer {
    const char* name;
    const char* unit;
    size_t bytesOfUnit;  // in the answer
};

void PrintTo(const LargestAnswer& row, std::ostream* stream) {
    *stream << row.name;
}

class LargestAnswerTest : public ReportServiceTest, public WithParamInterface<LargestAnswer> {};

TEST_P(LargestAnswerTest, IsReportedByItsBeginning) {
    Json::Value params;
    std::string text;
    for (size_t bytes = 0; bytes + GetParam().bytesOfUnit <= size_t(HttpOptions().maxBodyBytes);
         bytes += GetParam().bytesOfUnit) {
        text += GetParam().unit;
    }
    params["error_content"] = "body parse failed, body = " + text;

    EXPECT_TRUE(service->Report(Event("before")));
    EXPECT_TRUE(service->Report(Event("SingleAdvertisementPullDataResult", params)));
    EXPECT_TRUE(service->Report(Event("after")));
    time.Advance(200ms);
    AcceptLast();
    time.Settle();

    ASSERT_THAT(http.Started(), SizeIs(1));
    std::string error;
    const auto body = host::ParseJson(http.Started().back().request.m_strBody, error);
    ASSERT_TRUE(body) << error;
    ASSERT_EQ((*body)["events"].size(), 3u);
    const std::string sent = (*body)["events"][1]["params"]["error_content"].asString();
    EXPECT_LT(sent.size(), 16'384u + 40);
    const size_t kept = sent.rfind("... (");
    EXPECT_EQ(sent.substr(0, kept), ("body parse failed, body = " + text).substr(0, kept));
    EXPECT_EQ(sent.substr(kept), "... (" + std::to_string(text.size() + 26 - kept) + " bytes left out)");
    EXPECT_TRUE(service->Outbox().IsEmpty());
    EXPECT_EQ(service->Outbox().Dropped(), 0);
}

INSTANTIATE_TEST_SUITE_P(Bodies, LargestAnswerTest,
                         Values(LargestAnswer{"Chinese", "广告", 6}, LargestAnswer{"Quotes", "\"", 1},
                                LargestAnswer{"UnreadableBytes", "\uFFFD", 1}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ReportServiceTest, KeysThatAreNoTextAreRefusedAndNotLostLater) {
    Json::Value params;
    params["\xFF"] = 1;
    params["\xFE"] = 2;

    EXPECT_FALSE(service->Report(Event("ClickAd", params)));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("The event ClickAd holds what can't be written as JSON")));
    EXPECT_THAT(Waiting(), IsEmpty());
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(ReportServiceTest, AnEventWithoutANameIsRefusedWithALine) {
    EXPECT_FALSE(service->Report(Event("")));
    EXPECT_EQ(service->TimerStart(""), nullptr);
    EXPECT_FALSE(service->TimerEnd(Event("")));

    EXPECT_THAT(log.Lines(), AllOf(SizeIs(3), Each(Error("An event without a name is not reported"))));
    EXPECT_THAT(Waiting(), IsEmpty());
}

TEST_F(ReportServiceTest, AnOutboxThatCantBeWrittenGivesFalse) {
    CReportService lost(folder.filePath(QStringLiteral("none/reports.sqlite")),
                        {http, domains, timeAndRandom, poster, "device-1"});

    EXPECT_FALSE(lost.Report(Event("a")));
    const auto timer = lost.TimerStart("b");
    EXPECT_FALSE(lost.TimerEnd(Event(*timer)));

    EXPECT_THAT(log.Lines(), SizeIs(2));
    time.Advance(1h);
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(ReportServiceTest, ThreadsReportSideBySideAndOneBatchGoes) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this] {
            for (int n = 0; n < 20; ++n) {
                EXPECT_TRUE(service->Report(Event("a")));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    time.Advance(300ms);

    EXPECT_THAT(Waiting(), SizeIs(80));
    EXPECT_THAT(http.Started(), SizeIs(1));
}

}  // namespace
