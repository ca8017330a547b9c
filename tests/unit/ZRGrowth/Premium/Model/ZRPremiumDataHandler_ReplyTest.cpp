// The effects of a reply on the table, its notifications, and their order.
#include <functional>
#include <limits>
#include <optional>

#include "Premium/PremiumTest.h"
#include "WireBytes.h"
#include "core/message_dispatch.h"

using namespace ::testing;

namespace {

constexpr const char* kSuccess = "[Premium] Parse Response Success, Premium Data Updated And Saved";
constexpr const char* kSaveRefused = "[Premium] Latest News Filter Save Failed.";

/// The state that a receiver of the two messages finds at their delivery.
struct Found {
    PremiumTable table;
    size_t saves = 0;
    std::vector<std::string> lines;
};

class PremiumReplyTest : public PremiumTest {
protected:
    PremiumReplyTest() {
        for (const unsigned int message : {kChanged, kAnswered}) {
            core::__CMessageDispatch("[Test]").Bind(
                message,
                [this](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                    Found now;
                    now.table = manager->GetUIAccessData();
                    now.saves = store.Saves().size();
                    for (const LogLine& line : log.Lines()) {
                        now.lines.push_back(line.text);
                    }
                    found.push_back(now);
                },
                &receiver);
        }
    }

    unsigned long Ask(bool serverPush) {
        const unsigned long session = handler->GetUiMsgAndPremiumAccessReq(serverPush);
        Forget();
        return session;
    }

    std::vector<Found> found;
    QObject receiver;
};

// Good answers

TEST_F(PremiumReplyTest, AnAnswerThatIsWaitedForFillsTheTableAndIsToldWithItsSession) {
    const unsigned long session = Ask(false);

    channel.Reply(session, kRequest, Answer({13, 1000}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13, 1000}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13, 1000}))}));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(kSuccess)));
}

TEST_F(PremiumReplyTest, AnAnswerThatNobodyWaitsForIsToldWithoutABodyAndNotAsAnswered) {
    const unsigned long session = Ask(true);

    channel.Reply(session, kRequest, Answer({13}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13}))}));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(kSuccess)));
}

TEST_F(PremiumReplyTest, ReceiversReadTheNewTableBeforeItIsSavedAndLogged) {
    for (const bool serverPush : {false, true}) {
        found.clear();
        const unsigned long session = Ask(serverPush);
        const int version = serverPush ? 2 : 1;

        channel.Reply(session, kRequest, Answer({13, 14}, version));

        ASSERT_THAT(found, SizeIs(1));
        EXPECT_EQ(found[0].table, Table({13, 14}, version));
        EXPECT_EQ(found[0].saves, 0u);
        EXPECT_THAT(found[0].lines, IsEmpty());
        EXPECT_THAT(store.Saves(), SizeIs(1));
        EXPECT_THAT(log.Lines(), ElementsAre(Info(kSuccess)));
    }
}

TEST_F(PremiumReplyTest, TheSaveComesBeforeTheLineAndItsRefusalChangesNothingElse) {
    const unsigned long session = Ask(false);
    store.RefuseSaves(Failing::Always());

    channel.Reply(session, kRequest, Answer({13}));

    EXPECT_THAT(log.Lines(), ElementsAre(Error(kSaveRefused), Info(kSuccess)));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_THAT(store.Saves(), SizeIs(1));
    EXPECT_FALSE(store.UserString(kUser, kSavedKey));
}

TEST_F(PremiumReplyTest, AnAnswerWithoutDataIsGoodAndSavesTheTableAsItWas) {
    TableHolds({13});
    const unsigned long waited = Ask(false);
    channel.Reply(waited, kRequest, Bytes({0x08, 0x00}));
    const unsigned long push = handler->GetUiMsgAndPremiumAccessReq(true);
    channel.Reply(push, kRequest, Bytes({0x08, 0x00, 0x1A, 0x00}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, waited, 0), ::Message(kChanged)));
    const StoreSave save = {kUser, kSavedKey, SavedBytes(Table({13}))};
    EXPECT_THAT(store.Saves(), ElementsAre(save, save));
}

TEST_F(PremiumReplyTest, RightsThatAnAnswerDoesNotMentionStay) {
    TableHolds({13, 14});

    ServerAnswers(Answer({14, 15}, 2));
    store.Forget();

    PremiumTable expected = Table({14, 15}, 2);
    expected.insert(Right(13), Record(13, 1));
    EXPECT_EQ(manager->GetUIAccessData(), expected);
}

TEST_F(PremiumReplyTest, TheWholeTableIsSavedAndNotTheAnswer) {
    TableHolds({14});

    ServerAnswers(Answer({13}));

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13, 14}))}));
}

TEST_F(PremiumReplyTest, AnAnswerWithTheStateAloneWipesTheTexts) {
    TableHolds({13});
    PremiumAnswer answer = Answer({13}, 2);
    answer.mutable_data()->mutable_ui_data_and_access_data(0)->clear_ui_data();

    ServerAnswers(answer);
    store.Forget();

    EXPECT_EQ(manager->GetUIData(Right(13)), CPremiumUIData());
    EXPECT_EQ(manager->GetAccessData(Right(13)), CPremiumAccessData(Record(13, 2)));
}

TEST_F(PremiumReplyTest, AnElementWithItsRightAloneLeavesABlankRecord) {
    TableHolds({13});

    PremiumAnswer answer = Answer({});
    answer.mutable_data()->add_ui_data_and_access_data()->set_access(13);
    ServerAnswers(answer);
    store.Forget();

    EXPECT_EQ(manager->GetUIAccessData(), (PremiumTable{{Right(13), CPremiumUIAccessData()}}));
}

TEST_F(PremiumReplyTest, DroppedElementsLeaveTheirRightsAsTheyWereAndTheOthersGoOnWithoutALine) {
    TableHolds({14, 15});
    PremiumAnswer answer = Answer({13, 14, 15, 16}, 2);
    auto* elements = answer.mutable_data()->mutable_ui_data_and_access_data();
    elements->Mutable(1)->mutable_ui_data()->set_access(1);
    elements->Mutable(2)->mutable_access_data()->clear_access();
    elements->Add()->mutable_ui_data()->set_access(17);

    const unsigned long session = Ask(false);
    channel.Reply(session, kRequest, answer);

    PremiumTable expected = Table({13, 16}, 2);
    expected.insert(Right(14), Record(14, 1));
    expected.insert(Right(15), Record(15, 1));
    EXPECT_EQ(manager->GetUIAccessData(), expected);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(kSuccess)));
    store.Forget();
}

TEST_F(PremiumReplyTest, OfARightThatComesTwiceTheLaterElementCounts) {
    PremiumAnswer answer = Answer({13, 14}, 1);
    Write(13, 2, *answer.mutable_data()->add_ui_data_and_access_data());

    ServerAnswers(answer);
    store.Forget();

    EXPECT_EQ(manager->GetUIAccessData(Right(13)), Record(13, 2));
}

TEST_F(PremiumReplyTest, ADroppedElementDoesNotUndoAnEarlierOneOfItsRight) {
    PremiumAnswer answer = Answer({13}, 1);
    auto* late = answer.mutable_data()->add_ui_data_and_access_data();
    Write(13, 2, *late);
    late->mutable_ui_data()->set_access(14);

    ServerAnswers(answer);
    store.Forget();

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

TEST_F(PremiumReplyTest, TheCommandOfAReplyIsNotLookedAt) {
    const unsigned long session = Ask(false);

    channel.Reply(session, 20832, Answer({13}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    store.Forget();
}

TEST_F(PremiumReplyTest, TheServersTextAndTheUnreadValueAreIgnored) {
    PremiumAnswer answer = Answer({13});
    answer.set_message("failed");
    answer.mutable_data()->set_unread_value(99);

    ServerAnswers(answer);

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_EQ(store.UserString(kUser, kSavedKey), SavedBytes(Table({13})));
}

TEST_F(PremiumReplyTest, AReceiverMayAskAgainInsideTheMessage) {
    QObject asker;
    std::optional<unsigned long> nested;
    core::__CMessageDispatch("[Test]").Bind(
        kAnswered,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
            if (!nested) {
                nested = handler->GetUiMsgAndPremiumAccessReq(QVector<int>{14}, true);
                handler->ParsePremiumRsp(*nested, kCSProtoOk, CSProtoData{kRequest, Answer({14}).SerializeAsString()},
                                         nullptr);
            }
        },
        &asker);
    const unsigned long session = Ask(false);

    channel.Reply(session, kRequest, Answer({13}));

    EXPECT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13, 14}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0), ::Message(kChanged)));
    const StoreSave save = {kUser, kSavedKey, SavedBytes(Table({13, 14}))};
    EXPECT_THAT(store.Saves(), ElementsAre(save, save));
}

// Failed answers

struct BadReply {
    const char* name;
    CSProtoError error;
    std::string bytes;
    std::function<std::string(unsigned long)> line;
};

std::string WithCode(int code) {
    PremiumAnswer answer = Answer({13, 14}, 2);
    answer.set_code(code);
    return answer.SerializeAsString();
}

std::string WithoutCode() {
    PremiumAnswer answer = Answer({13, 14}, 2);
    answer.clear_code();
    return answer.SerializeAsString();
}

std::function<std::string(unsigned long)> Says(const std::string& text) {
    return [text](unsigned long) { return "[Premium] " + text; };
}

std::function<std::string(unsigned long)> SaysChannelError(int error) {
    return [error](unsigned long session) {
        return "[Premium] Request Failed On Channel Error, Session = " + std::to_string(session) +
               ", Error = " + std::to_string(error);
    };
}

const char* const kBadBytes = "Parse Response Failed, Invalid Protobuf Data";
const char* const kNoCode = "Parse Response Failed, Missing Code Field";

class BadPremiumReplyTest : public PremiumReplyTest, public WithParamInterface<BadReply> {};

TEST_P(BadPremiumReplyTest, IsLoggedAndToldAsFailedWhateverTheFlagAndChangesNothing) {
    TableHolds({13});
    for (const bool serverPush : {false, true}) {
        const unsigned long session = Ask(serverPush);
        found.clear();

        channel.ReplyWith(session, GetParam().error, CSProtoData{kRequest, GetParam().bytes});

        EXPECT_THAT(log.Lines(), ElementsAre(Error(GetParam().line(session))));
        EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2)));
        EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
        EXPECT_THAT(store.Saves(), IsEmpty());
        // the line is written by then
        ASSERT_THAT(found, SizeIs(1));
        EXPECT_THAT(found[0].lines, ElementsAre(GetParam().line(session)));
    }
}

TEST_P(BadPremiumReplyTest, IsNotFollowedByAnotherTryBeforeTheHourIsOver) {
    const unsigned long session = Ask(false);

    channel.ReplyWith(session, GetParam().error, CSProtoData{kRequest, GetParam().bytes});
    time.Advance(std::chrono::milliseconds(3'599'999));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_THAT(channel.Sent(), SizeIs(1));

    log.Forget();
}

INSTANTIATE_TEST_SUITE_P(
    Replies, BadPremiumReplyTest,
    Values(BadReply{"TimedOut", kCSProtoTimedOut, "", SaysChannelError(-1)},
           BadReply{"Disconnected", kCSProtoDisconnected, "", SaysChannelError(-2)},
           BadReply{"ChannelErrorWithAGoodBody", CSProtoError(7), WithCode(0), SaysChannelError(7)},
           BadReply{"LargestChannelError", CSProtoError(2147483647), "", SaysChannelError(2147483647)},
           BadReply{"Garbage", kCSProtoOk, Bytes({0xFF, 0xFF}), Says(kBadBytes)},
           BadReply{"Truncated", kCSProtoOk, WithCode(0).substr(0, WithCode(0).size() - 1), Says(kBadBytes)},
           BadReply{"GarbageBehindAGoodAnswer", kCSProtoOk, WithCode(0) + Bytes({0x07}), Says(kBadBytes)},
           BadReply{"NoBytes", kCSProtoOk, "", Says(kNoCode)},
           BadReply{"NoCode", kCSProtoOk, WithoutCode(), Says(kNoCode)},
           BadReply{"CodeOfAForeignWireType", kCSProtoOk, Bytes({0x0D, 0, 0, 0, 0}) + WithoutCode(), Says(kNoCode)},
           BadReply{"CodeOne", kCSProtoOk, WithCode(1), Says("Server Returned Error Code = 1")},
           BadReply{"CodeOfARepeatedActivation", kCSProtoOk, WithCode(1001), Says("Server Returned Error Code = 1001")},
           BadReply{"NegativeCode", kCSProtoOk, WithCode(-5), Says("Server Returned Error Code = -5")},
           BadReply{"SmallestCode", kCSProtoOk, WithCode(std::numeric_limits<int>::min()),
                    Says("Server Returned Error Code = -2147483648")}),
    [](const auto& row) { return row.param.name; });

// Sessions

TEST_F(PremiumReplyTest, AReplyOfAnUnknownSessionIsLoggedAndNothingElse) {
    TableHolds({13});
    const CSProtoData good{kRequest, Answer({14}).SerializeAsString()};

    handler->ParsePremiumRsp(4711, kCSProtoOk, good, nullptr);
    handler->ParsePremiumRsp(0, kCSProtoTimedOut, good, nullptr);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = 4711"),
                            Error("[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = 0")));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

TEST_F(PremiumReplyTest, ASessionOf64BitsIsLoggedAndToldWhole) {
    handler->ParseUiMsgAndPremiumAccessRsp(18446744073709551615u, CSProtoData{kRequest, Bytes({0x08, 0x00})}, false);
    handler->ParsePremiumRsp(18446744073709551614u, kCSProtoOk, CSProtoData(), nullptr);

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, 18446744073709551615u, 0)));
    EXPECT_THAT(log.Lines(), Contains(Error("[Premium] Unknown Request Session, Already Removed Or Never Sent, "
                                            "Session = 18446744073709551614")));
    store.Forget();
}

TEST_F(PremiumReplyTest, TwoRepliesOfOneSessionAreBothHandled) {
    for (const bool serverPush : {false, true}) {
        const unsigned long session = Ask(serverPush);
        const auto told = serverPush ? ::Message(kChanged) : ::Message(kAnswered, session, 0);

        for (const int version : {1, 2}) {
            handler->ParsePremiumRsp(session, kCSProtoOk,
                                     CSProtoData{kRequest, Answer({13}, version).SerializeAsString()}, nullptr);
            EXPECT_EQ(manager->GetUIAccessData(), Table({13}, version));
        }

        EXPECT_THAT(bus.Sent(), ElementsAre(told, told));
        EXPECT_THAT(store.Saves(), SizeIs(2));
        EXPECT_THAT(log.Lines(), ElementsAre(Info(kSuccess), Info(kSuccess)));
    }
}

TEST_F(PremiumReplyTest, AGoodReplyAfterAFailedOneOfTheSameSessionStillCounts) {
    const unsigned long session = Ask(true);

    handler->ParsePremiumRsp(session, kCSProtoTimedOut, CSProtoData(), nullptr);
    handler->ParsePremiumRsp(session, kCSProtoOk, CSProtoData{kRequest, Answer({13}).SerializeAsString()}, nullptr);

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2), ::Message(kChanged)));
    EXPECT_THAT(log.Lines(), SizeIs(2));
    store.Forget();
}

TEST_F(PremiumReplyTest, EachSessionIsToldByTheFlagOfItsOwnRequestWhateverTheOrderOfTheReplies) {
    const unsigned long waited = Ask(false);
    const unsigned long push = Ask(true);
    const unsigned long list = handler->GetUiMsgAndPremiumAccessReq(QVector<int>{14}, false);

    channel.Reply(list, kRequest, Answer({14}));
    channel.Reply(push, kRequest, Answer({13}));
    channel.Reply(waited, kRequest, Answer({13}));

    EXPECT_THAT(bus.Sent(),
                ElementsAre(::Message(kAnswered, list, 0), ::Message(kChanged), ::Message(kAnswered, waited, 0)));
    store.Forget();
}

TEST_F(PremiumReplyTest, ALogoutDoesNotForgetTheSessions) {
    const unsigned long session = Ask(false);
    channel.Reply(session, kRequest, Answer({13}));
    manager->OnLogout();
    Forget();

    handler->ParsePremiumRsp(session, kCSProtoOk, CSProtoData{kRequest, Answer({13}, 2).SerializeAsString()}, nullptr);

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}, 2));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    store.Forget();
}

TEST_F(PremiumReplyTest, ALateAnswerOfTheFormerUserIsFiledUnderTheUserOfTheMoment) {
    const unsigned long session = Ask(false);
    manager->OnLogout();
    account.Set(777);

    channel.Reply(session, kRequest, Answer({13}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{777u, kSavedKey, SavedBytes(Table({13}))}));
}

}  // namespace
