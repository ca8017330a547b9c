#include "core/IZRChannelProxy.h"
#include "support/ScriptedHostTest.h"
#include "tracing/BusRecorder.h"
#include "tracing/ChannelRecorder.h"
#include "tracing/HttpRecorder.h"
#include "tracing/ReportsRecorder.h"
#include "tracing/StoreRecorder.h"
#include "tracing/TraceLog.h"

using namespace ::testing;

namespace {

class RecordersTest : public ScriptedHostTest {
protected:
    template <class What>
    std::vector<What> All() const {
        std::vector<What> all;
        for (const TraceEvent& traces : traceLog.Kept()) {
            if (const auto* what = std::get_if<What>(&traces.what)) {
                all.push_back(*what);
            }
        }
        return all;
    }

    CTraceLog traceLog;
    CChannelRecorder channelRecorder{channel, traceLog};
    CBusRecorder busRecorder{bus, traceLog, [](unsigned int) { return 3; }};
    CStoreRecorder storeRecorder{store, traceLog};
    QObject context;
};

TEST_F(RecordersTest, ACommandIsRecordedWithItsReply) {
    std::string got;
    const unsigned long session = channelRecorder.SendCommand(
        {20982, "ask"},
        [&](unsigned long, CSProtoError, const CSProtoData& data, const CSResponseExt*) { got = data.m_strData; },
        &context);
    channel.ReplyWith(session, kCSProtoOk, {5, "answer"});

    EXPECT_EQ(got, "answer");
    const auto traces = All<CommandTrace>();
    ASSERT_THAT(traces, SizeIs(2));
    EXPECT_EQ(traces[0].kind, CommandTrace::EnKind::Sent);
    EXPECT_EQ(traces[0].session, session);
    EXPECT_EQ(traces[0].body, "ask");
    EXPECT_EQ(traces[1].kind, CommandTrace::EnKind::Replied);
    EXPECT_EQ(traces[1].command, 5u);
    EXPECT_EQ(traces[1].asked, 20982u);
    EXPECT_GE(traces[1].durationMs, 0);
}

TEST_F(RecordersTest, BodiesAndTextsAreKeptUpTo64Kibibytes) {
    EXPECT_EQ(kTracedBytes, 64u << 10);
    const std::string large(kTracedBytes + 1, 'x');
    const auto ignore = [](unsigned long, CSProtoError, const CSProtoData&, const CSResponseExt*) {};
    channelRecorder.BindCallback(7, ignore, &context);
    const unsigned long session = channelRecorder.SendCommand({1, large}, ignore, &context);
    channel.ReplyWith(session, kCSProtoOk, {1, large});
    channel.Push(7, large);
    storeRecorder.SaveString(std::nullopt, "key", large);
    std::string value;
    storeRecorder.ReadString(std::nullopt, "key", value);
    CReportsRecorder reportsRecorder(reports, traceLog);
    ReportEvent event;
    event.name = "a";
    event.params["text"] = large;
    reportsRecorder.Report(event);
    store.Forget();
    channel.Forget();
    reports.Forget();

    const auto commands = All<CommandTrace>();
    ASSERT_THAT(commands, SizeIs(3));
    for (const CommandTrace& trace : commands) {
        EXPECT_EQ(trace.body.size(), kTracedBytes);
        EXPECT_EQ(trace.bodyBytes, large.size());
    }
    EXPECT_EQ(value, large);
    ASSERT_THAT(All<StoreTrace>(), SizeIs(2));
    EXPECT_EQ(All<StoreTrace>()[0].value.size(), kTracedBytes);
    EXPECT_EQ(All<StoreTrace>()[1].value.size(), kTracedBytes);
    EXPECT_EQ(All<ReportTrace>().at(0).params.size(), kTracedBytes);
}

TEST_F(RecordersTest, AFailureIsRecordedWithItsError) {
    const unsigned long session = channelRecorder.SendCommand(
        {1, ""}, [](unsigned long, CSProtoError, const CSProtoData&, const CSResponseExt*) {}, &context);
    channel.Fail(session, kCSProtoTimedOut);

    ASSERT_THAT(All<CommandTrace>(), SizeIs(2));
    EXPECT_EQ(All<CommandTrace>()[1].kind, CommandTrace::EnKind::Failed);
    EXPECT_EQ(All<CommandTrace>()[1].error, int(kCSProtoTimedOut));
}

TEST_F(RecordersTest, APushIsRecordedOnceHoweverManySubscribe) {
    int calls = 0;
    for (int i = 0; i < 2; ++i) {
        channelRecorder.BindCallback(
            7, [&](unsigned long, CSProtoError, const CSProtoData&, const CSResponseExt*) { ++calls; }, &context);
    }

    channel.Push(7, std::string("news"));

    EXPECT_EQ(calls, 2);
    ASSERT_THAT(All<CommandTrace>(), SizeIs(1));
    EXPECT_EQ(All<CommandTrace>()[0].kind, CommandTrace::EnKind::Pushed);
    EXPECT_EQ(All<CommandTrace>()[0].body, "news");
}

TEST_F(RecordersTest, AMessageIsRecordedAheadOfItsDelivery) {
    size_t seenAtDelivery = 0;
    bus.Bind(
        9, [&](unsigned int, unsigned long, auto) { seenAtDelivery = All<MessageTrace>().size(); }, &context);
    auto body = std::make_shared<core::CMessageBody>();
    body->set_p1(4);
    body->set_p2(5);

    busRecorder.Send("[Test]", 9, 2, body);

    EXPECT_EQ(seenAtDelivery, 1u);
    const MessageTrace traces = All<MessageTrace>()[0];
    EXPECT_EQ(traces.id, 9u);
    EXPECT_EQ(traces.wParam, 2u);
    EXPECT_EQ(traces.p1, 4u);
    EXPECT_EQ(traces.p2, 5u);
    EXPECT_EQ(traces.location, "[Test]");
    EXPECT_EQ(traces.receivers, 3);
}

TEST_F(RecordersTest, ReadsAndSavesAreRecordedWithTheirResult) {
    std::string value = "before";
    EXPECT_FALSE(storeRecorder.ReadString(7, "key", value));
    EXPECT_TRUE(storeRecorder.SaveString(7, "key", "text"));
    EXPECT_TRUE(storeRecorder.ReadString(7, "key", value));
    store.RefuseSaves(Failing::Always());
    EXPECT_FALSE(storeRecorder.SaveInt64("number", 12));
    store.Forget();

    EXPECT_EQ(value, "text");
    const auto traces = All<StoreTrace>();
    ASSERT_THAT(traces, SizeIs(4));
    EXPECT_FALSE(traces[0].succeeded);
    EXPECT_EQ(traces[0].value, "");
    EXPECT_TRUE(traces[1].isSave);
    EXPECT_EQ(traces[1].owner, std::optional<uint64_t>(7));
    EXPECT_EQ(traces[2].value, "text");
    EXPECT_FALSE(traces[3].succeeded);
    EXPECT_EQ(traces[3].value, "12");
    EXPECT_FALSE(traces[3].owner);
}

TEST_F(RecordersTest, TheYoungestAreKeptInOrder) {
    for (size_t i = 0; i < CTraceLog::kKept + 5; ++i) {
        traceLog.Record(UrlTrace{});
    }

    const auto kept = traceLog.Kept();
    ASSERT_EQ(kept.size(), CTraceLog::kKept);
    EXPECT_EQ(kept.front().number, 6u);
    EXPECT_EQ(kept.back().number, CTraceLog::kKept + 5);
}

TEST_F(RecordersTest, ARequestIsRecordedWithItsAnswer) {
    CHttpRecorder recording(http, traceLog);
    HttpReqInfo request;
    request.m_enMethod = kHttpPost;
    request.m_strUrl = "https://ads.test/ad/search?a=1";
    request.m_strBody = "ask";
    request.m_mapHeader["x-id"] = {"7", "8"};
    request.m_mapQuery["b c"] = {"d&e"};
    std::string got;

    const unsigned long task = recording.Start(
        request, [&](unsigned long, const HttpRspInfo& response) { got = response.m_strBody; }, &context,
        kHttpWorkPoolDefault, nullptr, nullptr);
    http.Answer(task, "answer", 404);

    EXPECT_EQ(got, "answer");
    EXPECT_EQ(http.Started()[0].request.m_strBody, "ask");
    const auto traces = All<HttpTrace>();
    ASSERT_THAT(traces, SizeIs(2));
    EXPECT_EQ(traces[0].kind, HttpTrace::EnKind::Sent);
    EXPECT_EQ(traces[0].task, task);
    EXPECT_TRUE(traces[0].isPost);
    EXPECT_EQ(traces[0].url, "https://ads.test/ad/search?a=1&b%20c=d%26e");
    EXPECT_EQ(traces[0].headers.at("x-id"), "7, 8");
    EXPECT_EQ(traces[0].body, "ask");
    EXPECT_EQ(traces[1].kind, HttpTrace::EnKind::Answered);
    EXPECT_EQ(traces[1].task, task);
    EXPECT_EQ(traces[1].url, traces[0].url);
    EXPECT_EQ(traces[1].status, 404);
    EXPECT_EQ(traces[1].body, "answer");
    EXPECT_EQ(traces[1].bodyBytes, 6u);
    EXPECT_EQ(traces[1].requestBody, "ask");
    EXPECT_EQ(traces[1].requestBytes, 3u);
    EXPECT_GE(traces[1].durationMs, 0);
}

TEST_F(RecordersTest, ARequestThatFailsIsRecordedWithItsResult) {
    CHttpRecorder recording(http, traceLog);
    const unsigned long task = recording.Start({}, nullptr, &context, kHttpWorkPoolDefault, nullptr, nullptr);
    http.Fail(task, kHttpTimedOut);

    ASSERT_THAT(All<HttpTrace>(), SizeIs(2));
    EXPECT_EQ(All<HttpTrace>()[1].kind, HttpTrace::EnKind::Failed);
    EXPECT_EQ(All<HttpTrace>()[1].result, int(kHttpTimedOut));
}

TEST_F(RecordersTest, OfALongBodyTheFirstPartIsKept) {
    CHttpRecorder recording(http, traceLog);
    size_t got = 0;
    const unsigned long task = recording.Start(
        {}, [&](unsigned long, const HttpRspInfo& response) { got = response.m_strBody.size(); }, &context,
        kHttpWorkPoolDefault, nullptr, nullptr);
    http.Answer(task, std::string(HttpTrace::kBodyKept + 1, 'x'));

    EXPECT_EQ(got, HttpTrace::kBodyKept + 1);
    EXPECT_EQ(All<HttpTrace>()[1].body.size(), HttpTrace::kBodyKept);
    EXPECT_EQ(All<HttpTrace>()[1].bodyBytes, HttpTrace::kBodyKept + 1);
}

TEST_F(RecordersTest, AReportIsRecordedWithWhetherItWasTaken) {
    CReportsRecorder recording(reports, traceLog);
    reports.Refuse(Failing::Nth(2));
    Json::Value params;
    params["k"] = "v";

    EXPECT_TRUE(recording.Report({"ClickAd", 4, params, 7}));
    EXPECT_FALSE(recording.Report({"ClickAd", 4, params, 7}));

    EXPECT_THAT(reports.Events(), SizeIs(2));
    const auto traces = All<ReportTrace>();
    ASSERT_THAT(traces, SizeIs(2));
    EXPECT_EQ(traces[0].kind, ReportTrace::EnKind::Reported);
    EXPECT_EQ(traces[0].event, "ClickAd");
    EXPECT_EQ(traces[0].code, 4);
    EXPECT_EQ(traces[0].broker, 7);
    EXPECT_EQ(traces[0].params, R"({"k":"v"})");
    EXPECT_TRUE(traces[0].taken);
    EXPECT_FALSE(traces[1].taken);
}

TEST_F(RecordersTest, AMeasurementIsRecordedUnderItsEventWithItsOwnText) {
    CReportsRecorder recording(reports, traceLog);
    EXPECT_EQ(*recording.TimerStart("ExposeAd"), "ExposeAd");
    EXPECT_TRUE(recording.TimerEnd({"ExposeAd", 1, Json::Value(), 0}));
    EXPECT_TRUE(recording.TimerEnd({"ExposeAd#12", 1, Json::Value(), 0}));
    reports.GiveNoTimers();
    EXPECT_EQ(recording.TimerStart("Other"), nullptr);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd", "ExposeAd#12"));
    auto traces = All<ReportTrace>();
    ASSERT_THAT(traces, SizeIs(4));
    EXPECT_EQ(traces[1].timer, "ExposeAd");
    EXPECT_GE(traces[1].durationMs, 0);
    EXPECT_EQ(traces[2].durationMs, -1);  // nobody started it
    traces.erase(traces.begin() + 1);
    EXPECT_EQ(traces[0].kind, ReportTrace::EnKind::TimerStarted);
    EXPECT_EQ(traces[0].timer, "ExposeAd");
    EXPECT_TRUE(traces[0].taken);
    EXPECT_EQ(traces[1].kind, ReportTrace::EnKind::TimerEnded);
    EXPECT_EQ(traces[1].event, "ExposeAd");
    EXPECT_EQ(traces[1].timer, "ExposeAd#12");
    EXPECT_FALSE(traces[2].taken);
}

}  // namespace
