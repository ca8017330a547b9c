// Batches that the server refuses as a whole, and an outbox that fails under the sender.
#include <set>

#include "../store/StoreFolderTest.h"
#include "framework/JsonText.h"
#include "report/ReportSender.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class ReportRefusalTest : public StoreFolderTest {
protected:
    ~ReportRefusalTest() override {
        http.Forget();
        log.Forget();
    }

    void Fill(int first, int last) {
        for (int n = first; n <= last; ++n) {
            const std::string id = "id" + std::to_string(n);
            ASSERT_TRUE(outbox.Add(id, R"({"id":")" + id + "\"}"));
        }
    }

    std::vector<std::string> LastIds() {
        std::string error;
        const auto body = host::ParseJson(http.Started().back().request.m_strBody, error);
        std::vector<std::string> ids;
        for (const Json::Value& event : (*body)["events"]) {
            ids.push_back(event["id"].asString());
        }
        return ids;
    }

    void Accept(const std::vector<std::string>& ids) {
        Json::Value answer;
        answer["accepted"] = Json::arrayValue;
        for (const std::string& id : ids) {
            answer["accepted"].append(id);
            accepted.push_back(id);
        }
        http.Answer(http.LastTask(), answer.toStyledString());
    }

    /// A server that refuses each batch that contains one of `spoilt`, until nothing is sent for `quiet`.
    void Serve(int status, const std::set<std::string>& spoilt, std::chrono::milliseconds quiet) {
        while (http.OutstandingCount() == 1) {
            const auto ids = LastIds();
            sizes.push_back(int(ids.size()));
            if (std::any_of(ids.begin(), ids.end(), [&](const std::string& id) { return spoilt.count(id) == 1; })) {
                http.Answer(http.LastTask(), "no", status);
            } else {
                Accept(ids);
            }
            time.Advance(quiet);
        }
    }

    std::vector<std::string> Left() {
        std::vector<std::string> ids;
        for (const OutboxEvent& event : outbox.Read(0, 1000, 1 << 30)) {
            ids.push_back(event.id);
        }
        return ids;
    }

    COutbox outbox{Path()};
    CReportSender sender{outbox, http, domains, random};
    std::vector<std::string> accepted;
    std::vector<int> sizes;
};

class ReportRefusalStatusTest : public ReportRefusalTest, public WithParamInterface<int> {};

TEST_P(ReportRefusalStatusTest, ABatchThatIsRefusedIsHalvedUntilTheOneStandsAlone) {
    Fill(1, 250);
    sender.Wake();

    Serve(GetParam(), {"id57"}, 1s);

    EXPECT_THAT(Left(), ElementsAre("id57"));
    EXPECT_THAT(accepted, SizeIs(249));
    EXPECT_TRUE(std::is_sorted(accepted.begin(), accepted.end(), [](const auto& left, const auto& right) {
        return std::stoi(left.substr(2)) < std::stoi(right.substr(2));
    }));
    // 57 alone is the eleventh, and behind it batches are whole ones
    EXPECT_THAT(sizes, ElementsAre(100, 50, 100, 50, 25, 12, 6, 12, 6, 3, 1, 100, 93));

    // it has its turn again in the end
    time.Advance(60s);
    EXPECT_THAT(LastIds(), ElementsAre("id57"));
    Accept({"id57"});
    EXPECT_TRUE(outbox.IsEmpty());
}

TEST_P(ReportRefusalStatusTest, SeveralThatAreRefusedHoldUpNoneOfTheOthers) {
    Fill(1, 205);
    sender.Wake();

    Serve(GetParam(), {"id1", "id2", "id100", "id101", "id205"}, 5s);

    EXPECT_THAT(Left(), ElementsAre("id1", "id2", "id100", "id101", "id205"));
    EXPECT_THAT(accepted, SizeIs(200));
}

INSTANTIATE_TEST_SUITE_P(Statuses, ReportRefusalStatusTest, Values(400, 413, 422),
                         [](const auto& status) { return std::to_string(status.param); });

TEST_F(ReportRefusalTest, AServerThatRefusesEachEventIsSpared) {
    random.WillReturn(std::vector<uint32_t>(1000, 0xFFFFFFFF));
    Fill(1, 250);
    sender.Wake();
    for (int rounds = 0; rounds < 3600; ++rounds) {
        if (http.OutstandingCount() == 1) {
            http.Answer(http.LastTask(), "no", 400);
        }
        time.Advance(1s);
    }

    // seven for each wait, which are a minute soon
    EXPECT_LT(http.Started().size(), 7u * 75u);
    EXPECT_THAT(Left(), SizeIs(250));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Reports wait for the server: result 0, status 400")));
}

TEST_F(ReportRefusalTest, WhatIsNoMatterOfTheBatchDoesNotHalveIt) {
    Fill(1, 100);
    sender.Wake();
    for (const int status : {500, 503, 401, 403, 404}) {
        http.Answer(http.LastTask(), "no", status);
        time.Advance(2min);
        EXPECT_THAT(LastIds(), SizeIs(100)) << status;
    }
    // nor a status of a failed exchange
    http.Fail(http.LastTask(), kHttpCut, 413);
    time.Advance(2min);
    EXPECT_THAT(LastIds(), SizeIs(100));
}

TEST_F(ReportRefusalTest, EventsThatCantBeTakenOutAreSentAgainAfterAWait) {
    Fill(1, 3);
    sender.Wake();
    {
        const CFileSizeLimit limit(rlim_t(QFileInfo(Path() + QStringLiteral("-wal")).size()));
        Accept({"id1", "id2", "id3"});
    }
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("Removing from the outbox")),
                                         Error("Reports wait for the server: the outbox")));
    EXPECT_EQ(http.OutstandingCount(), 0);
    time.Advance(200ms);
    EXPECT_EQ(http.OutstandingCount(), 0);

    time.Advance(300ms);

    EXPECT_THAT(LastIds(), ElementsAre("id1", "id2", "id3"));
    Accept(LastIds());
    EXPECT_TRUE(outbox.IsEmpty());
    EXPECT_THAT(log.Lines().back(), Info("Reports reach the server again"));
}

TEST_F(ReportRefusalTest, AnOutboxThatAnotherClientHasIsTriedAgain) {
    const QString path = folder.filePath(QStringLiteral("shared.sqlite"));
    auto first = std::make_unique<COutbox>(path);
    ASSERT_TRUE(first->Add("id1", R"({"id":"id1"})"));
    COutbox second(path);
    CReportSender waiting(second, http, domains, random);

    waiting.SendNow();
    time.Advance(5min);
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Reports wait for the server: the outbox can't be read")));

    first.reset();
    time.Advance(1min);

    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_THAT(LastIds(), ElementsAre("id1"));
}

}  // namespace
