#include <gmock/gmock.h>

#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include "DevServerTest.h"
#include "support/RealTime.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class ProcessTest : public testing::Test {
protected:
    ~ProcessTest() override {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    void Start(const QStringList& arguments) { process.start(QStringLiteral(ZR_DEVSERVER), arguments); }

    Json::Value Greeting() {
        EXPECT_TRUE(WaitInRealTime([this] { return process.canReadLine(); }));
        return FromJson(process.readLine().trimmed().toStdString());
    }

    bool HasEnded() {
        return WaitInRealTime([this] { return process.state() == QProcess::NotRunning; });
    }

    std::string ErrorText() { return process.readAllStandardError().toStdString(); }

    QProcess process;
};

TEST_F(ProcessTest, FirstLineTellsPortsAndTokenByWhichTheServerIsReached) {
    Start({QStringLiteral("--child")});

    const Json::Value greeting = Greeting();

    EXPECT_THAT(greeting.getMemberNames(), testing::UnorderedElementsAre("channel", "control", "http", "token"));
    const std::string token = greeting["token"].asString();
    EXPECT_THAT(token, MatchesRegex("[0-9a-f]{32}"));
    ChannelClient client(quint16(greeting["channel"].asUInt()), token);
    ASSERT_TRUE(client.Take(channel::Frame::CONFIG));
    const auto login = client.Login(10001);
    ASSERT_TRUE(login);
    EXPECT_TRUE(login->accepted());
    const HttpAnswer state =
        HttpTo(quint16(greeting["control"].asUInt()), {{"Authorization", "Bearer " + QByteArray::fromStdString(token)}},
               "GET", "/v1/state", {});
    EXPECT_EQ(state.body["connections"][0]["user"].asUInt(), 10001u);
    EXPECT_EQ(process.bytesAvailable(), 0);  // everything else is on the error stream
}

TEST_F(ProcessTest, EachServerHasATokenOfItsOwn) {
    QProcess other;
    other.start(QStringLiteral(ZR_DEVSERVER), {QStringLiteral("--child")});
    Start({QStringLiteral("--child")});
    ASSERT_TRUE(WaitInRealTime([&] { return other.canReadLine(); }));

    EXPECT_NE(FromJson(other.readLine().toStdString())["token"], Greeting()["token"]);

    other.closeWriteChannel();
    EXPECT_TRUE(WaitInRealTime([&] { return other.state() == QProcess::NotRunning; }));
}

TEST_F(ProcessTest, ChildEndsWhenItsInputEnds) {
    Start({QStringLiteral("--child")});
    Greeting();
    process.write("what is written is not looked at\n");

    process.closeWriteChannel();

    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
}

TEST_F(ProcessTest, ServerThatIsNoChildOutlivesItsInput) {
    Start({});
    const Json::Value greeting = Greeting();
    process.closeWriteChannel();

    ChannelClient client(quint16(greeting["channel"].asUInt()), greeting["token"].asString());
    EXPECT_TRUE(client.Take(channel::Frame::CONFIG));
    EXPECT_EQ(process.state(), QProcess::Running);
}

TEST_F(ProcessTest, WrongArgumentsAreNamedLineByLine) {
    Start({QStringLiteral("--port"), QStringLiteral("x"), QStringLiteral("nonsense")});

    ASSERT_TRUE(HasEnded());
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(ErrorText(),
              "zrdevserver: nonsense: unknown argument\n"
              "zrdevserver: --port: must be a whole number from 0 to 65535\n");
    EXPECT_EQ(process.readAllStandardOutput(), QByteArray());
}

TEST_F(ProcessTest, WrongScenarioIsNamedByFileKeyAndReason) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("mine.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"schema":1,"users":[{"id":0,"name":""}],"commonConfig":{}})");
    file.close();

    Start({QStringLiteral("--scenario"), file.fileName()});

    ASSERT_TRUE(HasEnded());
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(ErrorText(),
              "zrdevserver: mine.json: users[0].id: must be a whole number from 1 to 18446744073709551615\n"
              "zrdevserver: mine.json: users[0].name: must not be empty\n");
}

TEST_F(ProcessTest, MissingScenarioFileIsNamed) {
    Start({QStringLiteral("--scenario"), QStringLiteral("nowhere.json")});

    ASSERT_TRUE(HasEnded());
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_THAT(ErrorText(), HasSubstr("nowhere.json: "));
}

TEST_F(ProcessTest, PortInUseIsTold) {
    for (const char* argument : {"--port", "--control-port", "--http-port"}) {
        QTcpServer occupant;
        ASSERT_TRUE(occupant.listen(QHostAddress(QHostAddress::LocalHost)));

        Start({QString::fromLatin1(argument), QString::number(occupant.serverPort())});

        ASSERT_TRUE(HasEnded());
        EXPECT_EQ(process.exitCode(), 3) << argument;
        EXPECT_THAT(ErrorText(), HasSubstr("port " + std::to_string(occupant.serverPort()) + ": ")) << argument;
    }
}

}  // namespace
