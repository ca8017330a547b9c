#include "core/IZRChannelProxy.h"
#include "observe/Observation.h"
#include "observe/ObservedBus.h"
#include "observe/ObservedChannel.h"
#include "observe/ObservedHttp.h"
#include "observe/ObservedReports.h"
#include "observe/ObservedStore.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class ObservedTest : public ScriptedHostTest {
protected:
    template <class What>
    std::vector<What> All() const {
        std::vector<What> all;
        for (const Seen& seen : observation.Kept()) {
            if (const auto* what = std::get_if<What>(&seen.what)) {
                all.push_back(*what);
            }
        }
        return all;
    }

    CObservation observation;
    CObservedChannel observedChannel{channel, observation};
    CObservedBus observedBus{bus, observation, [](unsigned int) { return 3; }};
    CObservedStore observedStore{store, observation};
    QObject context;
};

TEST_F(ObservedTest, ACommandIsSeenWithItsReply) {
    std::string got;
    const unsigned long session = observedChannel.SendCommand(
        {20982, "ask"},
        [&](unsigned long, CSProtoError, const CSProtoData& data, const CSResponseExt*) { got = data.m_strData; },
        &context);
    channel.ReplyWith(session, kCSProtoOk, {5, "answer"});

    EXPECT_EQ(got, "answer");
    const auto seen = All<CommandSeen>();
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[0].kind, CommandSeen::EnKind::Sent);
    EXPECT_EQ(seen[0].session, session);
    EXPECT_EQ(seen[0].body, "ask");
    EXPECT_EQ(seen[1].kind, CommandSeen::EnKind::Replied);
    EXPECT_EQ(seen[1].command, 5u);
    EXPECT_EQ(seen[1].asked, 20982u);
    EXPECT_GE(seen[1].durationMs, 0);
}

TEST_F(ObservedTest, AFailureIsSeenWithItsError) {
    const unsigned long session = observedChannel.SendCommand(
        {1, ""}, [](unsigned long, CSProtoError, const CSProtoData&, const CSResponseExt*) {}, &context);
    channel.Fail(session, kCSProtoTimedOut);

    ASSERT_THAT(All<CommandSeen>(), SizeIs(2));
    EXPECT_EQ(All<CommandSeen>()[1].kind, CommandSeen::EnKind::Failed);
    EXPECT_EQ(All<CommandSeen>()[1].error, int(kCSProtoTimedOut));
}

TEST_F(ObservedTest, APushIsSeenOnceHoweverManySubscribe) {
    int calls = 0;
    for (int i = 0; i < 2; ++i) {
        observedChannel.BindCallback(
            7, [&](unsigned long, CSProtoError, const CSProtoData&, const CSResponseExt*) { ++calls; }, &context);
    }

    channel.Push(7, std::string("news"));

    EXPECT_EQ(calls, 2);
    ASSERT_THAT(All<CommandSeen>(), SizeIs(1));
    EXPECT_EQ(All<CommandSeen>()[0].kind, CommandSeen::EnKind::Pushed);
    EXPECT_EQ(All<CommandSeen>()[0].body, "news");
}

TEST_F(ObservedTest, AMessageIsSeenAheadOfItsDelivery) {
    size_t seenAtDelivery = 0;
    bus.Bind(
        9, [&](unsigned int, unsigned long, auto) { seenAtDelivery = All<MessageSeen>().size(); }, &context);
    auto body = std::make_shared<core::CMessageBody>();
    body->set_p1(4);
    body->set_p2(5);

    observedBus.Send("[Test]", 9, 2, body);

    EXPECT_EQ(seenAtDelivery, 1u);
    const MessageSeen seen = All<MessageSeen>()[0];
    EXPECT_EQ(seen.id, 9u);
    EXPECT_EQ(seen.wParam, 2u);
    EXPECT_EQ(seen.p1, 4u);
    EXPECT_EQ(seen.p2, 5u);
    EXPECT_EQ(seen.location, "[Test]");
    EXPECT_EQ(seen.receivers, 3);
}

TEST_F(ObservedTest, ReadsAndSavesAreSeenWithTheirResult) {
    std::string value = "before";
    EXPECT_FALSE(observedStore.ReadString(7, "key", value));
    EXPECT_TRUE(observedStore.SaveString(7, "key", "text"));
    EXPECT_TRUE(observedStore.ReadString(7, "key", value));
    store.RefuseSaves(Failing::Always());
    EXPECT_FALSE(observedStore.SaveInt64("number", 12));
    store.Forget();

    EXPECT_EQ(value, "text");
    const auto seen = All<StoreSeen>();
    ASSERT_THAT(seen, SizeIs(4));
    EXPECT_FALSE(seen[0].succeeded);
    EXPECT_EQ(seen[0].value, "");
    EXPECT_TRUE(seen[1].isSave);
    EXPECT_EQ(seen[1].owner, std::optional<uint64_t>(7));
    EXPECT_EQ(seen[2].value, "text");
    EXPECT_FALSE(seen[3].succeeded);
    EXPECT_EQ(seen[3].value, "12");
    EXPECT_FALSE(seen[3].owner);
}

TEST_F(ObservedTest, TheYoungestAreKeptInOrder) {
    for (size_t i = 0; i < CObservation::kKept + 5; ++i) {
        observation.Report(UrlSeen{});
    }

    const auto kept = observation.Kept();
    ASSERT_EQ(kept.size(), CObservation::kKept);
    EXPECT_EQ(kept.front().number, 6u);
    EXPECT_EQ(kept.back().number, CObservation::kKept + 5);
}

TEST_F(ObservedTest, ARequestIsSeenWithItsAnswer) {
    CObservedHttp observed(http, observation);
    HttpReqInfo request;
    request.m_enMethod = kHttpPost;
    request.m_strUrl = "https://ads.test/ad/search?a=1";
    request.m_strBody = "ask";
    request.m_mapHeader["x-id"] = {"7", "8"};
    request.m_mapQuery["b c"] = {"d&e"};
    std::string got;

    const unsigned long task = observed.Start(
        request, [&](unsigned long, const HttpRspInfo& response) { got = response.m_strBody; }, &context,
        kHttpWorkPoolDefault, nullptr, nullptr);
    http.Answer(task, "answer", 404);

    EXPECT_EQ(got, "answer");
    EXPECT_EQ(http.Started()[0].request.m_strBody, "ask");
    const auto seen = All<HttpSeen>();
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[0].kind, HttpSeen::EnKind::Sent);
    EXPECT_EQ(seen[0].task, task);
    EXPECT_TRUE(seen[0].isPost);
    EXPECT_EQ(seen[0].url, "https://ads.test/ad/search?a=1&b%20c=d%26e");
    EXPECT_EQ(seen[0].headers.at("x-id"), "7, 8");
    EXPECT_EQ(seen[0].body, "ask");
    EXPECT_EQ(seen[1].kind, HttpSeen::EnKind::Answered);
    EXPECT_EQ(seen[1].task, task);
    EXPECT_EQ(seen[1].url, seen[0].url);
    EXPECT_EQ(seen[1].status, 404);
    EXPECT_EQ(seen[1].body, "answer");
    EXPECT_EQ(seen[1].bodyBytes, 6u);
    EXPECT_EQ(seen[1].requestBody, "ask");
    EXPECT_EQ(seen[1].requestBytes, 3u);
    EXPECT_GE(seen[1].durationMs, 0);
}

TEST_F(ObservedTest, ARequestThatFailsIsSeenWithItsResult) {
    CObservedHttp observed(http, observation);
    const unsigned long task = observed.Start({}, nullptr, &context, kHttpWorkPoolDefault, nullptr, nullptr);
    http.Fail(task, kHttpTimedOut);

    ASSERT_THAT(All<HttpSeen>(), SizeIs(2));
    EXPECT_EQ(All<HttpSeen>()[1].kind, HttpSeen::EnKind::Failed);
    EXPECT_EQ(All<HttpSeen>()[1].result, int(kHttpTimedOut));
}

TEST_F(ObservedTest, OfALongBodyTheFirstPartIsKept) {
    CObservedHttp observed(http, observation);
    size_t got = 0;
    const unsigned long task = observed.Start(
        {}, [&](unsigned long, const HttpRspInfo& response) { got = response.m_strBody.size(); }, &context,
        kHttpWorkPoolDefault, nullptr, nullptr);
    http.Answer(task, std::string(HttpSeen::kBodyKept + 1, 'x'));

    EXPECT_EQ(got, HttpSeen::kBodyKept + 1);
    EXPECT_EQ(All<HttpSeen>()[1].body.size(), HttpSeen::kBodyKept);
    EXPECT_EQ(All<HttpSeen>()[1].bodyBytes, HttpSeen::kBodyKept + 1);
}

TEST_F(ObservedTest, AReportIsSeenWithWhetherItWasTaken) {
    CObservedReports observed(reports, observation);
    reports.Refuse(Failing::Nth(2));
    Json::Value params;
    params["k"] = "v";

    EXPECT_TRUE(observed.Report({"ClickAd", 4, params, 7}));
    EXPECT_FALSE(observed.Report({"ClickAd", 4, params, 7}));

    EXPECT_THAT(reports.Events(), SizeIs(2));
    const auto seen = All<ReportSeen>();
    ASSERT_THAT(seen, SizeIs(2));
    EXPECT_EQ(seen[0].kind, ReportSeen::EnKind::Reported);
    EXPECT_EQ(seen[0].event, "ClickAd");
    EXPECT_EQ(seen[0].code, 4);
    EXPECT_EQ(seen[0].broker, 7);
    EXPECT_EQ(seen[0].params, R"({"k":"v"})");
    EXPECT_TRUE(seen[0].taken);
    EXPECT_FALSE(seen[1].taken);
}

TEST_F(ObservedTest, AMeasurementIsSeenUnderItsEventWithItsOwnText) {
    CObservedReports observed(reports, observation);
    EXPECT_EQ(*observed.TimerStart("ExposeAd"), "ExposeAd");
    EXPECT_TRUE(observed.TimerEnd({"ExposeAd", 1, Json::Value(), 0}));
    EXPECT_TRUE(observed.TimerEnd({"ExposeAd#12", 1, Json::Value(), 0}));
    reports.GiveNoTimers();
    EXPECT_EQ(observed.TimerStart("Other"), nullptr);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd", "ExposeAd#12"));
    auto seen = All<ReportSeen>();
    ASSERT_THAT(seen, SizeIs(4));
    EXPECT_EQ(seen[1].timer, "ExposeAd");
    EXPECT_GE(seen[1].durationMs, 0);
    EXPECT_EQ(seen[2].durationMs, -1);  // nobody started it
    seen.erase(seen.begin() + 1);
    EXPECT_EQ(seen[0].kind, ReportSeen::EnKind::TimerStarted);
    EXPECT_EQ(seen[0].timer, "ExposeAd");
    EXPECT_TRUE(seen[0].taken);
    EXPECT_EQ(seen[1].kind, ReportSeen::EnKind::TimerEnded);
    EXPECT_EQ(seen[1].event, "ExposeAd");
    EXPECT_EQ(seen[1].timer, "ExposeAd#12");
    EXPECT_FALSE(seen[2].taken);
}

}  // namespace
