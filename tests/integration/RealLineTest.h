#pragma once

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include "channel/WebSocketChannel.h"
#include "core/LoginSession.h"
#include "core/MainThreadPoster.h"
#include "core/TimeAndRandom.h"
#include "framework/Ports.h"
#include "support/EnvelopeServer.h"
#include "support/RealTime.h"
#include "support/ScriptedLog.h"

/// The client's channel and a server played by the test, over a real connection.
class RealLineTest : public ::testing::Test {
protected:
    RealLineTest() {
        host::Ports ports;
        ports.log = &log;
        ports.poster = &poster;
        host::Install(ports);
        EXPECT_TRUE(server.Listen());
    }

    ~RealLineTest() override {
        log.Forget();
        host::Uninstall();
    }

    static ChannelOptions Quick() {
        ChannelOptions options;
        options.firstRetry = std::chrono::milliseconds(10);
        options.lastRetry = std::chrono::milliseconds(160);
        return options;
    }

    static bool WaitUntil(const std::function<bool()>& condition) { return WaitInRealTime(condition); }

    void Open(CWebSocketChannel& client) {
        client.Open(server.Url(), QByteArray("token"));
        EXPECT_TRUE(WaitUntil([&] { return client.IsConnected() && server.ConnectionCount() == 1; }));
    }

    /// Connections and attempts that ended, with the wait that follows.
    void NoteLosses(CWebSocketChannel& client) {
        QObject::connect(&client, &CWebSocketChannel::Disconnected, &context,
                         [this](const QString&, int retryMs) { waits.push_back(retryMs); });
    }

    static channel::Frame FrameOf(channel::Frame::Kind kind) {
        channel::Frame frame;
        frame.set_kind(kind);
        return frame;
    }

    static channel::Frame Push(uint32_t command) {
        channel::Frame frame = FrameOf(channel::Frame::PUSH);
        frame.set_command(command);
        return frame;
    }

    bool Logged(const std::string& words) {
        const auto lines = log.Lines();
        return std::any_of(lines.begin(), lines.end(),
                           [&words](const LogLine& line) { return line.text.find(words) != std::string::npos; });
    }

    CSCallback Note() {
        return [this](unsigned long session, CSProtoError error, const CSProtoData& data, auto) {
            notes.push_back(std::to_string(session) + " " +
                            (error == kCSProtoOk ? data.m_strData : std::to_string(int(error))));
        };
    }

    CScriptedLog log;
    CMainThreadPoster poster;
    CTimeAndRandom random;
    CEnvelopeServer server;
    QObject context;
    std::vector<std::string> notes;
    std::vector<int> waits;
};
