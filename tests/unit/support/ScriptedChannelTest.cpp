#include "support/ScriptedChannel.h"

#include <optional>

#include "chat.pb.h"
#include "core/IZRChannelProxy.h"
#include "support/ScriptedHostTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class ScriptedChannelTest : public ScriptedHostTest {
protected:
    struct Answer {
        unsigned long session = 0;
        CSProtoError error = kCSProtoOk;
        uint32_t cmd = 0;
        std::string body;
        bool operator==(const Answer& other) const {
            return session == other.session && error == other.error && cmd == other.cmd && body == other.body;
        }
    };

    CSCallback Recorder() {
        return [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt*) {
            answers.push_back(Answer{session, error, data.m_nCmd, data.m_strData});
        };
    }

    unsigned long Send(uint32_t cmd, const std::string& body = std::string()) {
        return IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData{cmd, body}, nullptr, Recorder(), context.get());
    }

    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::vector<Answer> answers;
};

}  // namespace

TEST_F(ScriptedChannelTest, CommandsAreRecordedInOrderWithSessionsFromOne) {
    Send(10, "a");
    Send(20, "b");

    ASSERT_THAT(channel.Sent(), SizeIs(2));
    EXPECT_EQ(channel.Sent()[0].session, 1u);
    EXPECT_EQ(channel.Sent()[0].cmd, 10u);
    EXPECT_EQ(channel.Sent()[0].body, "a");
    EXPECT_EQ(channel.Sent()[0].context, context.get());
    EXPECT_EQ(channel.Sent()[1].session, 2u);
    EXPECT_EQ(channel.LastSession(), 2u);
}

TEST_F(ScriptedChannelTest, AReplyArrivesOnceAndADuplicateDoesNothing) {
    const unsigned long session = Send(10);

    channel.Reply(session, 10, "first");
    channel.Reply(session, 10, "second");
    channel.ReplyWith(session, kCSProtoTimedOut, CSProtoData{10, "third"});

    EXPECT_EQ(answers, (std::vector<Answer>{{session, kCSProtoOk, 10, "first"}}));
}

TEST_F(ScriptedChannelTest, AMessageIsSerialisedIntoTheReply) {
    chat::GetChatEntryRsp message;
    message.mutable_data()->add_entry_list()->set_scene(3);

    channel.Reply(Send(10), 10, message);

    ASSERT_THAT(answers, SizeIs(1));
    EXPECT_EQ(answers[0].body, message.SerializeAsString());
}

TEST_F(ScriptedChannelTest, ARawReplyMayCarryAnErrorAndAnotherCommand) {
    channel.ReplyWith(Send(10), CSProtoError(5), CSProtoData{11, "garbage"});

    EXPECT_EQ(answers, (std::vector<Answer>{{1, CSProtoError(5), 11, "garbage"}}));
}

TEST_F(ScriptedChannelTest, AFailureCarriesTheCommandAndNoBytes) {
    channel.Fail(Send(10, "request"), kCSProtoTimedOut);

    EXPECT_EQ(answers, (std::vector<Answer>{{1, kCSProtoTimedOut, 10, ""}}));
}

TEST_F(ScriptedChannelTest, ACommandThatIsAlwaysAnsweredIsAnsweredLater) {
    channel.AnswerAlways(10, "answer");

    Send(10);
    EXPECT_THAT(answers, IsEmpty());

    time.Settle();
    EXPECT_EQ(answers, (std::vector<Answer>{{1, kCSProtoOk, 10, "answer"}}));
}

TEST_F(ScriptedChannelTest, OfflineEveryCommandFailsLater) {
    channel.BeOffline();
    channel.AnswerAlways(10, "answer");

    Send(10);
    Send(11);
    EXPECT_THAT(answers, IsEmpty());

    time.Settle();
    EXPECT_EQ(answers, (std::vector<Answer>{{1, kCSProtoDisconnected, 10, ""}, {2, kCSProtoDisconnected, 11, ""}}));
    EXPECT_THAT(channel.Sent(), SizeIs(2));
}

TEST_F(ScriptedChannelTest, TheNthCommandFailsAndNoOther) {
    channel.FailSends(Failing::Nth(2), kCSProtoTimedOut);

    Send(10);
    Send(11);
    Send(12);
    time.Settle();

    EXPECT_EQ(answers, (std::vector<Answer>{{2, kCSProtoTimedOut, 11, ""}}));
    EXPECT_EQ(channel.OutstandingCount(), 2);
    channel.Forget();
}

TEST_F(ScriptedChannelTest, APushGoesToItsSubscribersInOrderWithSessionZero) {
    IZRChannelProxy::BindCallback(kCSChannelMain, 10, Recorder(), context.get());
    IZRChannelProxy::BindCallback(kCSChannelMain, 11, Recorder(), context.get());

    channel.Push(10, "bytes");
    channel.PushWith(CSProtoError(4), CSProtoData{11, ""});
    channel.PushWith(10, kCSProtoOk, CSProtoData{99, "mislabelled"});

    EXPECT_EQ(answers,
              (std::vector<Answer>{
                  {0, kCSProtoOk, 10, "bytes"}, {0, CSProtoError(4), 11, ""}, {0, kCSProtoOk, 99, "mislabelled"}}));
}

TEST_F(ScriptedChannelTest, BoundCommandsAreThoseOfLiveContexts) {
    QObject other;
    IZRChannelProxy::BindCallback(kCSChannelMain, 10, Recorder(), context.get());
    IZRChannelProxy::BindCallback(kCSChannelMain, 11, Recorder(), &other);
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(10u, 11u));

    context.reset();
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(11u));
}

TEST_F(ScriptedChannelTest, OutstandingCommandsAreThoseThatSomebodyWaitsFor) {
    const unsigned long first = Send(10);
    Send(11);
    EXPECT_EQ(channel.OutstandingCount(), 2);

    channel.Reply(first, 10, "");
    EXPECT_EQ(channel.OutstandingCount(), 1);

    context.reset();
    EXPECT_EQ(channel.OutstandingCount(), 0);
    channel.Forget();
}
