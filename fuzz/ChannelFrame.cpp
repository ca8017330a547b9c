// Input: the server's frames on the channel, each after one byte with its length.
#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

#include "FuzzTarget.h"
#include "channel/WebSocketChannel.h"
#include "core/LoginSession.h"
#include "core/ServerDocument.h"
#include "core/TimeAndRandom.h"
#include "support/ScriptedHost.h"

namespace {

std::vector<QByteArray> Split(const uint8_t* data, size_t size) {
    std::vector<QByteArray> frames;
    while (size > 0) {
        const size_t length = std::min<size_t>(data[0], size - 1);
        frames.emplace_back(reinterpret_cast<const char*>(data + 1), int(length));
        data += 1 + length;
        size -= 1 + length;
    }
    return frames;
}

void CheckDecoding(const QByteArray& bytes) {
    std::string reason;
    const auto frame = DecodeServerFrame(bytes, reason);
    EXPECT_EQ(frame.has_value(), reason.empty()) << reason;
    if (frame) {
        // A decoded frame survives encoding.
        const QByteArray written = EncodeFrame(*frame);
        const auto again = DecodeServerFrame(written, reason);
        EXPECT_TRUE(again && EncodeFrame(*again) == written);
    }
}

/// The client's end of the channel, without a network.
struct Client {
    explicit Client(CScriptedHost& host)
        : channel(host.poster.Unrecorded(), host.timeAndRandom),
          session(channel),
          config(host.store),
          links(host.store) {
        QObject::connect(&channel, &CWebSocketChannel::HostFrameReceived, &context,
                         [this](const channel::Frame& frame) { OnHostFrame(frame); });
    }

    void OnHostFrame(const channel::Frame& frame) {
        switch (frame.kind()) {
            case channel::Frame::LOGIN_ANSWER:
                session.Receive(frame);
                timeAndRandom.SetServerTimeMs(frame.login_answer().server_time_ms());
                return;
            case channel::Frame::CONFIG:
                config.Receive(frame.body());
                return;
            case channel::Frame::LINKS:
                links.Receive(frame.body());
                return;
            case channel::Frame::CLOCK:
                timeAndRandom.SetServerTimeMs(frame.server_time_ms());
                EXPECT_GT(timeAndRandom.ServerTimeMs(), 0);
                EXPECT_LT(timeAndRandom.ServerTimeMs(), std::numeric_limits<int64_t>::max() / 2);
                return;
            default:
                ADD_FAILURE() << "a frame that is none of the host's: " << int(frame.kind());
        }
    }

    CWebSocketChannel channel;
    CLoginSession session;
    CCommonConfig config;
    CLinkTable links;
    CTimeAndRandom timeAndRandom;
    QObject context;
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CScriptedHost host;
    Client client(host);
    constexpr size_t kRequests = 3;
    std::vector<int> answers(kRequests + 1);  // by session
    // A listener may unbind during a push.
    QObject listener;
    client.channel.BindCallback(
        20145, [&](auto, auto, auto, auto) { client.channel.UnbindCallback(&listener); }, &listener);
    client.session.Login(12345, "device", 2);

    for (const QByteArray& frame : Split(data, size)) {
        CheckDecoding(frame);
        client.channel.Receive(frame);
    }
    // Received frames are delivered later, when these requests are already waiting.
    for (size_t i = 0; i < kRequests; ++i) {
        client.channel.SendCommand(
            CSProtoData{20982, {}}, [&answers](auto session, auto, auto, auto) { ++answers.at(session); },
            &client.context);
    }
    // The channel is not connected, so requests without a reply fail. Each request has exactly one result.
    host.time.Settle();

    EXPECT_EQ(std::count(answers.begin() + 1, answers.end(), 1), int(kRequests));
    EXPECT_TRUE(client.session.UserId() == 0 || client.session.UserId() == 12345);
    host.log.Forget();
    host.store.Forget();
    return 0;
}
