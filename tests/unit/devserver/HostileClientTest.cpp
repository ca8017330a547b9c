// Clients without the token do not take the server's memory, connections or time.
#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTcpSocket>
#include <QTimer>

#include "DevServerTest.h"
#include "RawClient.h"
#include "RowName.h"
#include "support/RealTime.h"
#include "support/Sanitizers.h"

namespace {

constexpr int kMebibyte = 1024 * 1024;

/// A server process, whose memory is its own.
class HostileClientTest : public testing::Test {
protected:
    HostileClientTest() {
        process.start(QStringLiteral(ZR_DEVSERVER), {QStringLiteral("--child")});
        EXPECT_TRUE(WaitInRealTime([this] { return process.canReadLine(); }));
        greeting = FromJson(process.readLine().trimmed().toStdString());
        memoryBefore = PeakMebibytes();
    }

    ~HostileClientTest() override {
        process.closeWriteChannel();
        EXPECT_TRUE(WaitInRealTime([this] { return process.state() == QProcess::NotRunning; }));
    }

    quint16 Port(const char* name) const { return quint16(greeting[name].asUInt()); }

    long PeakMebibytes() const {
        QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
        EXPECT_TRUE(status.open(QIODevice::ReadOnly));
        const QByteArray text = status.readAll();
        return text.mid(text.indexOf("VmHWM:") + 6, 20).simplified().split(' ').first().toLong() / 1024;
    }

    void ExpectTheMemoryGrewByLessThan(long mebibytes) {
        const long grown = PeakMebibytes() - memoryBefore;
        RecordProperty("GrownMebibytes", int(grown));
        if (!kSlowedDown) {
            EXPECT_LT(grown, mebibytes);
        }
    }

    void ExpectTheServerAnswers() {
        const QByteArray token = "Bearer " + QByteArray::fromStdString(greeting["token"].asString());
        EXPECT_EQ(HttpTo(Port("control"), {{"Authorization", token}}, "GET", "/v1/state", {}).status, 200);
        EXPECT_EQ(HttpTo(Port("http"), {}, "GET", "/pictures/activation.png", {}).status, 200);
        ChannelClient client(Port("channel"), greeting["token"].asString());
        EXPECT_TRUE(client.Take(channel::Frame::CONFIG));
    }

    QProcess process;
    Json::Value greeting;
    long memoryBefore = 0;
};

/// Writes `bytes` again and again, until that many are written or the server closes. Returns how many the system took.
qint64 Flood(QTcpSocket& socket, const QByteArray& bytes, qint64 size) {
    qint64 written = 0;
    while (written < size && socket.state() == QTcpSocket::ConnectedState) {
        written += socket.write(bytes);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten()) {
        }
    }
    return written;
}

struct EndlessRequest {
    const char* name;
    const char* begin;
    const char* repeated;
};

class EndlessRequestTest : public HostileClientTest, public testing::WithParamInterface<EndlessRequest> {};

TEST_P(EndlessRequestTest, ServerClosesWhenTheLinesOfARequestHaveNoEnd) {
    const QByteArray piece = GetParam().repeated;
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), Port("control"));
    ASSERT_TRUE(socket.waitForConnected());
    socket.write(QByteArray("PUT /v1/clock HTTP/1.1\r\nTransfer-Encoding: chunked\r\n") + GetParam().begin);

    const qint64 written = Flood(socket, piece.repeated(kMebibyte / piece.size()), 240 * kMebibyte);

    EXPECT_LT(written, 50 * kMebibyte);
    ExpectTheMemoryGrewByLessThan(10);
    ExpectTheServerAnswers();
}

INSTANTIATE_TEST_SUITE_P(Lines, EndlessRequestTest,
                         testing::Values(EndlessRequest{"HeaderLines", "", "a: b\r\n"},
                                         EndlessRequest{"HeaderLine", "A: ", "a"},
                                         EndlessRequest{"ChunkLine", "\r\n1;", "a"}),
                         RowName());

TEST_F(HostileClientTest, ServerKeepsNoBodyWhenTheTokenIsMissing) {
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    for (int i = 0; i < 10; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        sockets.back()->connectToHost(QStringLiteral("127.0.0.1"), Port("control"));
        ASSERT_TRUE(sockets.back()->waitForConnected());
        sockets.back()->write("PUT /v1/scenario HTTP/1.1\r\nContent-Length: 8388608\r\n\r\n");
        EXPECT_EQ(Flood(*sockets.back(), QByteArray(kMebibyte, ' '), 7 * kMebibyte), 7 * kMebibyte);
    }

    ExpectTheMemoryGrewByLessThan(30);
    ExpectTheServerAnswers();
}

TEST_F(HostileClientTest, ServerKeepsLittleOfEndlessHandshakes) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(std::make_unique<RawClient>(Port("channel")));
        clients.back()->Write("GET / HTTP/1.1\r\n" + QByteArray("a: b\r\n").repeated(128 * 1024));
    }

    for (const auto& client : clients) {
        EXPECT_TRUE(client->WaitUntilClosed());
    }
    ExpectTheMemoryGrewByLessThan(15);
    ExpectTheServerAnswers();
}

class TricklingTest : public HostileClientTest, public testing::WithParamInterface<const char*> {};

TEST_P(TricklingTest, RequestIsAnsweredWhenConnectionsTrickle) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 300; ++i) {
        clients.push_back(std::make_unique<RawClient>(Port(GetParam())));
        clients.back()->Write("GET /v1/state HTTP/1.1\r\nA: ");
    }
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
        for (const auto& client : clients) {
            client->Write("a");
        }
    });
    turn.start(500);

    ExpectTheServerAnswers();
    EXPECT_TRUE(clients.back()->WaitUntilClosed());
}

INSTANTIATE_TEST_SUITE_P(Ports, TricklingTest, testing::Values("control", "http", "channel"),
                         [](const auto& row) { return row.param; });

}  // namespace
