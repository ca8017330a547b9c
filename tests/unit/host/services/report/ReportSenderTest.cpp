#include "report/ReportSender.h"

#include <QTemporaryDir>

#include "framework/JsonText.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class ReportSenderTest : public ScriptedHostTest {
protected:
    ~ReportSenderTest() override {
        http.Forget();
        log.Forget();
    }

    void Fill(int first, int last, size_t filling = 0) {
        for (int n = first; n <= last; ++n) {
            const std::string id = "id" + std::to_string(n);
            ASSERT_TRUE(outbox.Add(id, R"({"id":")" + id + R"(","f":")" + std::string(filling, 'x') + "\"}"));
        }
    }

    std::vector<std::string> IdsOf(const StartedRequest& request) {
        std::string error;
        const auto body = host::ParseJson(request.request.m_strBody, error);
        EXPECT_TRUE(body) << error;
        std::vector<std::string> ids;
        for (const Json::Value& event : (*body)["events"]) {
            ids.push_back(event["id"].asString());
        }
        return ids;
    }

    std::vector<std::string> LastIds() { return IdsOf(http.Started().back()); }

    static std::string Accepting(const std::vector<std::string>& ids) {
        Json::Value answer;
        answer["accepted"] = Json::arrayValue;
        for (const std::string& id : ids) {
            answer["accepted"].append(id);
        }
        return answer.toStyledString();
    }

    void AcceptAll() { http.Answer(http.LastTask(), Accepting(LastIds())); }

    int Batches() { return int(http.Started().size()); }

    /// The next wait is the longest that it can be, which is the current one.
    void WithoutJitter() { random.WillReturn(std::vector<uint32_t>(100, 0xFFFFFFFF)); }

    QTemporaryDir folder;
    COutbox outbox{folder.filePath(QStringLiteral("reports.sqlite"))};
    CReportSender sender{outbox, http, domains, random};
};

TEST_F(ReportSenderTest, ABatchGoesToTheSinkOfTheServerAsJson) {
    Fill(1, 2);

    sender.Wake();

    ASSERT_EQ(Batches(), 1);
    const HttpReqInfo& request = http.Started()[0].request;
    EXPECT_EQ(request.m_strUrl, "https://ads.test/report/events");
    EXPECT_EQ(request.m_enMethod, kHttpPost);
    EXPECT_EQ(request.m_strBody, R"({"events":[{"id":"id1","f":""},{"id":"id2","f":""}]})");
    EXPECT_EQ(request.m_nTimeoutSeconds, 10);
}

TEST_F(ReportSenderTest, WhatTheServerHasIsTakenOutAndTheRestFollows) {
    Fill(1, 250);
    sender.Wake();
    EXPECT_THAT(LastIds(), SizeIs(100));
    AcceptAll();
    time.Settle();
    EXPECT_EQ(LastIds().front(), "id101");
    AcceptAll();
    time.Settle();
    EXPECT_THAT(LastIds(), SizeIs(50));
    EXPECT_FALSE(outbox.IsEmpty());
    AcceptAll();
    time.Advance(2h);

    EXPECT_TRUE(outbox.IsEmpty());
    EXPECT_EQ(Batches(), 3);
}

TEST_F(ReportSenderTest, ABatchStaysWithinItsBytes) {
    Fill(1, 10, 60'000);
    sender.Wake();

    EXPECT_THAT(LastIds(), SizeIs(4));
    EXPECT_LE(http.Started().back().request.m_strBody.size(), 256u << 10);
}

TEST_F(ReportSenderTest, ALargeEventHasASecondMoreForEach256KiB) {
    Fill(1, 1, 24 << 20);

    sender.Wake();

    ASSERT_EQ(Batches(), 1);
    EXPECT_EQ(http.Started()[0].request.m_nTimeoutSeconds, 10 + 96);
}

TEST_F(ReportSenderTest, OneBatchIsUnderWayAtATime) {
    Fill(1, 1);
    sender.Wake();
    Fill(2, 2);

    sender.Wake();
    sender.SendNow();
    time.Advance(1h);
    EXPECT_EQ(Batches(), 1);

    AcceptAll();
    time.Settle();
    EXPECT_THAT(LastIds(), ElementsAre("id2"));
}

TEST_F(ReportSenderTest, WithoutAServerNothingIsSentAndItsComingIsEnough) {
    domains.Set("api", "");
    Fill(1, 1);
    sender.Wake();
    time.Advance(1h);
    EXPECT_EQ(Batches(), 0);

    domains.Set("api", "https://found.test");
    sender.SendNow();

    ASSERT_EQ(Batches(), 1);
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://found.test/report/events");
}

TEST_F(ReportSenderTest, FailuresAreTriedAgainAtGrowingDistances) {
    WithoutJitter();
    Fill(1, 1);
    sender.Wake();
    std::vector<int64_t> waits;
    for (int round = 0; round < 10; ++round) {
        http.Fail(http.LastTask(), kHttpNoConnection);
        const int before = Batches();
        const int64_t began = time.Now();
        while (Batches() == before) {
            time.Advance(1ms);
        }
        waits.push_back(time.Now() - began);
    }
    EXPECT_THAT(waits, ElementsAre(499, 999, 1999, 3999, 7999, 15999, 31999, 59999, 59999, 59999));
}

TEST_F(ReportSenderTest, JitterHalvesAWaitAtMost) {
    random.WillReturn({0});
    Fill(1, 1);
    sender.Wake();
    http.Fail(http.LastTask(), kHttpTimedOut);

    time.Advance(249ms);
    EXPECT_EQ(Batches(), 1);
    time.Advance(1ms);
    EXPECT_EQ(Batches(), 2);
}

TEST_F(ReportSenderTest, SuccessBeginsTheWaitsAnew) {
    WithoutJitter();
    Fill(1, 1);
    sender.Wake();
    for (int round = 0; round < 5; ++round) {
        http.Fail(http.LastTask(), kHttpCut);
        time.Advance(1min);
    }
    AcceptAll();
    time.Settle();
    Fill(2, 2);
    sender.Wake();
    http.Fail(http.LastTask(), kHttpCut);
    const int before = Batches();

    time.Advance(500ms);

    EXPECT_EQ(Batches(), before + 1);
}

TEST_F(ReportSenderTest, NothingEndsAWaitButTheServersReturn) {
    Fill(1, 1);
    sender.Wake();
    http.Fail(http.LastTask(), kHttpNoConnection);

    sender.Wake();
    time.Settle();
    EXPECT_EQ(Batches(), 1);

    sender.SendNow();
    EXPECT_EQ(Batches(), 2);
    AcceptAll();
    time.Advance(1h);
    EXPECT_EQ(Batches(), 2);
}

TEST_F(ReportSenderTest, ASpellWithoutTheServerIsOneLineAndItsEndAnother) {
    Fill(1, 1);
    sender.Wake();
    for (int round = 0; round < 4; ++round) {
        http.Answer(http.LastTask(), "oh", 500);
        time.Advance(2min);
    }
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Reports wait for the server: result 0, status 500")));

    AcceptAll();
    EXPECT_THAT(log.Lines().back(), Info("Reports reach the server again"));
}

TEST_F(ReportSenderTest, ARequestThatIsNotStartedIsTriedAgain) {
    http.RefuseStarts(Failing::Nth(1));
    Fill(1, 1);
    sender.Wake();
    EXPECT_EQ(Batches(), 1);

    time.Advance(500ms);

    EXPECT_EQ(Batches(), 2);
}

TEST_F(ReportSenderTest, TheSameEventsKeepTheirIdsWhenTheyAreSentAgain) {
    Fill(1, 3);
    sender.Wake();
    const std::string body = http.Started().back().request.m_strBody;
    http.Fail(http.LastTask(), kHttpCut);
    time.Advance(500ms);

    EXPECT_EQ(http.Started().back().request.m_strBody, body);
}

struct BadAnswer {
    const char* name;
    const char* body;
};

void PrintTo(const BadAnswer& row, std::ostream* stream) {
    *stream << row.name;
}

class BadAnswerTest : public ReportSenderTest, public WithParamInterface<BadAnswer> {};

TEST_P(BadAnswerTest, TakesNothingOut) {
    Fill(1, 2);
    sender.Wake();

    http.Answer(http.LastTask(), GetParam().body);

    EXPECT_THAT(outbox.Read(0, 10, 1 << 20), SizeIs(2));
    time.Advance(500ms);
    time.Advance(60s);
    EXPECT_GE(Batches(), 2);
}

INSTANTIATE_TEST_SUITE_P(Answers, BadAnswerTest,
                         Values(BadAnswer{"Empty", ""}, BadAnswer{"Html", "<html>"}, BadAnswer{"List", R"(["id1"])"},
                                BadAnswer{"NoList", R"({"accepted":"id1"})"},
                                BadAnswer{"OtherKey", R"({"ok":["id1"]})"},
                                BadAnswer{"Numbers", R"({"accepted":[1,2,null,{}]})"},
                                BadAnswer{"Strangers", R"({"accepted":["id3","id"]})"},
                                BadAnswer{"Cut", R"({"accepted":["id1")"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ReportSenderTest, AnEventTheServerNeverTakesHoldsUpNoOther) {
    Fill(1, 205);
    sender.Wake();
    // the server has something against the first hundred
    http.Answer(http.LastTask(), Accepting({}));
    time.Advance(500ms);
    EXPECT_EQ(LastIds().front(), "id101");
    AcceptAll();
    time.Settle();
    EXPECT_EQ(LastIds().front(), "id201");
    AcceptAll();
    time.Settle();
    const int before = Batches();

    // later ones pass it, and it has its turn again in the end
    time.Advance(30s);
    EXPECT_EQ(Batches(), before);
    Fill(206, 206);
    sender.Wake();
    EXPECT_THAT(LastIds(), ElementsAre("id206"));
    AcceptAll();
    time.Advance(30s);
    EXPECT_EQ(LastIds().front(), "id1");
    AcceptAll();
    time.Settle();
    EXPECT_TRUE(outbox.IsEmpty());
}

TEST_F(ReportSenderTest, ASingleOneThatIsNotTakenIsNotSentInALoop) {
    Fill(1, 3);
    sender.Wake();
    http.Answer(http.LastTask(), Accepting({"id1", "id3"}));
    time.Advance(59s);
    EXPECT_EQ(Batches(), 1);

    time.Advance(1s);

    EXPECT_EQ(Batches(), 2);
    EXPECT_THAT(LastIds(), ElementsAre("id2"));
}

TEST_F(ReportSenderTest, NothingIsDoneAfterItsEnd) {
    Fill(1, 1);
    auto other = std::make_unique<CReportSender>(outbox, http, domains, random);
    other->Wake();
    const unsigned long task = http.LastTask();

    other.reset();
    http.Answer(task, Accepting({"id1"}));
    time.Advance(1h);

    EXPECT_FALSE(outbox.IsEmpty());
    EXPECT_EQ(Batches(), 1);
}

}  // namespace
