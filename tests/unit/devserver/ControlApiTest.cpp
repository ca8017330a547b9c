#include "ControlApi.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTcpSocket>

#include "DevServerTest.h"
#include "RowName.h"
#include "support/RealTime.h"

namespace {

using channel::Frame;
using devserver::CWebServer;
using testing::HasSubstr;

const QVector<QPair<QByteArray, QByteArray>> kWithToken{{"Authorization", "Bearer test-token"}};

class ControlApiTest : public DevServerTest {};

TEST_F(ControlApiTest, RefusesARequestWithoutTheRightTokenAndDoesNothing) {
    for (const char* authorization : {"", "test-token", "Bearer", "Bearer test-tokem", "Bearer test-token1"}) {
        const Headers headers =
            *authorization ? Headers{{QByteArray("Authorization"), QByteArray(authorization)}} : Headers{};
        const HttpAnswer answer = HttpWith(headers, "PUT", "/v1/clock", R"({"offsetMs":5})");

        EXPECT_EQ(answer.status, 401) << authorization;
        EXPECT_THAT(answer.Error(), HasSubstr("Authorization"));
    }
    EXPECT_EQ(HttpWith({}, "GET", "/nowhere").status, 401);
    EXPECT_EQ(Http("GET", "/v1/state").body["clockOffsetMs"].asInt64(), 0);
}

TEST_F(ControlApiTest, RefusesAForeignOriginEvenWithTheToken) {
    for (const char* origin : {"https://evil.example", "null", "http://localhost.evil.example"}) {
        Headers headers = kWithToken;
        headers.push_back({"Origin", origin});

        EXPECT_EQ(HttpWith(headers, "GET", "/v1/state").status, 403) << origin;
    }
    Headers headers = kWithToken;
    headers.push_back({"Origin", "http://localhost:3000"});
    EXPECT_EQ(HttpWith(headers, "GET", "/v1/state").status, 200);
}

TEST_F(ControlApiTest, StateListsUsersAndConnections) {
    const auto ann = LoggedIn(1);
    const auto nobody = Connected();

    const HttpAnswer answer = Http("GET", "/v1/state");

    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body["channel"].asUInt(), server.ChannelPort());
    EXPECT_EQ(answer.body["users"], FromJson(R"([{"id":1,"name":"Ann"},{"id":2,"name":"Bob"},{"id":3,"name":"Cid"}])"));
    EXPECT_EQ(answer.body["connections"], FromJson(R"([{"id":1,"user":1},{"id":2,"user":0}])"));
    EXPECT_TRUE(answer.body["serverTimeMs"].isInt64());
}

TEST_F(ControlApiTest, ReceivedTellsFramesInOrderFromANumberOn) {
    const auto client = LoggedIn(1);
    ASSERT_TRUE(client->Request(0xFFFFFFFFFFFFFFFFu, 4711, "\x01\xab"));
    Frame logout;
    logout.set_kind(Frame::LOGOUT);
    client->Send(logout);
    ASSERT_TRUE(client->Request(2, kCmdChatEntry));

    EXPECT_EQ(Http("GET", "/v1/received").body["received"], FromJson(R"([
        {"n":1,"connection":1,"user":1,"kind":"LOGIN","command":0,"session":0,"bodyHex":""},
        {"n":2,"connection":1,"user":1,"kind":"REQUEST","command":4711,"session":18446744073709551615,"bodyHex":"01ab"},
        {"n":3,"connection":1,"user":1,"kind":"LOGOUT","command":0,"session":0,"bodyHex":""},
        {"n":4,"connection":1,"user":0,"kind":"REQUEST","command":20982,"session":2,"bodyHex":""}])"));
    EXPECT_EQ(Http("GET", "/v1/received?after=3").body["received"].size(), 1u);
    EXPECT_EQ(Http("GET", "/v1/received?after=4").body["received"].size(), 0u);
    EXPECT_EQ(Http("GET", "/v1/received?after=-1").status, 400);
}

TEST_F(ControlApiTest, ScenarioIsReplacedAsAWhole) {
    const auto client = Connected();
    const std::string next =
        R"({"schema":1,"users":[{"id":9,"name":"Zoe","markets":[6]}],"commonConfig":{"ai_chat":{}}})";

    ASSERT_EQ(Http("PUT", "/v1/scenario", next).status, 200);

    EXPECT_EQ(Http("GET", "/v1/scenario").body, FromJson(next));
    const auto config = client->Take(Frame::CONFIG);
    ASSERT_TRUE(config);
    EXPECT_EQ(config->body(), R"({"ai_chat":{}})");
    const auto login = client->Login(9);
    ASSERT_TRUE(login);
    EXPECT_TRUE(login->accepted());
}

TEST_F(ControlApiTest, RefusedScenarioChangesNothing) {
    const Json::Value before = Http("GET", "/v1/scenario").body;

    const HttpAnswer answer = Http(
        "PUT", "/v1/scenario", R"({"schema":1,"users":[{"id":0,"name":"A"},{"id":1,"name":""}],"commonConfig":{}})");

    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.Error(),
              "users[0].id: must be a whole number from 1 to 18446744073709551615; users[1].name: must not be empty");
    EXPECT_EQ(Http("GET", "/v1/scenario").body, before);
}

TEST_F(ControlApiTest, BuiltInScenarioIsReadWhateverRunsAndCanBeApplied) {
    const HttpAnswer builtIn = Http("GET", "/v1/scenario/builtIn");

    EXPECT_EQ(builtIn.body["users"][0]["name"].asString(), "Ada Free");
    EXPECT_EQ(Http("PUT", "/v1/scenario", devserver::WriteJson(builtIn.body)).status, 200);
}

TEST_F(ControlApiTest, AnAdPositionIsReplacedAddedAndRemovedWithoutTheOthers) {
    const char* banner = R"({"enableClose":true,"campaigns":[]})";
    ASSERT_EQ(Http("PUT", "/v1/ads/3/7", banner).status, 200);
    ASSERT_EQ(Http("PUT", "/v1/ads/3/8", banner).status, 200);
    ASSERT_EQ(Http("PUT", "/v1/ads/3/7", R"({"adPosition":9,"enableClose":false})").status, 200);
    EXPECT_EQ(Http("GET", "/v1/scenario").body["ads"], FromJson(R"([{"adType":3,"adPosition":7,"enableClose":false},
                           {"adType":3,"adPosition":8,"enableClose":true,"campaigns":[]}])"));

    EXPECT_EQ(Http("PUT", "/v1/ads/3/7", R"({"enableClose":1})").Error(), "ads[0].enableClose: must be true or false");
    EXPECT_EQ(Http("PUT", "/v1/ads/3/x", banner).status, 404);
    ASSERT_EQ(Http("DELETE", "/v1/ads/3/7").status, 200);

    EXPECT_EQ(Http("GET", "/v1/scenario").body["ads"],
              FromJson(R"([{"adType":3,"adPosition":8,"enableClose":true,"campaigns":[]}])"));
}

TEST_F(ControlApiTest, AiChatOfAUserIsSetAndTakenAway) {
    const char* path = "/v1/users/2/aiChat";

    ASSERT_EQ(Http("PUT", path, R"({"entries":[{"scene":5,"allOpen":true}]})").status, 200);
    EXPECT_EQ(Http("GET", "/v1/scenario").body["users"][1]["aiChat"]["entries"][0]["scene"].asUInt(), 5u);

    const HttpAnswer refused = Http("PUT", path, R"({"entries":[{"scene":5,"allOpen":0}]})");
    EXPECT_EQ(refused.status, 400);
    EXPECT_EQ(refused.Error(), "aiChat.entries[0].allOpen: must be true or false");
    EXPECT_EQ(Http("GET", "/v1/scenario").body["users"][1]["aiChat"]["entries"][0]["scene"].asUInt(), 5u);

    ASSERT_EQ(Http("DELETE", path).status, 200);
    EXPECT_FALSE(Http("GET", "/v1/scenario").body["users"][1].isMember("aiChat"));
    EXPECT_EQ(Http("PUT", "/v1/users/77/aiChat", "{}").status, 404);
    EXPECT_EQ(Http("PUT", "/v1/users/x/aiChat", "{}").status, 404);
}

TEST_F(ControlApiTest, ConfigurationIsSentOnceAValueChanges) {
    const auto client = Connected();

    ASSERT_EQ(Http("PUT", "/v1/config/limit", "7").status, 200);
    ASSERT_EQ(Http("PUT", "/v1/config/limit", "7").status, 200);  // no change
    ASSERT_EQ(Http("DELETE", "/v1/config/ai_chat").status, 200);
    ASSERT_EQ(Http("DELETE", "/v1/config/ai_chat").status, 200);  // no change
    ASSERT_TRUE(client->Request(1, 1));

    const auto set = client->Take(Frame::CONFIG);
    const auto removed = client->Take(Frame::CONFIG);
    ASSERT_TRUE(set && removed);
    EXPECT_EQ(set->body(), R"({"ai_chat":{"url_string":"https://chat.example/"},"limit":7})");
    EXPECT_EQ(removed->body(), R"({"limit":7})");
    EXPECT_FALSE(client->Has(Frame::CONFIG));
}

TEST_F(ControlApiTest, ConfigurationOfAnyDepthItTakesLeavesAScenarioThatCanBePutBack) {
    const std::string deepest = std::string(62, '[') + std::string(62, ']');
    ASSERT_EQ(Http("PUT", "/v1/config/deep", deepest).status, 200);

    const std::string whole = devserver::WriteJson(Http("GET", "/v1/scenario").body);

    EXPECT_EQ(Http("PUT", "/v1/scenario", whole).status, 200);
    EXPECT_EQ(Http("PUT", "/v1/config/deep", "[" + deepest + "]").status, 400);
}

struct BadRequestRow {
    const char* name;
    const char* method;
    const char* path;
    const char* body;
    int status;
    const char* error;
};

class BadRequestTest : public DevServerTest, public testing::WithParamInterface<BadRequestRow> {};

TEST_P(BadRequestTest, IsRefusedByKeyAndReason) {
    const BadRequestRow& row = GetParam();

    const HttpAnswer answer = Http(row.method, row.path, row.body);

    EXPECT_EQ(answer.status, row.status);
    EXPECT_THAT(answer.Error(), HasSubstr(row.error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadRequestTest,
    testing::Values(
        BadRequestRow{"UnknownPath", "GET", "/v1/nowhere", "", 404, "path: /v1/nowhere is unknown"},
        BadRequestRow{"EmptyConfigName", "PUT", "/v1/config/", "1", 404, "path"},
        BadRequestRow{"WrongMethod", "DELETE", "/v1/state", "", 400, "method: DELETE is not possible here"},
        BadRequestRow{"PatchedClock", "PATCH", "/v1/clock", "{}", 400, "method: PATCH is not possible here"},
        BadRequestRow{"PushNoJson", "POST", "/v1/push", "x", 400, "not JSON"},
        BadRequestRow{"PushNoObject", "POST", "/v1/push", "[]", 400, "must be an object"},
        BadRequestRow{"PushWithoutCommand", "POST", "/v1/push", R"({"bodyHex":""})", 400,
                      "command: must be given with bodyHex"},
        BadRequestRow{"PushOddHex", "POST", "/v1/push", R"({"command":1,"bodyHex":"a"})", 400,
                      "bodyHex: must be an even"},
        BadRequestRow{"PushUserZero", "POST", "/v1/push", R"({"command":1,"bodyHex":"","user":0})", 400,
                      "user: must be"},
        BadRequestRow{"ClockFraction", "PUT", "/v1/clock", R"({"offsetMs":0.5})", 400,
                      "offsetMs: must be a whole number"},
        BadRequestRow{"ClockFarTooLate", "PUT", "/v1/clock", R"({"offsetMs":9223372036854775807})", 400,
                      "offsetMs: must be"},
        BadRequestRow{"ClockMinusAlone", "PUT", "/v1/clock", R"({"offsetMs":-})", 400, "invalid number"},
        BadRequestRow{"ClockLeadingZeros", "PUT", "/v1/clock", R"({"offsetMs":007})", 400, "invalid number"},
        BadRequestRow{"ScenarioPointAtTheEnd", "PUT", "/v1/scenario", R"({"schema":1.,"users":[]})", 400,
                      "invalid number"},
        BadRequestRow{"PushControlCharacter", "POST", "/v1/push", "{\"command\":1,\"bodyHex\":\"\n\"}", 400,
                      "control character"},
        BadRequestRow{"DropUnknownKey", "POST", "/v1/drop", R"({"users":1})", 400, "users: unknown key"},
        BadRequestRow{"DropWithoutBody", "POST", "/v1/drop", "", 400, "not JSON"},
        BadRequestRow{"FaultNoNumber", "PUT", "/v1/faults", R"({"x":{"error":1}})", 400, "x: the key must be"},
        BadRequestRow{"ConfigNoJson", "PUT", "/v1/config/a", "{", 400, "not JSON"}),
    RowName());

TEST_F(ControlApiTest, TooLargeABodyIsRefusedHoweverLargeItIs) {
    for (const size_t bytes :
         {devserver::CDevServer::kMaxControlBodyBytes + 1, 5 * devserver::CDevServer::kMaxControlBodyBytes}) {
        const HttpAnswer answer = Http("PUT", "/v1/config/a", std::string(bytes, '1'));

        EXPECT_EQ(answer.status, 413) << bytes;
        EXPECT_EQ(answer.Error(), "body: incomplete, or over 8388608 bytes") << bytes;
    }
}

// Sends raw bytes, and returns everything until the server closes the connection.
std::string Exchange(quint16 port, const QByteArray& bytes) {
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), port);
    socket.write(bytes);
    std::string received;
    WaitInRealTime([&] {
        received += socket.readAll().toStdString();
        return socket.error() == QAbstractSocket::RemoteHostClosedError;
    });
    return received + socket.readAll().toStdString();
}

TEST_F(ControlApiTest, ChunkedBodyIsBoundedAsWell) {
    const QByteArray chunk = QByteArray::number(int(devserver::CDevServer::kMaxControlBodyBytes + 1), 16) + "\r\n" +
                             QByteArray(int(devserver::CDevServer::kMaxControlBodyBytes + 1), '1') + "\r\n0\r\n\r\n";

    const std::string answer = Exchange(server.ControlPort(),
                                        "PUT /v1/config/a HTTP/1.1\r\nHost: a\r\nAuthorization: Bearer test-token\r\n"
                                        "Transfer-Encoding: chunked\r\n\r\n" +
                                            chunk);

    EXPECT_THAT(answer, HasSubstr(" 413 "));
    EXPECT_FALSE(Http("GET", "/v1/scenario").body["commonConfig"].isMember("a"));
}

TEST_F(ControlApiTest, WriteWithoutLengthHasAnEmptyBodyAndIsAnsweredAtOnce) {
    const std::string answer =
        Exchange(server.ControlPort(), "POST /v1/drop HTTP/1.1\r\nHost: a\r\nAuthorization: Bearer test-token\r\n\r\n");

    EXPECT_THAT(answer, HasSubstr(" 400 "));
    EXPECT_THAT(answer, HasSubstr("not JSON"));
}

TEST_F(ControlApiTest, FormIsRefused) {
    const std::string answer = Exchange(server.ControlPort(),
                                        "POST /v1/drop HTTP/1.1\r\nHost: a\r\nAuthorization: Bearer test-token\r\n"
                                        "Content-Type: multipart/form-data; boundary=b\r\nContent-Length: 0\r\n\r\n");

    EXPECT_THAT(answer, HasSubstr(" 400 "));
}

TEST_F(ControlApiTest, LongPathIsUnknown) {
    const std::string path = "/v1/config/" + std::string(8000, 'a') + "/b";

    EXPECT_EQ(Http("PUT", path.c_str(), "1").status, 404);
}

}  // namespace
