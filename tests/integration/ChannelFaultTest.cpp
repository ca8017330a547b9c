// Faults of a server, and the reaction of the client's channel.
#include <QTcpServer>
#include <QTcpSocket>

#include "RealLineTest.h"
#include "core/ITimeAndRandom.h"
#include "support/Cost.h"
#include "support/RawWebSocketServer.h"
#include "tracing/ChannelRecorder.h"
#include "tracing/TraceLog.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class ChannelFaultTest : public RealLineTest {
protected:
    ChannelFaultTest() { NoteLosses(client); }

    /// Expects that the client receives a push: earlier frames were processed, and the connection is open.
    void ExpectTheConnectionStands() {
        client.BindCallback(
            1, [this](auto, auto, auto, auto) { notes.emplace_back("pushed"); }, &context);
        server.SendToAll(Push(1));
        EXPECT_TRUE(WaitUntil([this] { return !notes.empty(); }));
        EXPECT_THAT(notes, ElementsAre("pushed"));
        EXPECT_THAT(waits, IsEmpty());
    }

    CWebSocketChannel client{poster, random, Quick()};
};

TEST_F(ChannelFaultTest, AFrameOfAnUnknownKindIsLoggedAndDroppedAndTheConnectionKept) {
    Open(client);

    server.SendBytes(0, QByteArray("\x08\x63"));

    ExpectTheConnectionStands();
    EXPECT_THAT(log.Lines(), Contains(Error("Frame dropped: an unknown kind, 2 bytes")));
}

TEST_F(ChannelFaultTest, BytesThatAreNoEnvelopeAreLoggedAndDroppedAndTheConnectionKept) {
    Open(client);

    server.SendBytes(0, QByteArray("\xFF\xFF"));

    ExpectTheConnectionStands();
    EXPECT_THAT(log.Lines(), Contains(Error("Frame dropped: no envelope, 2 bytes")));
}

TEST_F(ChannelFaultTest, AKindThatOnlyClientsSendIsLoggedAndDropped) {
    Open(client);

    server.Send(0, FrameOf(channel::Frame::LOGIN));

    ExpectTheConnectionStands();
    EXPECT_THAT(log.Lines(), Contains(Error(StartsWith("Frame dropped: a kind that only clients send"))));
}

TEST_F(ChannelFaultTest, ATextFrameIsLoggedAndDropped) {
    Open(client);

    server.SendText(0, QStringLiteral("hello"));

    ExpectTheConnectionStands();
    EXPECT_THAT(log.Lines(), Contains(Error("Frame dropped: a text frame")));
}

TEST_F(ChannelFaultTest, AReplyForASessionThatWaitsForNoneIsLoggedAndDropped) {
    Open(client);
    channel::Frame reply = FrameOf(channel::Frame::REPLY);
    reply.set_session(77);
    reply.set_command(20982);

    server.Send(0, reply);

    ExpectTheConnectionStands();
    EXPECT_THAT(log.Lines(), Contains(Error("Frame dropped: a reply for session 77, which waits for none")));
}

TEST_F(ChannelFaultTest, ASecondReplyOfASessionIsDropped) {
    Open(client);
    client.SendCommand(CSProtoData{10, ""}, Note(), &context);
    ASSERT_TRUE(WaitUntil([this] { return server.Frames().size() == 1; }));
    channel::Frame reply = FrameOf(channel::Frame::REPLY);
    reply.set_session(1);
    reply.set_command(10);
    reply.set_body("answer");

    server.Send(0, reply);
    server.Send(0, reply);

    EXPECT_TRUE(WaitUntil([this] { return Logged("a reply for session 1, which waits for none"); }));
    EXPECT_THAT(notes, ElementsAre("1 answer"));
    EXPECT_THAT(log.Lines(), Each(Field(&LogLine::severity, kZRLogInfo)));
}

TEST_F(ChannelFaultTest, AFrameOfFourMebibytesIsTaken) {
    Open(client);
    channel::Frame config = FrameOf(channel::Frame::CONFIG);
    config.set_body(std::string(size_t(kMaxFrameBytes) - 16, 'x'));
    size_t got = 0;
    QObject::connect(&client, &CWebSocketChannel::HostFrameReceived, &context,
                     [&got](const channel::Frame& frame) { got = frame.body().size(); });

    server.Send(0, config);

    EXPECT_TRUE(WaitUntil([&] { return got != 0; }));
    EXPECT_EQ(got, size_t(kMaxFrameBytes) - 16);
}

TEST_F(ChannelFaultTest, PushAboveItsLimitIsLoggedAndDropped) {
    Open(client);
    std::vector<size_t> sizes;
    client.BindCallback(
        1, [&](auto, auto, const CSProtoData& data, auto) { sizes.push_back(data.m_strData.size()); }, &context);
    for (const size_t size : {65'537, 65'536}) {
        channel::Frame push = Push(1);
        push.set_body(std::string(size, 'x'));
        server.Send(0, push);
    }

    EXPECT_TRUE(WaitUntil([&] { return !sizes.empty(); }));

    EXPECT_THAT(sizes, ElementsAre(65'536u));
    EXPECT_THAT(log.Lines(),
                Contains(Error("Frame dropped: the push of command 1 has 65537 bytes, at most 65536 are accepted")));
}

TEST_F(ChannelFaultTest, ReplyAboveTheLimitOfItsCommandFailsTheRequest) {
    Open(client);
    struct Row {
        uint32_t command;
        size_t limit;
    };
    for (const Row& row :
         {Row{10, 64 << 10}, Row{20637, 256 << 10}, Row{20831, 64 << 10}, Row{20981, 16 << 10}, Row{20982, 16 << 10}}) {
        for (const size_t size : {row.limit, row.limit + 1}) {
            notes.clear();
            const auto session = client.SendCommand(
                CSProtoData{row.command, ""},
                [this](auto, CSProtoError error, const CSProtoData& data, auto) {
                    notes.push_back(std::to_string(int(error)) + " " + std::to_string(data.m_strData.size()));
                },
                &context);
            channel::Frame reply = FrameOf(channel::Frame::REPLY);
            reply.set_session(session);
            reply.set_command(row.command);
            reply.set_body(std::string(size, 'x'));
            server.Send(0, reply);
            EXPECT_TRUE(WaitUntil([this] { return !notes.empty(); }));
            EXPECT_THAT(notes, ElementsAre(size == row.limit ? "0 " + std::to_string(size) : "-3 0"));
        }
        EXPECT_TRUE(Logged("the reply to command " + std::to_string(row.command) + " has " +
                           std::to_string(row.limit + 1) + " bytes"));
    }
}

TEST_F(ChannelFaultTest, TwoHundredLargePushesLeaveTheMemoryWhereItWas) {
    CTraceLog traceLog;
    CChannelRecorder recorder(client, traceLog);
    Open(client);
    recorder.BindCallback(
        1, [this](auto, auto, auto, auto) { notes.emplace_back("pushed"); }, &context);
    channel::Frame large = Push(1);
    large.set_body(std::string(size_t(kMaxFrameBytes) - 16, 'x'));
    const std::string bytes = large.SerializeAsString();
    const CCost cost;
    for (int i = 1; i <= 200; ++i) {
        server.SendBytes(0, QByteArray::fromStdString(bytes));
        server.Send(0, Push(1));
        ASSERT_TRUE(WaitUntil([&] { return notes.size() == size_t(i); }));
    }
    // The buffers of both ends for one push.
    cost.CheckMemory(60 << 20);
}

TEST_F(ChannelFaultTest, EndlessAnswerToTheHandshakeIsCut) {
    for (const QByteArray& part : {QByteArray("X-Line: " + QByteArray(1000, 'x') + "\r\n"), QByteArray(1000, 'x')}) {
        QTcpServer endless;
        ASSERT_TRUE(endless.listen(QHostAddress::LocalHost));
        qint64 written = 0;
        QObject::connect(&endless, &QTcpServer::newConnection, &context, [&] {
            QTcpSocket* socket = endless.nextPendingConnection();
            socket->write("HTTP/1.1 101 Switching Protocols\r\n");
            const auto more = [&written, socket, part] {
                if (socket->bytesToWrite() < 1 << 20 && written < 400 << 20) {
                    const QByteArray bytes = part.repeated(1000);
                    written += socket->write(bytes);
                }
            };
            QObject::connect(socket, &QTcpSocket::bytesWritten, &context, more);
            more();
        });
        waits.clear();
        ChannelOptions options = Quick();
        options.connectLimit = 3s;
        options.firstRetry = options.lastRetry = 1h;
        CWebSocketChannel other(poster, random, options);
        NoteLosses(other);
        const CCost cost;

        other.Open(QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(endless.serverPort())), QByteArray("token"));

        EXPECT_TRUE(WaitUntil([this] { return waits.size() == 1; }));
        EXPECT_LT(written, 32 << 20);
        cost.CheckMemory(48 << 20);
        QObject::disconnect(&endless, nullptr, &context, nullptr);
    }
}

TEST_F(ChannelFaultTest, AFrameBeyondFourMebibytesEndsTheConnectionWith1009AndFailsWhatIsInFlight) {
    Open(client);
    client.SendCommand(CSProtoData{10, ""}, Note(), &context);
    ASSERT_TRUE(WaitUntil([this] { return server.Frames().size() == 1; }));

    server.SendBytes(0, QByteArray(kMaxFrameBytes + 1, 'x'));

    EXPECT_TRUE(WaitUntil([this] { return !notes.empty() && !server.CloseCodes().empty(); }));
    EXPECT_THAT(notes, ElementsAre("1 -2"));
    EXPECT_THAT(server.CloseCodes(), ElementsAre(1009));
    // and the client is back
    EXPECT_TRUE(WaitUntil([this] { return client.IsConnected(); }));
}

TEST_F(ChannelFaultTest, ALostConnectionFailsTheRequestsInOrderAndComesBack) {
    Open(client);
    for (int i = 0; i < 3; ++i) {
        client.SendCommand(CSProtoData{10, ""}, Note(), &context);
    }

    server.Close();

    EXPECT_TRUE(WaitUntil([this] { return notes.size() == 3; }));
    EXPECT_THAT(notes, ElementsAre("1 -2", "2 -2", "3 -2"));
    EXPECT_FALSE(client.IsConnected());
    ASSERT_TRUE(server.Listen());
    EXPECT_TRUE(WaitUntil([this] { return client.IsConnected(); }));
}

TEST_F(ChannelFaultTest, ARefusedConnectionIsTriedAgainWithGrowingWaits) {
    server.Close();

    client.Open(server.Url(), QByteArray("token"));

    // 10, 20, 40, 80, 160, 160 ms, each drawn from its upper half
    EXPECT_TRUE(WaitUntil([this] { return waits.size() >= 6; }));
    const std::vector<int> longest = {10, 20, 40, 80, 160, 160};
    for (size_t i = 0; i < longest.size(); ++i) {
        EXPECT_THAT(waits[i], AllOf(Ge(longest[i] / 2), Le(longest[i]))) << i;
    }
    EXPECT_TRUE(Logged("Trying again in"));
}

TEST_F(ChannelFaultTest, BackOffStartsAnewAfterAGoodFrameAndNotAfterAMereConnection) {
    Open(client);
    waits.clear();
    // connected and cut again, three times over, with not one good frame between
    for (size_t i = 1; i <= 3; ++i) {
        server.Close();
        ASSERT_TRUE(WaitUntil([&] { return waits.size() >= i; }));
        ASSERT_TRUE(server.Listen());
        ASSERT_TRUE(WaitUntil([this] { return client.IsConnected() && server.ConnectionCount() == 1; }));
    }
    EXPECT_GE(waits.back(), 20);

    server.SendToAll(Push(5));
    client.BindCallback(
        5, [this](auto, auto, auto, auto) { notes.emplace_back("pushed"); }, &context);
    server.SendToAll(Push(5));
    ASSERT_TRUE(WaitUntil([this] { return !notes.empty(); }));
    server.Close();
    const size_t before = waits.size();
    ASSERT_TRUE(WaitUntil([&] { return waits.size() > before; }));

    EXPECT_LE(waits[before], 10);
}

TEST_F(ChannelFaultTest, ABadFrameDoesNotStartTheBackOffAnew) {
    Open(client);
    for (size_t i = 1; i <= 3; ++i) {
        server.SendToAll(FrameOf(channel::Frame::REQUEST));
        ASSERT_TRUE(WaitUntil([this] { return Logged("a kind that only clients send"); }));
        log.Forget();
        server.Close();
        ASSERT_TRUE(WaitUntil([&] { return waits.size() >= i; }));
        ASSERT_TRUE(server.Listen());
        ASSERT_TRUE(WaitUntil([this] { return client.IsConnected() && server.ConnectionCount() == 1; }));
    }

    EXPECT_GE(waits.back(), 20);
}

TEST_F(ChannelFaultTest, AServerThatAcceptsAndSaysNothingIsGivenUp) {
    // it listens, and nobody takes the connection any further
    QTcpServer mute;
    ASSERT_TRUE(mute.listen(QHostAddress::LocalHost));
    ChannelOptions options = Quick();
    options.connectLimit = 50ms;
    CWebSocketChannel impatient(poster, random, options);
    NoteLosses(impatient);

    impatient.Open(QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(mute.serverPort())), QByteArray("token"));

    EXPECT_TRUE(WaitUntil([this] { return !waits.empty(); }));
    EXPECT_TRUE(Logged("the server does not answer"));
}

TEST_F(ChannelFaultTest, AConnectionThatWentSilentIsGivenUp) {
    // a server that accepts the connection and never sends anything, not even a pong
    CRawWebSocketServer mute;
    mute.AnswerPings(false);
    ASSERT_TRUE(mute.Listen());
    ChannelOptions options = Quick();
    options.pingEvery = 20ms;
    options.silenceLimit = 60ms;
    CWebSocketChannel attentive(poster, random, options);
    NoteLosses(attentive);

    attentive.Open(mute.Url(), QByteArray("token"));

    EXPECT_TRUE(WaitUntil([this] { return !waits.empty(); }));
    EXPECT_TRUE(Logged("the server has gone silent"));
}

TEST_F(ChannelFaultTest, PingsKeepAQuietConnection) {
    ChannelOptions options = Quick();
    options.pingEvery = 10ms;
    options.silenceLimit = 100ms;
    CWebSocketChannel attentive(poster, random, options);
    NoteLosses(attentive);
    Open(attentive);

    const QDeadlineTimer quiet(400);
    EXPECT_TRUE(WaitUntil([&] { return quiet.hasExpired(); }));

    EXPECT_THAT(waits, IsEmpty());
    EXPECT_TRUE(attentive.IsConnected());
}

TEST_F(ChannelFaultTest, AClosedChannelStaysClosedAndSaysSoToWhoeverSends) {
    Open(client);
    client.SendCommand(CSProtoData{10, ""}, Note(), &context);

    client.Close();
    EXPECT_THAT(notes, IsEmpty());
    client.SendCommand(CSProtoData{11, ""}, Note(), &context);
    EXPECT_THAT(notes, IsEmpty());

    EXPECT_TRUE(WaitUntil([this] { return notes.size() == 2; }));
    EXPECT_THAT(notes, ElementsAre("1 -2", "2 -2"));
    EXPECT_THAT(waits, IsEmpty());
    EXPECT_FALSE(client.IsConnected());
}

TEST_F(ChannelFaultTest, ARequestThatIsTooLargeFailsAloneAndLater) {
    Open(client);
    client.SendCommand(CSProtoData{10, "small"}, Note(), &context);

    client.SendCommand(CSProtoData{10, std::string(size_t(kMaxFrameBytes), 'x')}, Note(), &context);
    EXPECT_THAT(notes, IsEmpty());

    ASSERT_TRUE(WaitUntil([this] { return notes.size() == 1 && server.Frames().size() == 1; }));
    EXPECT_THAT(notes, ElementsAre("2 -2"));
    EXPECT_TRUE(Logged("is too large to be sent"));
    EXPECT_TRUE(client.IsConnected());
}

TEST_F(ChannelFaultTest, AConnectionMayBeLostInALoopThatACallbackOpened) {
    Open(client);
    client.BindCallback(
        1,
        [this](auto, auto, auto, auto) {
            server.Close();
            EXPECT_TRUE(WaitUntil([this] { return !waits.empty(); }));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            notes.emplace_back("done");
        },
        &context);

    server.SendToAll(Push(1));

    EXPECT_TRUE(WaitUntil([this] { return !notes.empty(); }));
    ASSERT_TRUE(server.Listen());
    EXPECT_TRUE(WaitUntil([this] { return client.IsConnected(); }));
}

TEST_F(ChannelFaultTest, WhoAsksAgainInsideAFailureIsFailedOncePerRequest) {
    int failures = 0;
    std::function<void()> ask = [&] {
        client.SendCommand(
            CSProtoData{10, ""},
            [&](auto, CSProtoError error, auto, auto) {
                EXPECT_EQ(error, kCSProtoDisconnected);
                if (++failures < 3) {
                    const int before = failures;
                    ask();
                    EXPECT_EQ(failures, before);
                }
            },
            &context);
    };

    ask();

    EXPECT_TRUE(WaitUntil([&] { return failures == 3; }));
}

TEST_F(ChannelFaultTest, RequestsFailAtTheirOwnTimeLimitsAndNoneBefore) {
    ChannelOptions options = Quick();
    options.requestLimit = 150ms;
    CWebSocketChannel limited(poster, random, options);
    Open(limited);
    limited.SendCommand(CSProtoData{10, ""}, Note(), &context);
    const QDeadlineTimer apart(75);
    ASSERT_TRUE(WaitUntil([&] { return apart.hasExpired(); }));
    limited.SendCommand(CSProtoData{10, ""}, Note(), &context);
    bool together = false;

    EXPECT_TRUE(WaitUntil([&] { return !notes.empty(); }));
    together = notes.size() == 2;

    EXPECT_FALSE(together);
    EXPECT_TRUE(WaitUntil([&] { return notes.size() == 2; }));
    EXPECT_THAT(notes, ElementsAre("1 -1", "2 -1"));
}

/// The highest number each time.
class CHighestRandom : public ITimeAndRandom {
public:
    uint32_t RandomNumber() override { return 0xFFFFFFFF; }
};

TEST_F(ChannelFaultTest, TheWaitsAreDrawn) {
    CHighestRandom highest;
    CWebSocketChannel late(poster, highest, Quick());
    NoteLosses(late);
    server.Close();

    late.Open(server.Url(), QByteArray("token"));

    EXPECT_TRUE(WaitUntil([this] { return waits.size() >= 2; }));
    EXPECT_THAT(waits, ElementsAre(9, 19));
}

}  // namespace
