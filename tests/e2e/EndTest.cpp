// The end of the client: by a signal, and while something hangs.
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

#include "ClientProcess.h"

using namespace ::testing;

namespace {

constexpr int kMaxEndMs = 2'000;

class EndTest : public ClientProcessTest {
protected:
    void ExpectAnOrderlyEndInTime(const QElapsedTimer& since) {
        EXPECT_TRUE(WaitInRealTime([this] { return HasEnded(); }));
        EXPECT_LE(since.elapsed(), kMaxEndMs);
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_THAT(LogText(), HasSubstr("User 501 logged out"));
    }

    QElapsedTimer clock;
};

struct Signal {
    const char* name;
    int number;
};

class EndSignalTest : public EndTest, public WithParamInterface<Signal> {};

TEST_P(EndSignalTest, EndsTheClientInOrder) {
    options.scenario = WriteFile("popup.json", R"({"schema":1,"users":[{"id":501,"name":"One"}],"ads":[
        {"adType":2,"adPosition":42,"showDuration":600,"showInterval":0,"showIntervalType":1,"enableClose":true,
         "campaigns":[{"id":"701","startInS":-100,"endInS":10000,"expireInS":20000,
           "image":"card-invite.png","popupType":2,"showAreas":[500],"schema":"https://ads.example/1"}]}],
        "commonConfig":{}})");
    ASSERT_NO_FATAL_FAILURE(StartOwnServer());
    StartProgram({QStringLiteral("--server"), serverOption});
    ASSERT_TRUE(WaitForLogText("Show ad popup success. adType = 2, adPosition = 42, adId = 701"));

    clock.start();
    Send(GetParam().number);

    ExpectAnOrderlyEndInTime(clock);
    EXPECT_THAT(LogText(), HasSubstr("Closed ad by "));
    EXPECT_THAT(LogText(), HasSubstr("The client ends"));
    EXPECT_THAT(server->HttpTo("/ad/expose"), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Signals, EndSignalTest,
                         Values(Signal{"Terminate", SIGTERM}, Signal{"Interrupt", SIGINT}, Signal{"HangUp", SIGHUP}),
                         [](const auto& row) { return row.param.name; });

TEST_F(EndTest, ServerThatHangsDoesNotDelayTheEnd) {
    StartProgram();
    ASSERT_TRUE(WaitForLogText("User 501 logged in"));
    const auto servers = Children("zrdevserver");
    ASSERT_THAT(servers, SizeIs(1));
    ASSERT_EQ(kill(servers[0], SIGSTOP), 0);

    clock.start();
    Send(SIGTERM);

    ExpectAnOrderlyEndInTime(clock);
    EXPECT_NE(kill(servers[0], 0), 0);
}

TEST_F(EndTest, NameLookupThatHangsDoesNotDelayTheEnd) {
    options.scenario = WriteFile("popup.json", R"({"schema":1,"users":[{"id":501,"name":"One"}],"ads":[
        {"adType":2,"adPosition":42,"showDuration":600,"showInterval":0,"showIntervalType":1,"enableClose":true,
         "campaigns":[{"id":"701","startInS":-100,"endInS":10000,"expireInS":20000,
           "image":"https://hangs.example/a.png","popupType":2,"showAreas":[500],"schema":"https://ads.example/1"}]}],
        "commonConfig":{}})");
    const QString lookups = folder.filePath(QStringLiteral("lookups"));
    environment.insert(QStringLiteral("LD_PRELOAD"), QString::fromUtf8(build::kHangs));
    environment.insert(QStringLiteral("ZR_LOOKUP_FILE"), lookups);
    StartProgram();
    ASSERT_TRUE(WaitInRealTime([&] { return QFile::exists(lookups); }));

    clock.start();
    Send(SIGTERM);

    ExpectAnOrderlyEndInTime(clock);
}

TEST_F(EndTest, DiskThatHangsDoesNotDelayTheEnd) {
    const QString disk = folder.filePath(QStringLiteral("disk"));
    environment.insert(QStringLiteral("LD_PRELOAD"), QString::fromUtf8(build::kHangs));
    environment.insert(QStringLiteral("ZR_DISK_FILE"), disk);
    StartProgram();
    ASSERT_TRUE(WaitForLogText("User 501 logged in"));
    WriteFile("disk", "");

    clock.start();
    Send(SIGTERM);

    ExpectAnOrderlyEndInTime(clock);
}

/// A listener on a port of a server that died.
class CHeir : public QTcpServer {
public:
    CHeir() {
        QObject::connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection()) {
                QObject::connect(socket, &QTcpSocket::readyRead, this, [this, socket] { bytes += socket->readAll(); });
            }
        });
    }

    QByteArray bytes;
};

class ServerDeathTest : public ClientTest {};

TEST_F(ServerDeathTest, HeirOfThePortsGetsNothingAndTheNextServerHasAnotherToken) {
    std::vector<ServerEndpoint> endpoints;
    Make();
    QObject::connect(client, &CComposition::ServerReady, &watcher,
                     [&](const ServerEndpoint& endpoint) { endpoints.push_back(endpoint); });
    Show();
    ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
    const auto httpPort = quint16(server->Get("/v1/state")["http"].asUInt());
    CHeir heirs[3];

    ASSERT_EQ(kill(pid_t(client->Server().ProcessId()), SIGKILL), 0);
    const quint16 ports[] = {endpoints[0].channelPort, endpoints[0].controlPort, httpPort};
    for (int n = 0; n < 3; ++n) {
        ASSERT_TRUE(WaitInRealTime([&] { return heirs[n].listen(QHostAddress::LocalHost, ports[n]); }));
    }

    ASSERT_TRUE(WaitInRealTime([this] { return CountOf(10650) == 2; }));
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_NE(endpoints[1].token, endpoints[0].token);
    for (const CHeir& heir : heirs) {
        EXPECT_EQ(heir.bytes.toStdString(), "");
        EXPECT_NE(heir.serverPort(), endpoints[1].channelPort);
        EXPECT_NE(heir.serverPort(), endpoints[1].controlPort);
    }
}

struct BadServer {
    const char* name;
    const char* address;
};

class BadServerTest : public ClientProcessTest, public WithParamInterface<BadServer> {};

TEST_P(BadServerTest, IsRefusedBeforeAnythingIsSent) {
    StartProgram({QStringLiteral("--server"), QString::fromUtf8(GetParam().address)});

    ASSERT_TRUE(WaitInRealTime([this] { return HasEnded(); }, std::chrono::seconds(5)));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 2);
    EXPECT_THAT(program.readAllStandardError().toStdString(), HasSubstr("--server wants"));
    EXPECT_FALSE(QFile::exists(options.dataDir));
}

INSTANTIATE_TEST_SUITE_P(Addresses, BadServerTest,
                         Values(BadServer{"Foreign", "http://192.0.2.2:9956"},
                                BadServer{"Name", "http://a.example:9956"},
                                BadServer{"AnyAddress", "http://0.0.0.0:9956"},
                                BadServer{"Lookalike", "http://127.0.0.1.a.example:9956"},
                                BadServer{"UserBeforeTheHost", "http://127.0.0.1@192.0.2.2:9956"},
                                BadServer{"OtherScheme", "ftp://127.0.0.1:9956"},
                                BadServer{"NoPort", "http://127.0.0.1"}, BadServer{"NoUrl", "127.0.0.1:9956"}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
