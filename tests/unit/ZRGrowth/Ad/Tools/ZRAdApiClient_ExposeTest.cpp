// Answers to exposures.
#include "Ad/AdApiClientTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

enum class Fate { Exposed, Refused, Unreadable };

struct ExposeRow {
    const char* name;
    std::string body;
    Fate fate;
    const char* code = "";  // of a refusal
};

std::ostream& operator<<(std::ostream& stream, const ExposeRow& row) {
    return stream << row.name;
}

class AdExposeTest : public AdApiClientTest {};

class AdExposeAnswerTest : public AdExposeTest, public WithParamInterface<ExposeRow> {};

TEST_P(AdExposeAnswerTest, IsTakenByItsCodeAlone) {
    const ExposeRow& row = GetParam();
    const unsigned long task = Expose({QStringLiteral("1"), QStringLiteral("2")});
    log.Forget();

    http.Answer(task, row.body, 404);

    const std::string words = ", adType = 2, adPosition = 42, adId = 1,2, exposeId = e-1";
    switch (row.fate) {
        case Fate::Exposed:
            EXPECT_THAT(told, ElementsAre("exposed 1 2"));
            EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Expose ad succeed, path = /ad/expose" + words)));
            break;
        case Fate::Refused:
            EXPECT_THAT(told, ElementsAre(std::string("not exposed 1 2: 2001, response code is ") + row.code));
            EXPECT_THAT(log.Lines(),
                        ElementsAre(Error(std::string("[Ad] Expose ad failed, path = /ad/expose, code = ") + row.code +
                                          words)));
            break;
        case Fate::Unreadable:
            EXPECT_THAT(told, ElementsAre("not exposed 1 2: 1005, body parse failed, body = " + row.body));
            EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Expose ad failed, path = /ad/expose, body parse failed, "
                                                       "errorCode = 0, httpCode = 404" +
                                                       words)));
            break;
    }
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Bodies, AdExposeAnswerTest,
                         Values(ExposeRow{"Zero", R"({"code": 0, "message": "ok"})", Fate::Exposed},
                                ExposeRow{"NoKey", "{}", Fate::Exposed},  //
                                ExposeRow{"OtherKeys", R"({"Code": 5, "data": 7})", Fate::Exposed},
                                ExposeRow{"NullCode", R"({"code": null})", Fate::Exposed},  //
                                ExposeRow{"NullRoot", "null", Fate::Exposed},
                                ExposeRow{"False", R"({"code": false})", Fate::Exposed},
                                ExposeRow{"ZeroWithAPoint", R"({"code": 0.0})", Fate::Exposed},
                                ExposeRow{"LessThanOne", R"({"code": 0.5})", Fate::Exposed},
                                ExposeRow{"JunkBehind", R"({"code": 0} }])", Fate::Exposed},
                                ExposeRow{"LaterOfTwo", R"({"code": 7, "code": 0})", Fate::Exposed},
                                ExposeRow{"Positive", R"({"code": 7})", Fate::Refused, "7"},
                                ExposeRow{"Negative", R"({"code": -1})", Fate::Refused, "-1"},
                                ExposeRow{"True", R"({"code": true})", Fate::Refused, "1"},
                                ExposeRow{"WithAPoint", R"({"code": 7.0})", Fate::Refused, "7"},
                                ExposeRow{"WithAFraction", R"({"code": -1.5})", Fate::Refused, "-1"},
                                ExposeRow{"Largest", R"({"code": 2147483647})", Fate::Refused, "2147483647"},
                                ExposeRow{"Smallest", R"({"code": -2147483648})", Fate::Refused, "-2147483648"},
                                ExposeRow{"TooLarge", R"({"code": 2147483648})", Fate::Unreadable},
                                ExposeRow{"TooSmall", R"({"code": -2147483649})", Fate::Unreadable},
                                ExposeRow{"FarTooLarge", R"({"code": 18446744073709551615})", Fate::Unreadable},
                                ExposeRow{"FractionTooLarge", R"({"code": 1e300})", Fate::Unreadable},
                                ExposeRow{"TextCode", R"({"code": "0"})", Fate::Unreadable},
                                ExposeRow{"ArrayCode", R"({"code": []})", Fate::Unreadable},
                                ExposeRow{"ObjectCode", R"({"code": {}})", Fate::Unreadable},
                                ExposeRow{"ArrayRoot", R"([{"code": 0}])", Fate::Unreadable},  //
                                ExposeRow{"EmptyArrayRoot", "[]", Fate::Unreadable},           //
                                ExposeRow{"NumberRoot", "5", Fate::Unreadable},                //
                                ExposeRow{"ZeroRoot", "0", Fate::Unreadable},                  //
                                ExposeRow{"FalseRoot", "false", Fate::Unreadable},             //
                                ExposeRow{"TextRoot", "\"x\"", Fate::Unreadable},              //
                                ExposeRow{"Empty", "", Fate::Unreadable},                      //
                                ExposeRow{"Page", "<html/>", Fate::Unreadable},
                                ExposeRow{"ByteOrderMark", "\xEF\xBB\xBF{}", Fate::Unreadable},
                                ExposeRow{"TrailingComma", R"({"code": 0,})", Fate::Unreadable},
                                ExposeRow{"NestedTooDeep", std::string(5'000, '['), Fate::Unreadable}),
                         [](const auto& row) { return row.param.name; });

TEST_F(AdExposeTest, AnExchangeThatFailedIsToldWithItsResultAndStatus) {
    const unsigned long task = Expose();
    log.Forget();

    http.Fail(task, kHttpRedirected, 302);

    EXPECT_THAT(told, ElementsAre("not exposed 18088: 1005, Result = 6, HttpStatusCode = 302"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Expose ad failed, path = /ad/expose, result = 6, adType = 2, "
                                               "adPosition = 42, adId = 18088, exposeId = e-1")));
    EXPECT_EQ(lineAhead, std::vector<std::string>{log.Lines().back().text});
}

TEST_F(AdExposeTest, AnyNumberMayBeOutAndEachAnswerCounts) {
    const unsigned long first = Expose({QStringLiteral("1")});
    const unsigned long second = Expose({QStringLiteral("2")});
    const unsigned long third = Expose({QStringLiteral("3")});
    log.Forget();

    http.Answer(third, "{}");
    http.Answer(first, R"({"code": 7})");
    http.Fail(second, kHttpCut);

    EXPECT_THAT(told, ElementsAre("exposed 3", "not exposed 1: 2001, response code is 7",
                                  "not exposed 2: 1005, Result = 5, HttpStatusCode = 0"));
    log.Forget();
}

TEST_F(AdExposeTest, AnExposureAndARequestDoNotSupersedeEachOther) {
    const unsigned long search = Search();
    const unsigned long expose = Expose();
    Search();
    log.Forget();

    http.Answer(expose, "{}");
    http.Answer(search, Text(PopupAnswer()));
    time.Settle();

    EXPECT_THAT(told, ElementsAre("exposed 18088"));
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("requestTaskId unmatched"))));

    const unsigned long latest = http.LastTask();
    Expose();
    log.Forget();
    http.Answer(latest, Text(PopupAnswer()));
    time.Settle();
    EXPECT_THAT(told, ElementsAre("exposed 18088", "succeeded after 0"));
}

TEST_F(AdExposeTest, AnExposureOfNothingIsAnsweredWithNothing) {
    const unsigned long task = Expose({});
    log.Forget();

    http.Answer(task, "{}");

    EXPECT_THAT(told, ElementsAre("exposed "));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Expose ad succeed, path = /ad/expose, adType = 2, "
                                              "adPosition = 42, adId = , exposeId = e-1")));
}

TEST_F(AdExposeTest, AClientThatIsGoneGetsNoAnswer) {
    const unsigned long task = Expose();
    log.Forget();
    client.reset();

    http.Answer(task, "{}");

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdExposeTest, AListenerMayEndTheClient) {
    for (const char* body : {"{}", "", R"({"code": 7})"}) {
        client = std::make_unique<CZRAdApiClient>(nullptr);
        const auto end = [this] { client.reset(); };
        QObject::connect(client.get(), &CZRAdApiClient::ExposeAdSuccess, end);
        QObject::connect(client.get(), &CZRAdApiClient::ExposeAdFailed, end);
        http.Answer(Expose(), body);
        EXPECT_FALSE(client) << body;
        log.Forget();
    }
}

}  // namespace
