#include "WebServer.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTimer>

#include "DevServerTest.h"
#include "RawClient.h"
#include "support/RealTime.h"

namespace {

using devserver::CWebServer;
using devserver::WebAnswer;
using devserver::WebRequest;
using testing::HasSubstr;

class WebServerTest : public testing::Test {
protected:
    HttpAnswer Ask(const char* method, const char* path) {
        std::string error;
        EXPECT_TRUE(server.Port() != 0 || server.Listen(0, error)) << error;
        return HttpTo(server.Port(), {}, method, path, {});
    }

    static CWebServer::Handler Status(int status) {
        return [status](const WebRequest& request) {
            return CWebServer::Refusal(status, testing::PrintToString(request.matches));
        };
    }

    /// Connects and sends the beginning of a request. The server serves it by then.
    std::unique_ptr<RawClient> Begun(const QByteArray& bytes) {
        auto client = std::make_unique<RawClient>(server.Port());
        client->Write(bytes);
        Ask("GET", "/");  // is accepted after that client
        return client;
    }

    CWebServer server{"web", 1024, nullptr, kRequestTime};
    static constexpr std::chrono::milliseconds kRequestTime{3'000};
};

TEST_F(WebServerTest, FirstMatchingRouteAnswersWithItsGroups) {
    server.Route("PUT", "/a/([^/]+)/([^/]+)", Status(201));
    server.Route(nullptr, "/a/([^/]+)/b", Status(202));
    server.Route(nullptr, CWebServer::kAnyPath, Status(203));

    EXPECT_EQ(Ask("PUT", "/a/1/b").status, 201);
    EXPECT_EQ(Ask("PUT", "/a/1/b").Error(), R"({ "1", "b" })");
    EXPECT_EQ(Ask("POST", "/a/1/b").status, 202);
    EXPECT_EQ(Ask("PUT", "/a/1/b/").status, 203);
    for (const char* method : {"GET", "PUT", "POST", "PATCH", "DELETE", "OPTIONS"}) {
        EXPECT_EQ(Ask(method, "/c").status, 203) << method;
    }
}

TEST_F(WebServerTest, RequestWithoutARouteIsRefused) {
    EXPECT_EQ(Ask("GET", "/").status, 404);
    EXPECT_EQ(Ask("GET", "/").Error(), "request: not acceptable");
}

TEST_F(WebServerTest, StopFromAHandlerEndsTheServerAndAnswersTheRequest) {
    server.Route("GET", "/", [this](const WebRequest&) {
        server.Stop();  // this request is the one that could block it
        return WebAnswer();
    });

    EXPECT_EQ(Ask("GET", "/").status, 503);
}

TEST_F(WebServerTest, ExceptionOfAHandlerIsAnswered) {
    server.Route("GET", "/", [](const WebRequest&) -> WebAnswer { throw std::runtime_error("broken"); });

    EXPECT_EQ(Ask("GET", "/").status, 500);
    EXPECT_EQ(Ask("GET", "/").Error(), "broken");
}

TEST_F(WebServerTest, RequestIsEndedWhenItTakesTooLong) {
    ASSERT_EQ(Ask("GET", "/").status, 404);
    const auto client = Begun("GET / HTTP/1.1\r\nA: ");
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] { client->Write("a"); });
    turn.start(100);

    EXPECT_TRUE(client->WaitUntilClosed());
}

TEST_F(WebServerTest, StopDoesNotWaitForAnUnfinishedRequest) {
    ASSERT_EQ(Ask("GET", "/").status, 404);
    const auto client = Begun("GET / HTTP/1.1\r\nA: ");
    QElapsedTimer time;
    time.start();

    server.Stop();

    EXPECT_LT(time.elapsed(), 1'000);
}

TEST_F(WebServerTest, BodyIsRefusedWhenTheUnfinishedOnesAreTooLarge) {
    server.Route("POST", "/", Status(200));
    const auto ask = [this] { return HttpTo(server.Port(), {}, "POST", "/", std::string(1'000, ' ')).status; };
    ASSERT_EQ(Ask("GET", "/").status, 404);
    ASSERT_EQ(ask(), 200);
    std::vector<std::unique_ptr<RawClient>> clients;
    for (size_t i = 0; i < CWebServer::kMaxBodies; ++i) {
        clients.push_back(Begun("POST / HTTP/1.1\r\nContent-Length: 1024\r\n\r\n" + QByteArray(1'000, ' ')));
    }

    EXPECT_TRUE(WaitInRealTime([&] { return ask() == 503; }));
    clients.clear();
    EXPECT_TRUE(WaitInRealTime([&] { return ask() == 200; }));
}

TEST_F(WebServerTest, PortIsRefusedWhenAnotherServerHasIt) {
    CWebServer second("second", 1024, nullptr);
    std::string error;
    ASSERT_TRUE(server.Listen(0, error)) << error;

    EXPECT_FALSE(second.Listen(server.Port(), error));
    EXPECT_THAT(error, HasSubstr("second: port " + std::to_string(server.Port())));
}

}  // namespace
