#pragma once

#include <gmock/gmock.h>

#include <optional>

#include "core/MainThreadPoster.h"
#include "framework/Ports.h"
#include "http/HttpService.h"
#include "support/RawHttpServer.h"
#include "support/RealTime.h"
#include "support/ScriptedLog.h"
#include "support/ScriptedState.h"

/// The HTTP service and a server whose bytes the test writes, over a real connection.
class RealHttpTest : public ::testing::Test {
protected:
    RealHttpTest() {
        host::Ports ports;
        ports.log = &log;
        ports.poster = &poster;
        host::Install(ports);
        environment.SetRelease(false);
        EXPECT_TRUE(server.Listen());
    }

    ~RealHttpTest() override {
        log.Forget();
        host::Uninstall();
    }

    static bool WaitUntil(const std::function<bool()>& condition) { return WaitInRealTime(condition); }

    HttpReqInfo Post(const std::string& path, const std::string& body = "{}") const {
        HttpReqInfo request;
        request.m_enMethod = kHttpPost;
        request.m_strUrl = server.Url() + path;
        request.m_strBody = body;
        return request;
    }

    unsigned long Start(const HttpReqInfo& request) {
        answer.reset();
        return http->Start(
            request,
            [this](unsigned long task, const HttpRspInfo& response) {
                ++calls;
                answeredTask = task;
                answer = response;
            },
            &guard, kHttpWorkPoolDefault, nullptr, nullptr);
    }

    /// Waits for the next request and returns it.
    RawHttpRequest Arrived() {
        EXPECT_TRUE(WaitUntil([this] { return server.Requests().size() > taken; }));
        return server.Requests().size() > taken ? server.Requests()[taken++] : RawHttpRequest();
    }

    /// Starts a request and returns it as it arrived.
    RawHttpRequest Exchange(const HttpReqInfo& request) {
        Start(request);
        return Arrived();
    }

    void ExpectEnd(HttpResult result, int status, const std::string& body = "") {
        ASSERT_TRUE(WaitUntil([this] { return answer.has_value(); }));
        EXPECT_EQ(answer->m_nResult, result);
        EXPECT_EQ(answer->m_nHttpStatusCode, status);
        EXPECT_EQ(answer->m_strBody, body);
        EXPECT_EQ(http->RunningCount(), 0);
    }

    /// Checks that the next request is answered.
    void ExpectItGoesOn() {
        const int before = calls;
        server.Answer(Exchange(Post("/next")).connection, 200, "well");
        ExpectEnd(kHttpOk, 200, "well");
        EXPECT_EQ(calls, before + 1);
    }

    CScriptedLog log;
    CMainThreadPoster poster;
    CScriptedEnvironment environment;
    CRawHttpServer server;
    QObject guard;
    std::unique_ptr<CHttpService> http = std::make_unique<CHttpService>(poster, environment);
    std::optional<HttpRspInfo> answer;
    unsigned long answeredTask = 0;
    int calls = 0;
    size_t taken = 0;
};
