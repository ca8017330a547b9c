#include "WebServer.h"

#include <gmock/gmock.h>

#include "DevServerTest.h"

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

    CWebServer server{"web", 1024, nullptr};
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

TEST_F(WebServerTest, PortIsRefusedWhenAnotherServerHasIt) {
    CWebServer second("second", 1024, nullptr);
    std::string error;
    ASSERT_TRUE(server.Listen(0, error)) << error;

    EXPECT_FALSE(second.Listen(server.Port(), error));
    EXPECT_THAT(error, HasSubstr("second: port " + std::to_string(server.Port())));
}

}  // namespace
