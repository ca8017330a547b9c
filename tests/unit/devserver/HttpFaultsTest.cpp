#include "HttpFaults.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTcpSocket>
#include <algorithm>
#include <cstring>

#include "AdServerTest.h"
#include "ConnectionThreadPool.h"
#include "RowName.h"
#include "support/RealTime.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const QString kExpose = QStringLiteral("/ad/expose");
const std::string kSound = R"({"code":0})";

class HttpFaultsTest : public AdServerTest {
protected:
    void Strike(const char* path, const std::string& fault) {
        EXPECT_EQ(Http("PUT", "/v1/httpFaults", std::string("{\"") + path + "\":" + fault + "}").status, 200);
    }

    WebReply Expose() { return Web("POST", kExpose, kExposure); }

    int Counted() { return Http("GET", "/v1/reports").body["counted"].asInt(); }
};

struct FaultRow {
    const char* name;
    const char* fault;
    int status;
    const char* body;
};

class HttpFaultTest : public HttpFaultsTest, public testing::WithParamInterface<FaultRow> {};

TEST_P(HttpFaultTest, ChangesTheAnswerSoManyTimesAndWearsOff) {
    const FaultRow& row = GetParam();
    Strike("/ad/expose", row.fault);

    for (int time = 0; time < 2; ++time) {
        const WebReply faulty = Expose();
        EXPECT_EQ(faulty.status, row.status);
        EXPECT_EQ(faulty.body, row.body);
        EXPECT_EQ(faulty.announced, qint64(faulty.body.size()));
    }
    EXPECT_EQ(Expose().status, 200);
    EXPECT_EQ(Expose().body, kSound);
    EXPECT_EQ(Http("GET", "/v1/http").body["http"][0]["status"].asInt(), row.status);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HttpFaultTest,
    testing::Values(FaultRow{"Status", R"({"status":503,"times":2})", 503, R"({"code":0})"},
                    FaultRow{"StatusBelow300", R"({"status":201,"times":2})", 201, R"({"code":0})"},
                    FaultRow{"Code", R"({"code":-7,"times":2})", 200, R"({"code":-7})"},
                    FaultRow{"Body", R"({"body":"{\"code\":\"x\"}","times":2})", 200, R"({"code":"x"})"},
                    FaultRow{"BodyOfBytes", R"({"bodyHex":"fffe","times":2})", 200, "\xff\xfe"},
                    FaultRow{"EmptyBody", R"({"body":"","times":2})", 200, ""},
                    FaultRow{"BodyBeforeCode", R"({"body":"b","code":5,"status":500,"times":2})", 500, "b"}),
    RowName());

TEST_F(HttpFaultsTest, AnswerWithoutDataHasTheRest) {
    Strike("/ad/search", R"({"noData":true,"code":3})");

    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch).body, R"({"code":3,"message":""})");
}

TEST_F(HttpFaultsTest, CutBodyIsAnnouncedWholeAndTheLineEnds) {
    for (const int bytes : {0, 4, 9}) {
        Strike("/ad/expose", R"({"cutBytes":)" + std::to_string(bytes) + "}");

        const WebReply answer = Expose();

        EXPECT_EQ(answer.error, QNetworkReply::RemoteHostClosedError) << bytes;
        EXPECT_EQ(answer.announced, 10);
        EXPECT_EQ(answer.body, kSound.substr(0, size_t(bytes)));
    }
}

TEST_F(HttpFaultsTest, CutBehindTheEndCutsNothing) {
    Strike("/ad/expose", R"({"cutBytes":10})");

    EXPECT_EQ(Expose().error, QNetworkReply::NoError);
}

TEST_F(HttpFaultsTest, ExtraBytesFollowTheBodyUnannounced) {
    Strike("/ad/expose", R"({"extraBytes":100000})");
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), server.HttpPort());
    socket.write("POST /ad/expose HTTP/1.1\r\nHost: a\r\nContent-Length: " +
                 QByteArray::number(int(strlen(kExposure))) + "\r\n\r\n" + kExposure);
    ASSERT_TRUE(WaitInRealTime([&] { return socket.error() == QAbstractSocket::RemoteHostClosedError; }));

    const QByteArray all = socket.readAll();

    EXPECT_THAT(all.toStdString(), HasSubstr("Content-Length: 10\r\n"));
    EXPECT_EQ(all.mid(all.indexOf("\r\n\r\n") + 4), QByteArray::fromStdString(kSound) + QByteArray(100'000, ' '));
}

TEST_F(HttpFaultsTest, HugeAnswerIsTheAnswerAndBlanks) {
    Strike("/ad/expose", R"({"hugeMiB":3})");

    const WebReply answer = Expose();

    EXPECT_EQ(answer.announced, 3 * 1024 * 1024);
    EXPECT_EQ(answer.body, kSound + std::string(3 * 1024 * 1024 - kSound.size(), ' '));
}

TEST_F(HttpFaultsTest, RedirectNamesAPlaceAndHasTheStatusOfOneUnlessGiven) {
    Strike("/ad/expose", R"({"redirect":"http://elsewhere.example/a?b=c"})");
    EXPECT_EQ(Expose().status, 302);
    EXPECT_EQ(Expose().location, "http://elsewhere.example/a?b=c");

    Strike("/ad/expose", R"({"redirect":"/a","status":307})");
    EXPECT_EQ(Expose().status, 307);
}

TEST_F(HttpFaultsTest, DelayedAnswerComesAfterItsTimeAndKeepsNobodyElseWaiting) {
    Strike("/ad/expose", R"({"delayMs":200,"times":1})");
    QElapsedTimer elapsed;
    elapsed.start();
    const auto late = Start("POST", kExpose, kExposure);
    ASSERT_TRUE(WaitInRealTime([this] { return Http("GET", "/v1/http").body["http"].size() == 1; }));

    EXPECT_EQ(Expose().body, kSound);

    EXPECT_EQ(Finish(*late).body, kSound);
    EXPECT_GE(elapsed.elapsed(), 200);
}

TEST_F(HttpFaultsTest, SilentAnswersKeepNobodyElseWaitingNorTheServersEnd) {
    Strike("/ad/expose", R"({"silent":true,"times":40})");
    QObject owner;
    std::vector<std::unique_ptr<QNetworkReply>> silent;
    for (int i = 0; i < 40; ++i) {
        // One manager sends only a few requests at a time.
        auto* network = new QNetworkAccessManager(&owner);
        QNetworkRequest request(QUrl(QStringLiteral("http://127.0.0.1:%1/ad/expose").arg(server.HttpPort())));
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        silent.emplace_back(network->post(request, kExposure));
    }
    ASSERT_TRUE(WaitInRealTime([this] { return Http("GET", "/v1/http").body["http"].size() == 40; }));
    EXPECT_EQ(Http("GET", "/v1/http").body["http"][39]["status"].asInt(), 0);

    EXPECT_EQ(Expose().body, kSound);

    for (const auto& reply : silent) {
        EXPECT_FALSE(reply->isFinished());
    }
}

TEST_F(HttpFaultsTest, WhoComesWhileAllPlacesAreTakenWaitsInLine) {
    constexpr size_t kInLine = 100;
    Strike("/ad/expose", R"({"silent":true})");
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    for (size_t i = 0; i < devserver::CConnectionThreadPool::kMaxThreads + kInLine; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        sockets.back()->connectToHost(QStringLiteral("127.0.0.1"), server.HttpPort());
        sockets.back()->write("POST /ad/expose HTTP/1.1\r\nHost: a\r\nContent-Length: " +
                              QByteArray::number(int(strlen(kExposure))) + "\r\n\r\n" + kExposure);
    }

    EXPECT_TRUE(WaitInRealTime([&] {
        return std::all_of(sockets.begin(), sockets.end(),
                           [](const auto& socket) { return socket->state() == QAbstractSocket::ConnectedState; });
    }));
}

TEST_F(HttpFaultsTest, FaultOfOnePathLeavesTheOthersAlone) {
    Strike("/pictures/card-invite.png", R"({"status":500,"body":"no picture"})");

    EXPECT_EQ(Web("GET", QStringLiteral("/pictures/card-invite.png")).body, "no picture");
    EXPECT_EQ(Web("GET", QStringLiteral("/pictures/card-member.png")).status, 200);
    EXPECT_EQ(Expose().status, 200);
}

TEST_F(HttpFaultsTest, TheFaultOfOnePathIsSetAndTakenAwayWithoutTheOthers) {
    Strike("/ad/search", R"({"status":500})");

    ASSERT_EQ(Http("PUT", "/v1/httpFaults/ad/expose", R"({"status":501})").status, 200);
    EXPECT_EQ(Expose().status, 501);
    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch).status, 500);

    ASSERT_EQ(Http("DELETE", "/v1/httpFaults/ad/expose").status, 200);
    EXPECT_EQ(Expose().status, 200);
    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch).status, 500);

    ASSERT_EQ(Http("PUT", "/v1/httpFaults", "{}").status, 200);
    EXPECT_EQ(Web("POST", QStringLiteral("/ad/search"), kSearch).status, 200);

    EXPECT_EQ(Http("PUT", "/v1/httpFaults/ad/seek", R"({"status":500})").status, 404);
    EXPECT_EQ(Http("DELETE", "/v1/httpFaults/ad/seek").status, 404);
    EXPECT_EQ(Http("PUT", "/v1/httpFaults/ad/expose", R"({"stats":500})").status, 400);
    EXPECT_EQ(Http("PUT", "/v1/httpFaults/pictures/a.png", R"({"code":500})").Error(), "code: a picture has none");
}

TEST_F(HttpFaultsTest, ActiveFaultsAreReadAsTheyAreWrittenWithTheUsesThatAreLeft) {
    EXPECT_EQ(Http("GET", "/v1/httpFaults").body, FromJson("{}"));
    Strike("/ad/expose", R"({"status":501,"cutBytes":4294967295,"times":2})");
    Expose();

    const Json::Value faults = Http("GET", "/v1/httpFaults").body;

    EXPECT_EQ(faults, FromJson(R"({"/ad/expose":{"status":501,"cutBytes":4294967295,"times":1}})"));
    Expose();
    EXPECT_EQ(Http("GET", "/v1/httpFaults").body, FromJson("{}"));
}

struct EffectRow {
    const char* name;
    const char* fault;
    int counted;
};

class ReportFaultTest : public HttpFaultsTest, public testing::WithParamInterface<EffectRow> {};

TEST_P(ReportFaultTest, CountsWhatTheClientIsNotToldToSendAgain) {
    Strike("/report/events", GetParam().fault);

    Web("POST", QStringLiteral("/report/events"), Report("a"));

    EXPECT_EQ(Counted(), GetParam().counted);
    ASSERT_EQ(Http("PUT", "/v1/httpFaults", "{}").status, 200);
    EXPECT_EQ(Web("POST", QStringLiteral("/report/events"), Report("a")).body, R"({"accepted":["a"]})");
    EXPECT_EQ(Counted(), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, ReportFaultTest,
                         testing::Values(EffectRow{"Refused", R"({"status":503})", 0},
                                         EffectRow{"Redirected", R"({"redirect":"http://a.example/"})", 0},
                                         EffectRow{"Code", R"({"code":1})", 0},
                                         EffectRow{"OtherSuccess", R"({"status":202})", 1},
                                         EffectRow{"Cut", R"({"cutBytes":3})", 1},
                                         EffectRow{"Garbage", R"({"body":"?"})", 1}),
                         RowName());

struct BadRow {
    const char* name;
    const char* text;
    const char* error;
};

class BadHttpFaultTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadHttpFaultTest, IsRefusedByKeyAndReason) {
    devserver::Errors errors;

    EXPECT_FALSE(devserver::ReadResponseFaults(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre(StartsWith(GetParam().error)));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadHttpFaultTest,
    testing::Values(
        BadRow{"NoObject", "[]", "must be an object"},
        BadRow{"UnknownPath", R"({"/ad/seek":{"status":500}})",
               "/ad/seek: the key must be a path that the server answers on"},
        BadRow{"NoName", R"({"/pictures/":{"status":500}})", "/pictures/: the key must be"},
        BadRow{"UnknownKey", R"({"/ad/check":{"stat":500,"status":500}})", "/ad/check.stat: unknown key"},
        BadRow{"NoEffect", R"({"/ad/check":{"times":1}})", "/ad/check: must hold a field other than times"},
        BadRow{"StatusTooLow", R"({"/ad/check":{"status":199}})",
               "/ad/check.status: must be a whole number from 200 to 599"},
        BadRow{"DelayTooLong", R"({"/ad/check":{"delayMs":600001}})",
               "/ad/check.delayMs: must be a whole number from 0 to 600000"},
        BadRow{"CutNegative", R"({"/ad/check":{"cutBytes":-1}})", "/ad/check.cutBytes: must be a whole number"},
        BadRow{"TwoBodies", R"({"/ad/check":{"body":"","bodyHex":""}})",
               "/ad/check: must hold at most one of body, bodyHex"},
        BadRow{"OddHex", R"({"/ad/check":{"bodyHex":"a"}})", "/ad/check.bodyHex: must be an even number"},
        BadRow{"CodePastTheRange", R"({"/ad/check":{"code":2147483648}})", "/ad/check.code: must be a whole number"},
        BadRow{"CodeOfAPicture", R"({"/pictures/a":{"code":1}})", "/pictures/a.code: a picture has none"},
        BadRow{"NoDataOfAPicture", R"({"/pictures/a":{"noData":true}})", "/pictures/a.noData: a picture has none"},
        BadRow{"NoDataNumber", R"({"/ad/check":{"noData":1}})", "/ad/check.noData: must be true or false"},
        BadRow{"TooMuchExtra", R"({"/ad/check":{"extraBytes":16777217}})",
               "/ad/check.extraBytes: must be a whole number from 0 to 16777216"},
        BadRow{"TooHuge", R"({"/ad/check":{"hugeMiB":4097}})",
               "/ad/check.hugeMiB: must be a whole number from 0 to 4096"},
        BadRow{"RedirectEmpty", R"({"/ad/check":{"redirect":""}})", "/ad/check.redirect: must not be empty"},
        BadRow{"RedirectWithALine", R"({"/ad/check":{"redirect":"http://a\r\nb: c"}})",
               "/ad/check.redirect: must be of visible ASCII characters"},
        BadRow{"SilentNumber", R"({"/ad/check":{"silent":1}})", "/ad/check.silent: must be true or false"},
        BadRow{"TimesZero", R"({"/ad/check":{"status":500,"times":0}})",
               "/ad/check.times: must be a whole number from 1 to 1000000"}),
    RowName());

}  // namespace
