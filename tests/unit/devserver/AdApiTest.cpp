#include "AdApi.h"

#include <gmock/gmock.h>

#include "AdServerTest.h"
#include "RowName.h"

namespace {

using channel::Frame;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kDue = R"("image":"a.png","schema":"s","startInS":-9,"endInS":99,"expireInS":99})";

class AdApiTest : public AdServerTest {
protected:
    AdApiTest() {
        SetBanners(R"({"id":"all",)" + kDue + R"(,{"id":"english","languages":["en"],)" + kDue +
                   R"(,{"id":"french","languages":["fr"],)" + kDue + R"(,{"id":"ann","users":[1],)" + kDue);
    }

    static QByteArray SessionOf(const std::optional<channel::LoginAnswer>& answer) {
        return QByteArray::number(qulonglong(answer ? answer->session_id() : 0));
    }

    Json::Value LastRequest() {
        const Json::Value requests = Http("GET", "/v1/http").body["http"];
        return requests.empty() ? Json::Value() : requests[requests.size() - 1];
    }
};

TEST_F(AdApiTest, SearchKnowsUserAndLanguageByTheSessionOfTheLogin) {
    const auto client = Connected();
    const QByteArray session = SessionOf(client->Login(1));
    const auto other = Connected();
    const QByteArray sessionOfBob = SessionOf(other->Login(2));

    EXPECT_THAT(Found(session), ElementsAre("all", "english", "ann"));
    EXPECT_THAT(Found(sessionOfBob), ElementsAre("all", "english"));

    Frame language;
    language.set_kind(Frame::LANGUAGE);
    language.mutable_login()->set_language(7);
    client->Send(language);
    ASSERT_TRUE(client->Request(1, kCmdChatEntry));
    EXPECT_THAT(Found(session), ElementsAre("all", "french", "ann"));
    EXPECT_THAT(Found(sessionOfBob), ElementsAre("all", "english"));
}

TEST_F(AdApiTest, SearchOfNoSessionFindsWhatIsForEverybody) {
    const auto client = Connected();
    const QByteArray session = SessionOf(client->Login(1));

    EXPECT_THAT(Found(), ElementsAre("all"));
    for (const QByteArray& other : {QByteArray("0"), QByteArray("1"), QByteArray(""), QByteArray("-1"), session + "0",
                                    QByteArray("x"), QByteArray("99999999999999999999")}) {
        EXPECT_THAT(Found(other), ElementsAre("all")) << other.toStdString();
    }
}

TEST_F(AdApiTest, SessionEndsWithLogoutRefusalConnectionAndUser) {
    const auto client = Connected();
    const QByteArray loggedOut = SessionOf(client->Login(1));
    Frame logout;
    logout.set_kind(Frame::LOGOUT);
    client->Send(logout);
    ASSERT_TRUE(client->Request(1, kCmdChatEntry));
    EXPECT_THAT(Found(loggedOut), ElementsAre("all"));

    const QByteArray refused = SessionOf(client->Login(1));
    EXPECT_THAT(Found(refused), ElementsAre("all", "english", "ann"));
    ASSERT_TRUE(client->Login(3));
    EXPECT_THAT(Found(refused), ElementsAre("all"));

    const QByteArray cut = SessionOf(client->Login(1));
    EXPECT_THAT(Found(loggedOut), ElementsAre("all"));
    EXPECT_THAT(Found(cut), ElementsAre("all", "english", "ann"));
    ASSERT_EQ(Http("POST", "/v1/drop", "{}").body["dropped"].asInt(), 1);
    EXPECT_THAT(Found(cut), ElementsAre("all"));

    const auto next = Connected();
    const QByteArray removed = SessionOf(next->Login(1));
    const std::string ads = devserver::WriteJson(Http("GET", "/v1/scenario").body["ads"]);
    ASSERT_EQ(Http("PUT", "/v1/scenario", R"({"schema":1,"users":[],"commonConfig":{},"ads":)" + ads + "}").status,
              200);
    EXPECT_THAT(Found(removed), ElementsAre("all"));
}

TEST_F(AdApiTest, SearchGoesByTheServersClock) {
    SetBanners(R"({"id":"later","image":"a","schema":"s","start":4000000000,"end":4000003600,"expire":4000003600},)"
               R"({"id":"always",)" +
               kDue);
    EXPECT_THAT(Found(), ElementsAre("always"));

    const int64_t nowMs = Http("GET", "/v1/state").body["serverTimeMs"].asInt64();
    ASSERT_EQ(Http("PUT", "/v1/clock", R"({"offsetMs":)" + std::to_string(4'000'000'060'000 - nowMs) + "}").status,
              200);

    EXPECT_THAT(Found(), ElementsAre("later", "always"));
}

TEST_F(AdApiTest, PicturesOfTheServerAreNamedByItsAddressAndAreThere) {
    SetBanners(R"({"id":"a","image":"night-session.png","schema":"s","startInS":0,"endInS":99,"expireInS":99})");
    const std::string address =
        FromJson(Web("POST", QStringLiteral("/ad/search"), kSearch).body)["data"]["ad"][0]["banner_ad"]["img"]
            .asString();
    EXPECT_EQ(address, "http://127.0.0.1:" + std::to_string(server.HttpPort()) + "/pictures/night-session.png");

    const WebReply picture = Web("GET", QUrl(QString::fromStdString(address)).path());

    EXPECT_EQ(picture.status, 200);
    EXPECT_EQ(picture.type, "image/png");
    EXPECT_EQ(picture.announced, qint64(picture.body.size()));
    EXPECT_EQ(picture.body.substr(1, 3), "PNG");
    EXPECT_EQ(Web("GET", QStringLiteral("/pictures/nowhere.png")).status, 404);
}

TEST_F(AdApiTest, CheckFindsWhatItNamesWithoutASession) {
    const WebReply answer = Web("POST", QStringLiteral("/ad/check"),
                                R"({"ad_type":3,"ad_position":7,"request_id":"r","ad_id":["ann","french","nowhere"]})");

    const Json::Value ads = FromJson(answer.body)["data"]["ad"];
    EXPECT_EQ(answer.type, "application/json");
    ASSERT_EQ(ads.size(), 2u);
    EXPECT_EQ(ads[0]["ad_id"].asString(), "ann");
    EXPECT_EQ(ads[1]["ad_id"].asString(), "french");
}

TEST_F(AdApiTest, ExposureIsAcknowledgedAndKept) {
    const WebReply answer = Web("POST", QStringLiteral("/ad/expose"), kExposure);

    EXPECT_EQ(answer.body, R"({"code":0})");
    EXPECT_EQ(LastRequest()["path"].asString(), "/ad/expose");
    EXPECT_EQ(LastRequest()["body"].asString(), kExposure);
}

TEST_F(AdApiTest, RequestsAreKeptAsTheyCame) {
    Web("POST", QStringLiteral("/ad/search?a=1"), "\xff", {{"X-Orvi-Client-SessionId", "18446744073709551615"}});

    const Json::Value request = LastRequest();
    EXPECT_EQ(request["n"].asUInt(), 1u);
    EXPECT_EQ(request["method"].asString(), "POST");
    EXPECT_EQ(request["path"].asString(), "/ad/search");
    EXPECT_EQ(request["headers"]["x-orvi-client-sessionid"].asString(), "18446744073709551615");
    EXPECT_EQ(request["headers"]["content-type"].asString(), "application/json");
    EXPECT_FALSE(request["headers"].isMember("remote_addr"));
    EXPECT_EQ(request["bodyHex"].asString(), "ff");
    EXPECT_EQ(request["status"].asInt(), 400);

    Web("GET", QStringLiteral("/pictures/card-invite.jpg"));
    EXPECT_EQ(Http("GET", "/v1/http?after=1").body["http"].size(), 1u);
    EXPECT_FALSE(LastRequest()["headers"].isMember("x-orvi-client-sessionid"));
    EXPECT_EQ(Http("GET", "/v1/http?after=x").status, 400);
}

TEST_F(AdApiTest, AnEventOfTheLargestSizeIsCountedAsItCame) {
    constexpr size_t kMaxEventBytes = 4 << 20;  // of a client's outbox
    const std::string around = Report("a");
    std::string text;
    while (around.size() + text.size() + 3 < kMaxEventBytes) {
        text += "广";
    }
    std::string batch = around;
    const std::string params = R"("params":{)";
    batch.insert(batch.find(params) + params.size(), R"("t":")" + text + '"');

    EXPECT_EQ(Web("POST", QStringLiteral("/report/events"), batch).body, R"({"accepted":["a"]})");

    const Json::Value told = Http("GET", "/v1/reports").body;
    EXPECT_EQ(told["counted"].asInt(), 1);
    ASSERT_EQ(told["reports"].size(), 1u);
    EXPECT_TRUE(told["reports"][0]["params"]["t"] == text);
}

TEST_F(AdApiTest, ALargerRequestThan32MiBIsRefused) {
    const std::string large(devserver::CDevServer::kMaxHttpBodyBytes + 1, ' ');

    const WebReply reply = Web("POST", QStringLiteral("/report/events"), large);

    EXPECT_EQ(reply.status, 413);
    EXPECT_EQ(reply.body, R"({"error":"body: incomplete, or over 33554432 bytes"})");
}

TEST_F(AdApiTest, ReportsAreCountedOnceAndForgotten) {
    EXPECT_EQ(Web("POST", QStringLiteral("/report/events"), Report("a")).body, R"({"accepted":["a"]})");
    EXPECT_EQ(Web("POST", QStringLiteral("/report/events"), Report("a")).body, R"({"accepted":["a"]})");
    Web("POST", QStringLiteral("/report/events"), Report("b"));

    const Json::Value told = Http("GET", "/v1/reports").body;
    EXPECT_EQ(told["counted"].asInt(), 2);
    EXPECT_EQ(told["resends"].asInt(), 1);
    EXPECT_EQ(told["reports"][0], FromJson(R"({"n":1,"id":"a","name":"N","code":1,"params":{},"broker":0,"user":1,
                                               "device":"d","atMs":5,"resends":1})"));
    EXPECT_EQ(told["reports"][1]["resends"].asInt(), 0);
    EXPECT_EQ(Http("GET", "/v1/reports?after=1").body["reports"].size(), 1u);
    EXPECT_EQ(Http("GET", "/v1/reports?after=").status, 400);

    ASSERT_EQ(Http("DELETE", "/v1/reports").status, 200);
    EXPECT_EQ(Http("GET", "/v1/reports").body, FromJson(R"({"counted":0,"reports":[],"resends":0})"));
}

TEST_F(AdApiTest, AdsAreReplacedAndTakenAway) {
    EXPECT_EQ(Http("GET", "/v1/scenario").body["ads"].size(), 1u);

    const HttpAnswer refused = Http("PUT", "/v1/ads", R"([{"adType":3,"adPosition":7,"campaigns":[]}])");
    EXPECT_EQ(refused.status, 400);
    EXPECT_EQ(refused.Error(), "ads[0].enableClose: missing");
    EXPECT_THAT(Found(), ElementsAre("all"));

    ASSERT_EQ(Http("DELETE", "/v1/ads").status, 200);
    EXPECT_THAT(Found(), IsEmpty());
    EXPECT_FALSE(Http("GET", "/v1/scenario").body.isMember("ads"));
}

TEST_F(AdApiTest, PortIsToldInTheStateAndTheFirstLine) {
    EXPECT_EQ(Http("GET", "/v1/state").body["http"].asUInt(), server.HttpPort());
    EXPECT_EQ(FromJson(server.Greeting())["http"].asUInt(), server.HttpPort());
    EXPECT_NE(server.HttpPort(), server.ControlPort());
}

TEST_F(AdApiTest, PageOfElsewhereIsRefusedAndOneOfThisMachineIsNot) {
    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch, {{"Origin", "https://evil.example"}}).status, 403);
    EXPECT_EQ(Web("GET", QStringLiteral("/pictures/card-invite.png"), {}, {{"Origin", "null"}}).status, 403);
    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch, {{"Origin", "http://localhost:1"}}).status, 200);
    EXPECT_EQ(Http("GET", "/v1/http").body["http"].size(), 1u);
}

struct BadRow {
    const char* name;
    const char* method;
    const char* path;
    std::string body;
    int status;
    const char* message;
};

class BadAdRequestTest : public AdServerTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadAdRequestTest, IsRefusedInTheFormOfAnAnswer) {
    const BadRow& row = GetParam();

    const WebReply answer = Web(row.method, QString::fromLatin1(row.path), row.body);

    EXPECT_EQ(answer.status, row.status);
    EXPECT_EQ(FromJson(answer.body)["code"].asInt(), row.status);
    EXPECT_THAT(FromJson(answer.body)["message"].asString(), HasSubstr(row.message));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadAdRequestTest,
    testing::Values(BadRow{"UnknownPath", "POST", "/ad/seek", "{}", 404, "path: /ad/seek is unknown"},
                    BadRow{"Root", "GET", "/", "", 404, "unknown"},
                    BadRow{"NoPicture", "GET", "/pictures/", "", 404, "unknown"},
                    BadRow{"FolderOfTheControlInterface", "GET", "/v1/state", "", 404, "unknown"},
                    BadRow{"GotSearch", "GET", "/ad/search", "", 405, "method: must be POST"},
                    BadRow{"PostedPicture", "POST", "/pictures/card-invite.png", "", 405, "method: must be GET"},
                    BadRow{"SearchNoJson", "POST", "/ad/search", "x", 400, "not JSON"},
                    BadRow{"SearchEmpty", "POST", "/ad/search", "{}", 400, "ad_type: missing; ad_position: missing"},
                    BadRow{"CheckNoObject", "POST", "/ad/check", "[]", 400, "must be an object"},
                    BadRow{"ExposeTooDeep", "POST", "/ad/expose", std::string(99, '['), 400, "nested more than 64"},
                    BadRow{"ReportNoJson", "POST", "/report/events", "", 400, "not JSON"}),
    RowName());

}  // namespace
