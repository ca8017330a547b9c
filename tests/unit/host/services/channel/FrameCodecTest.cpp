#include "channel/FrameCodec.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

channel::Frame Frame(channel::Frame::Kind kind) {
    channel::Frame frame;
    frame.set_kind(kind);
    return frame;
}

struct Refused {
    const char* name;
    QByteArray bytes;
    const char* reason;
};

QByteArray PushOf(uint32_t command) {
    channel::Frame frame = Frame(channel::Frame::PUSH);
    frame.set_command(command);
    return EncodeFrame(frame);
}

class FrameRefusalTest : public TestWithParam<Refused> {};

TEST_P(FrameRefusalTest, IsRefusedWithItsReason) {
    std::string reason;

    EXPECT_FALSE(DecodeServerFrame(GetParam().bytes, reason));
    EXPECT_EQ(reason, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, FrameRefusalTest,
    Values(Refused{"Garbage", QByteArray("\xFF\xFF\xFF"), "no envelope"},
           Refused{"Empty", QByteArray(), "an unknown kind"},
           Refused{"KindOfANewerServer", QByteArray("\x08\x63"), "an unknown kind"},
           Refused{"Login", EncodeFrame(Frame(channel::Frame::LOGIN)), "a kind that only clients send"},
           Refused{"Logout", EncodeFrame(Frame(channel::Frame::LOGOUT)), "a kind that only clients send"},
           Refused{"Request", EncodeFrame(Frame(channel::Frame::REQUEST)), "a kind that only clients send"},
           Refused{"Language", EncodeFrame(Frame(channel::Frame::LANGUAGE)), "a kind that only clients send"},
           Refused{"BareReply", EncodeFrame(Frame(channel::Frame::REPLY)), "a reply without session or command"},
           Refused{"BarePush", EncodeFrame(Frame(channel::Frame::PUSH)), "a push without a command"},
           Refused{"PushBeyondSixteenBits", PushOf(65536), "a push without a command"},
           Refused{"BareConfig", EncodeFrame(Frame(channel::Frame::CONFIG)), "a configuration without a body"},
           Refused{"BareLinks", EncodeFrame(Frame(channel::Frame::LINKS)), "a link table without a body"},
           Refused{"BareClock", EncodeFrame(Frame(channel::Frame::CLOCK)), "a clock without a time"},
           Refused{"BareLoginAnswer", EncodeFrame(Frame(channel::Frame::LOGIN_ANSWER)),
                   "a login answer without session or content"}),
    [](const auto& row) { return row.param.name; });

TEST(FrameCodecTest, AReplyComesThroughWhole) {
    channel::Frame reply = Frame(channel::Frame::REPLY);
    reply.set_session(18446744073709551615u);
    reply.set_command(20982);
    reply.set_error(-3);
    reply.set_body(std::string("\0\xFF", 2));
    std::string reason;

    const auto frame = DecodeServerFrame(EncodeFrame(reply), reason);

    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->SerializeAsString(), reply.SerializeAsString());
    EXPECT_EQ(reason, "");
}

TEST(FrameCodecTest, TheHighestPushCommandIsTaken) {
    std::string reason;

    EXPECT_TRUE(DecodeServerFrame(PushOf(65535), reason));
}

}  // namespace
