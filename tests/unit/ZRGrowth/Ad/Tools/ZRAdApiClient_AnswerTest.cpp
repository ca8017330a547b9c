// Answers to requests for ads.
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <random>

#include "Ad/AdApiClientTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdAnswerTest : public AdApiClientTest {
protected:
    /// The answer to a new search, 120 ms later.
    void ServerAnswers(const std::string& body, int status = 200) {
        const unsigned long task = Search();
        log.Forget();
        time.Advance(120ms);
        http.Answer(task, body, status);
        time.Settle();
    }

    QList<CZRAdResponseModel*> Kept() { return client->findChildren<CZRAdResponseModel*>(); }
};

TEST_F(AdAnswerTest, AGoodAnswerIsHandedOverWithTheExchangesLength) {
    ServerAnswers(Text(PopupAnswer()));

    EXPECT_THAT(told, ElementsAre("succeeded after 120"));
    ASSERT_THAT(lists, SizeIs(1));
    EXPECT_EQ(lists[0]->parent(), nullptr);
    EXPECT_EQ(lists[0]->GetAdPosition(), 42);
    EXPECT_EQ(lists[0]->GetAdList()->first()->GetAdId(), QStringLiteral("18088"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Request ad succeed, path = /ad/search, adType = 2, "
                                              "adPosition = 42, requestId = dev170000000011")));
    EXPECT_THAT(lineAhead, ElementsAre(StartsWith("[Ad] Request ad succeed, ")));
}

TEST_F(AdAnswerTest, TheAnswersObjectGoesBehindItsSignalAndTheListStays) {
    QPointer<CZRAdResponseModel> answer;
    QObject::connect(client.get(), &CZRAdApiClient::RequestAdSucceeded, [&] { answer = Kept().value(0); });
    bool ended = false;
    bool endedAtSignal = true;
    QObject::connect(client.get(), &CZRAdApiClient::RequestAdSucceeded, [&] {
        QObject::connect(answer, &QObject::destroyed, [&ended] { ended = true; });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        endedAtSignal = ended;
    });

    ServerAnswers(Text(PopupAnswer()));

    EXPECT_FALSE(endedAtSignal);
    EXPECT_TRUE(ended);
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_EQ(lists[0]->GetAdList()->size(), 1);
}

TEST_F(AdAnswerTest, AnAnswerWithoutAdsIsAnAnswer) {
    Json::Value data = PopupData();
    data.removeMember("ad");
    ServerAnswers(Text(AnswerOf(data)));

    ASSERT_THAT(lists, SizeIs(1));
    EXPECT_EQ(lists[0]->GetAdList(), nullptr);
}

TEST_F(AdAnswerTest, TheStatusDecidesNothing) {
    ServerAnswers(Text(PopupAnswer()), 503);

    EXPECT_THAT(told, ElementsAre("succeeded after 120"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Request ad succeed, "))));
}

TEST_F(AdAnswerTest, AnExchangeThatFailedIsToldWithItsResultAndStatus) {
    const unsigned long task = Search();
    log.Forget();
    time.Advance(10s);

    http.Fail(task, kHttpTimedOut, 200);

    EXPECT_THAT(told, ElementsAre("failed 1005, Result = 3, HttpStatusCode = 200, after 10000"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Request ad failed, path = /ad/search, result = 3, adType = 2, "
                                               "adPosition = 42, requestId = dev170000000011")));
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

TEST_F(AdAnswerTest, TheWordsOfAFailureNameTheRequestThatFailed) {
    client->RequestAd(ZRAdApiTypeCheck, ZRAdTypeBanner, 7, {QStringLiteral("1")});
    log.Forget();

    http.Fail(http.LastTask(), kHttpCut);

    EXPECT_THAT(told, ElementsAre("failed 1005, Result = 5, HttpStatusCode = 0, after 0"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Request ad failed, path = /ad/check, result = 5, adType = 3, "
                                               "adPosition = 7, requestId = dev170000000011")));
}

struct Unreadable {
    const char* name;
    std::string body;
};

std::ostream& operator<<(std::ostream& stream, const Unreadable& row) {
    return stream << row.name;
}

class AdUnreadableAnswerTest : public AdAnswerTest, public WithParamInterface<Unreadable> {};

TEST_P(AdUnreadableAnswerTest, IsToldWithItsBody) {
    ServerAnswers(GetParam().body);

    ASSERT_THAT(told, SizeIs(1));
    const std::string shown = QString::fromStdString(GetParam().body).toStdString();
    EXPECT_EQ(told[0], "failed 1005, body parse failed, body = " + shown + ", after 120");
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Request ad failed, path = /ad/search, body parse failed, "
                                               "adType = 2, adPosition = 42, requestId = dev170000000011")));
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Bodies, AdUnreadableAnswerTest,
                         Values(Unreadable{"Empty", ""}, Unreadable{"Blank", " \n"},
                                Unreadable{"Page", "<html>{}</html>"}, Unreadable{"Cut", R"({"code": 0, "da)"},
                                Unreadable{"TrailingComma", R"({"code": 0,})"},
                                Unreadable{"NestedTooDeep", std::string(5'000, '[')},
                                Unreadable{"WellNestedTooDeep", std::string(2'000, '[') + std::string(2'000, ']')},
                                Unreadable{"NumberOutOfRange", R"({"code": 1e999})"},
                                Unreadable{"Fields", "{x} {} %1 %s }{ {"}, Unreadable{"SingleQuotes", "{'code': 0}"},
                                Unreadable{"NoText", "\xFF\xFE{"}, Unreadable{"Zeros", std::string("{\0\0", 3)}),
                         [](const auto& row) { return row.param.name; });

TEST_F(AdAnswerTest, AByteOrderMarkMakesTheAnswerUnreadableAndIsToldWithIt) {
    ServerAnswers("\xEF\xBB\xBF" + Text(PopupAnswer()));

    EXPECT_THAT(told, ElementsAre(StartsWith("failed 1005, body parse failed, body = \xEF\xBB\xBF{")));
    log.Forget();
}

TEST_F(AdAnswerTest, WhatFollowsTheAnswerAndCommentsInItAreIgnored) {
    ServerAnswers("// hello\n" + Text(PopupAnswer()) + " } and more");

    EXPECT_THAT(told, ElementsAre("succeeded after 120"));
}

TEST_F(AdAnswerTest, OfAKeyThatComesTwiceTheLaterCounts) {
    const std::string answer = Text(PopupAnswer());
    ServerAnswers(R"({"code": 7, "data": 5, )" + answer.substr(answer.find('{') + 1));
    ServerAnswers(answer.substr(0, answer.rfind('}')) + R"(, "code": 7})");

    EXPECT_THAT(told, ElementsAre("succeeded after 120", "failed 2001, response code is 7, after 120"));
    log.Forget();
}

TEST_F(AdAnswerTest, BytesThatAreNoUtf8AreReplacedInTheTextsThatHaveThem) {
    Json::Value answer = PopupAnswer();
    answer["message"] = "?";
    std::string body = Text(answer);
    body.replace(body.find("18088"), 5, "a\xFFz");
    body.replace(body.find('?'), 1, "\xC3");

    ServerAnswers(body);

    ASSERT_THAT(lists, SizeIs(1));
    EXPECT_EQ(lists[0]->GetAdList()->first()->GetAdId(), QStringLiteral("a\uFFFDz"));
}

TEST_F(AdAnswerTest, AnAnswerThatDoesNotDecodeIsToldWithItsBodyAndKept) {
    const std::string body = R"({"code": 7, "message": "no"})";

    ServerAnswers(body);

    // without data the code is never looked at
    EXPECT_THAT(told, ElementsAre("failed 1005, response model decode failed, body = " + body + ", after 120"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] CZRAdResponseModel decode failed, data is unvalid"),
                            Error("[Ad] Request ad failed, path = /ad/search, response model decode failed, "
                                  "adType = 2, adPosition = 42, requestId = dev170000000011")));
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
    EXPECT_THAT(Kept(), SizeIs(1));
}

TEST_F(AdAnswerTest, ARootThatIsNoObjectDoesNotDecode) {
    int asked = 0;
    for (const char* body : {"[]", "[{}]", "5", "null", "\"x\"", "true"}) {
        told.clear();
        ServerAnswers(body);
        EXPECT_THAT(told, ElementsAre(std::string("failed 1005, response model decode failed, body = ") + body +
                                      ", after 120"));
        EXPECT_THAT(Kept(), SizeIs(++asked));
        log.Forget();
    }
}

TEST_F(AdAnswerTest, TheLargestCodeOfARefusalIsToldWhole) {
    Json::Value answer = PopupAnswer();
    answer["code"] = 2147483647;

    ServerAnswers(Text(answer));

    EXPECT_THAT(told, ElementsAre("failed 2001, response code is 2147483647, after 120"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr(", code = 2147483647, "))));
}

TEST_F(AdAnswerTest, ARefusalOfTheServerIsToldWithItsCodeAndItsListGoesWithTheClient) {
    Json::Value answer = PopupAnswer();
    answer["code"] = -3;
    answer["message"] = " busy  {} ";

    ServerAnswers(Text(answer));

    EXPECT_THAT(told, ElementsAre("failed 2001, response code is -3, after 120"));
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Error("[Ad] Request ad failed, path = /ad/search, code = -3, message=  busy  {} , adType = 2, "
                          "adPosition = 42, requestId = dev170000000011")));
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
    ASSERT_THAT(Kept(), SizeIs(1));
    const QPointer<CZRAdModelList> list = Kept()[0]->GetData();
    ASSERT_TRUE(list);
    client.reset();
    EXPECT_TRUE(list.isNull());
}

// Orders

TEST_F(AdAnswerTest, TheAnswerToAnOlderRequestIsLoggedAndDropped) {
    const unsigned long first = Search();
    client->RequestAd(ZRAdApiTypeCheck, ZRAdTypePopup, 42, {QStringLiteral("1")});
    const unsigned long second = http.LastTask();
    log.Forget();

    http.Answer(first, Text(PopupAnswer()));
    time.Settle();

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] Request ad callback, requestTaskId unmatched, path = /ad/search, adType = 2, "
                                  "adPosition = 42, requestId = dev170000000011, currentTaskId = " +
                                  std::to_string(second) + ", callbackTaskId = " + std::to_string(first))));
    log.Forget();

    http.Answer(second, Text(PopupAnswer()));
    time.Settle();

    EXPECT_THAT(told, ElementsAre("succeeded after 0"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Request ad succeed, path = /ad/check, adType = 2, "
                                              "adPosition = 42, requestId = dev170000000022")));
}

TEST_F(AdAnswerTest, TheFailureOfAnOlderRequestIsDroppedAsWell) {
    const unsigned long first = Search();
    Search();
    log.Forget();

    http.Fail(first, kHttpCut);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("requestTaskId unmatched"))));
}

TEST_F(AdAnswerTest, ARequestThatCouldNotBeStartedSupersedesTheOneThatIsOut) {
    const unsigned long first = Search();
    http.RefuseStarts(Failing::Always());
    Search();
    log.Forget();

    http.Answer(first, Text(PopupAnswer()));
    time.Settle();

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("currentTaskId = 0, callbackTaskId = "))));
}

TEST_F(AdAnswerTest, AnAnswerThatHasComeIsNotSupersededAnyMore) {
    const unsigned long first = Search();
    http.Answer(first, Text(PopupAnswer()));
    EXPECT_THAT(told, IsEmpty());  // it is decoded later

    Search();
    time.Settle();

    EXPECT_THAT(told, ElementsAre("succeeded after 0"));
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Request ad succeed, path = /ad/search, adType = 2, "
                                           "adPosition = 42, requestId = dev170000000011")));
}

TEST_F(AdAnswerTest, TheLengthEndsWhenTheAnswerComesAndNotWhenItIsRead) {
    const unsigned long task = Search();
    time.Advance(70ms);
    http.Answer(task, Text(PopupAnswer()));
    time.SetServerTime(time.ServerTime() + 5'000);
    time.Settle();

    EXPECT_THAT(told, ElementsAre("succeeded after 70"));
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
}

TEST_F(AdAnswerTest, AClockThatStepsBackMakesTheLengthNegative) {
    for (const bool good : {true, false}) {
        told.clear();
        const unsigned long task = Search();
        time.SetServerTime(time.ServerTime() - 5'000);
        http.Answer(task, good ? Text(PopupAnswer()) : "");
        time.Settle();
        EXPECT_THAT(told, ElementsAre(EndsWith(" after -5000")));
        log.Forget();
    }
}

TEST_F(AdAnswerTest, AClientThatIsGoneGetsNoAnswer) {
    const unsigned long task = Search();
    client.reset();

    http.Answer(task, Text(PopupAnswer()));
    time.Settle();

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(AdAnswerTest, AClientThatGoesBetweenTheAnswerAndItsReadingIsNotTouched) {
    http.Answer(Search(), Text(PopupAnswer()));
    client.reset();
    time.Settle();

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(AdAnswerTest, AListenerMayEndTheClient) {
    const auto end = [this] { client.reset(); };
    QObject::connect(client.get(), &CZRAdApiClient::RequestAdSucceeded, end);
    ServerAnswers(Text(PopupAnswer()));
    EXPECT_FALSE(client);

    for (const char* body :
         {"", "{}", R"({"code": 5, "data": {"ad_type": 7, "ad_position": 1, "enable_close": true}})"}) {
        client = std::make_unique<CZRAdApiClient>(nullptr);
        QObject::connect(client.get(), &CZRAdApiClient::RequestAdFailed, end);
        ServerAnswers(body);
        EXPECT_FALSE(client) << body;
        log.Forget();
    }
}

// Changes of the text itself, by a generator with a fixed seed.
TEST_F(AdAnswerTest, WhateverTheBytesOneSignalFollows) {
    std::mt19937 generator(7);
    const std::string good[] = {Text(PopupAnswer()), Text(BannerAnswer())};
    int succeeded = 0;
    for (int i = 0; i < 3'000; ++i) {
        std::string body = good[i % 2];
        for (size_t changes = 1 + generator() % 2; changes > 0; --changes) {
            const size_t at = generator() % body.size();
            switch (generator() % 4) {
                case 0:
                    body[at] = char(generator());
                    break;
                case 1:
                    body.erase(at, 1 + generator() % 8);
                    break;
                case 2:
                    body.insert(at, 1, "{}[]\",:0-tn\\"[generator() % 12]);
                    break;
                default:
                    body.insert(at, body.substr(generator() % body.size(), generator() % 20));
                    break;
            }
        }
        told.clear();
        lists.clear();
        ServerAnswers(body);
        ASSERT_THAT(told, SizeIs(1)) << body;
        succeeded += lists.size() == 1 ? 1 : 0;
        EXPECT_GE(log.Lines().size(), 1u);
        log.Forget();
        http.Forget();
    }
    EXPECT_GT(succeeded, 100);
    EXPECT_LT(succeeded, 2'900);
}

}  // namespace
