#include "RealLineTest.h"

using ::testing::ElementsAre;
using namespace std::chrono_literals;

namespace {

class RealChannelTest : public RealLineTest {
protected:
    /// Waits for this client only; others may be connected.
    void Open(CWebSocketChannel& client) {
        client.Open(server.Url(), QByteArray("token"));
        EXPECT_TRUE(WaitUntil([&] { return client.IsConnected(); }));
    }

    bool WaitForFrames(size_t count) {
        return WaitUntil([&] { return server.Frames().size() >= count; });
    }

    void Reply(size_t arrival, const std::string& body) {
        channel::Frame frame = server.Frames().at(arrival).frame;
        frame.set_kind(channel::Frame::REPLY);
        frame.set_body(body);
        server.Send(server.Frames().at(arrival).client, frame);
    }

    CSCallback Note() {
        return [this](auto, CSProtoError error, const CSProtoData& data, auto) {
            notes.push_back(error == kCSProtoOk ? data.m_strData : std::to_string(int(error)));
        };
    }
};

}  // namespace

TEST_F(RealChannelTest, TwoClientsOfOneServerGetTheirOwnAnswers) {
    CWebSocketChannel first(poster, random);
    CWebSocketChannel second(poster, random);
    Open(first);
    Open(second);
    EXPECT_EQ(first.SendCommand(CSProtoData{10, ""}, Note(), &context), 1u);
    ASSERT_TRUE(WaitForFrames(1));
    EXPECT_EQ(second.SendCommand(CSProtoData{10, ""}, Note(), &context), 1u);
    ASSERT_TRUE(WaitForFrames(2));

    Reply(1, "to the second");
    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 1; }));
    Reply(0, "to the first");
    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 2; }));

    EXPECT_THAT(notes, ElementsAre("to the second", "to the first"));
}

TEST_F(RealChannelTest, ARequestWithoutAnAnswerFailsAtItsTimeLimit) {
    ChannelOptions options;
    options.requestLimit = 30ms;
    CWebSocketChannel client(poster, random, options);
    Open(client);

    client.SendCommand(CSProtoData{10, ""}, Note(), &context);
    ASSERT_TRUE(WaitUntil([&] { return !notes.empty(); }));
    ASSERT_TRUE(WaitForFrames(1));
    Reply(0, "too late");
    client.SendCommand(CSProtoData{11, ""}, Note(), &context);
    ASSERT_TRUE(WaitForFrames(2));
    Reply(1, "in time");
    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 2; }));

    EXPECT_THAT(notes, ElementsAre(std::to_string(int(kCSProtoTimedOut)), "in time"));
}

TEST_F(RealChannelTest, BytesThatAreNoFrameAreDroppedAndTheConnectionStays) {
    CWebSocketChannel client(poster, random);
    Open(client);
    client.SendCommand(CSProtoData{10, ""}, Note(), &context);
    ASSERT_TRUE(WaitForFrames(1));

    server.SendBytes(0, QByteArray("\xff\xff garbage"));
    server.SendBytes(0, QByteArray());
    Reply(0, "answer");

    ASSERT_TRUE(WaitUntil([&] { return !notes.empty(); }));
    EXPECT_THAT(notes, ElementsAre("answer"));
    EXPECT_EQ(server.ConnectionCount(), 1);
}

TEST_F(RealChannelTest, ConnectionIsRenewedAfterASuspendOfTheMachine) {
    int64_t suspended = 50;
    ChannelOptions options = Quick();
    options.pingEvery = 10ms;
    options.suspendedMillis = [&] { return suspended; };
    CWebSocketChannel client(poster, random, options);
    CLoginSession session(client);
    NoteLosses(client);
    Open(client);
    session.Login(7, "device", 2);
    ASSERT_TRUE(WaitForFrames(1));

    suspended += 60'000;

    // The login is sent again, and its answer has the server's time.
    ASSERT_TRUE(WaitForFrames(2));
    EXPECT_EQ(server.Frames()[1].frame.kind(), channel::Frame::LOGIN);
    EXPECT_TRUE(Logged("the machine was suspended"));
    ASSERT_TRUE(WaitUntil([&] { return client.IsConnected(); }));
    EXPECT_EQ(waits.size(), 1u);
}

TEST_F(RealChannelTest, ConnectionStaysWhileTheMachineIsAwake) {
    int64_t suspended = 60'000;
    int asked = 0;
    ChannelOptions options = Quick();
    options.pingEvery = 10ms;
    options.suspendedMillis = [&] {
        ++asked;
        return suspended + asked % 3;
    };
    CWebSocketChannel client(poster, random, options);
    NoteLosses(client);
    Open(client);

    ASSERT_TRUE(WaitUntil([&] { return asked > 10; }));

    EXPECT_TRUE(client.IsConnected());
    EXPECT_TRUE(waits.empty());
}
