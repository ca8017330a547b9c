// Clients that break the protocol do not keep the server from serving others.
#include <gmock/gmock.h>

#include "DevServerTest.h"
#include "RawClient.h"
#include "support/RealTime.h"

namespace {

using channel::Frame;

class MalformedClientTest : public DevServerTest {
protected:
    void TearDown() override { ExpectTheServerServes(); }

    void ExpectTheServerServes() {
        const auto client = LoggedIn(1);
        const auto reply = client->Request(1, kCmdChatEntry);
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->error(), 0);
    }

    unsigned Connections() { return Http("GET", "/v1/state").body["connections"].size(); }

    bool WaitForConnections(unsigned count) {
        return WaitInRealTime([&] { return Connections() == count; });
    }

    /// Returns a client after its handshake and the first configuration.
    std::unique_ptr<RawClient> Connect() {
        auto client = std::make_unique<RawClient>(server.ChannelPort());
        client->Write(RawClient::Handshake(kToken));
        EXPECT_TRUE(client->WaitUntilReceived("ai_chat"));
        return client;
    }

    static QByteArray Login(uint64_t user) {
        Frame frame;
        frame.set_kind(Frame::LOGIN);
        frame.mutable_login()->set_user_id(user);
        return RawClient::Framed(QByteArray::fromStdString(frame.SerializeAsString()));
    }

    bool WaitForLogin(uint64_t user) {
        return WaitInRealTime(
            [&] { return Http("GET", "/v1/state").body["connections"][0]["user"].asUInt64() == user; });
    }
};

TEST_F(MalformedClientTest, GarbageInPlaceOfAHandshakeIsHungUpOn) {
    for (const char* garbage : {"\xFF\xFE\xFD\r\n\r\n", "GET / HTTP/1.1\r\n\r\n", "\r\n\r\n"}) {
        RawClient client(server.ChannelPort());
        ASSERT_TRUE(client.WaitUntilConnected());

        client.Write(QByteArray(garbage));

        EXPECT_TRUE(client.WaitUntilClosed()) << testing::PrintToString(garbage);
    }
    EXPECT_EQ(Connections(), 0u);
}

TEST_F(MalformedClientTest, AHandshakeThatComesByteByByteIsTaken) {
    RawClient client(server.ChannelPort());
    ASSERT_TRUE(client.WaitUntilConnected());

    EXPECT_TRUE(client.WriteOneByOne(RawClient::Handshake(kToken)));

    EXPECT_TRUE(client.WaitUntilReceived("ai_chat"));
    EXPECT_EQ(Connections(), 1u);
}

TEST_F(MalformedClientTest, AFrameThatComesByteByByteIsTaken) {
    const auto client = Connect();

    EXPECT_TRUE(client->WriteOneByOne(Login(2)));

    EXPECT_TRUE(WaitForLogin(2));
}

TEST_F(MalformedClientTest, AFrameThatIsCutAtAnyByteEndsWithItsConnection) {
    const QByteArray frame = Login(2);
    for (int cut = 0; cut < frame.size(); ++cut) {
        auto client = Connect();

        client->Write(frame.left(cut));
        client.reset();

        EXPECT_TRUE(WaitForConnections(0)) << cut;
    }
    EXPECT_TRUE(Http("GET", "/v1/received").body["received"].empty());
}

TEST_F(MalformedClientTest, HalfAFrameKeepsNobodyElseWaiting) {
    const auto client = Connect();

    client->Write(Login(2).left(5));

    ExpectTheServerServes();
    EXPECT_TRUE(client->IsConnected());
}

TEST_F(MalformedClientTest, BytesThatAreNoFrameEndTheConnection) {
    for (const QByteArray& garbage : {QByteArray("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), QByteArray(200, '\x83')}) {
        const auto client = Connect();

        client->Write(garbage);

        EXPECT_TRUE(client->WaitUntilClosed());
        EXPECT_TRUE(WaitForConnections(0));
    }
}

TEST_F(MalformedClientTest, AWholeFrameOfGarbageIsDroppedAndTheConnectionKept) {
    const auto client = Connect();

    client->Write(RawClient::Framed("\xFF\xFF") + RawClient::Framed("") + Login(2));

    EXPECT_TRUE(WaitForLogin(2));
}

TEST_F(MalformedClientTest, TwoHundredConnectionsAreServedTogether) {
    constexpr unsigned kMany = 200;
    std::vector<std::unique_ptr<RawClient>> clients;
    for (unsigned i = 0; i < kMany; ++i) {
        clients.push_back(std::make_unique<RawClient>(server.ChannelPort()));
        clients.back()->Write(RawClient::Handshake(kToken));
    }

    EXPECT_TRUE(WaitForConnections(kMany));

    ExpectTheServerServes();
    for (const auto& client : clients) {
        EXPECT_TRUE(client->WaitUntilReceived("ai_chat"));
    }
    clients.clear();
    EXPECT_TRUE(WaitForConnections(0));
}

TEST_F(MalformedClientTest, ThreeHundredConnectionsThatSayNothingKeepNobodyOut) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 300; ++i) {
        clients.push_back(std::make_unique<RawClient>(server.ChannelPort()));
        // One by one: the system delays those that the server has not accepted yet.
        ASSERT_TRUE(clients.back()->WaitUntilConnected());
    }

    ExpectTheServerServes();
    EXPECT_EQ(Connections(), 0u);
    // The oldest handshake is cut for a new one, long before its time is over.
    EXPECT_TRUE(WaitInRealTime([&] { return !clients.front()->IsConnected(); }, std::chrono::seconds(1)));
}

TEST_F(MalformedClientTest, AClientThatNeverReadsIsCutWhenTooMuchWaitsForIt) {
    const auto client = Connect();
    client->Write(Login(2));
    ASSERT_TRUE(WaitForLogin(2));
    client->StopReading();
    const std::string push = R"({"user":2,"command":7,"bodyHex":")" + std::string(2 * 1024 * 1024, 'a') + "\"}";

    // One mebibyte each: a few are in the system's buffers, the others in the server's.
    int pushes = 0;
    while (Connections() == 1 && pushes < 100) {
        EXPECT_EQ(Http("POST", "/v1/push", push).status, 200);
        ++pushes;
    }

    EXPECT_EQ(Connections(), 0u);
    EXPECT_GT(pushes, 32);
    EXPECT_LT(pushes, 60);
}

}  // namespace
