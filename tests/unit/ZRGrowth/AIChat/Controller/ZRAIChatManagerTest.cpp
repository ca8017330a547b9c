// Requests, answers, the query of an entry, and the override.
#include <limits>

#include "AIChatManagerTest.h"
#include "core/message_dispatch.h"

using namespace ::testing;

namespace {

// Asking

TEST_F(AIChatManagerTest, RequestIsAnEmptyMessageUnderCommand20982OwnedByTheManager) {
    manager.RequestAIChatEnableStatus();

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, 20982u);
    EXPECT_EQ(channel.Sent()[0].body, "");
    EXPECT_EQ(channel.Sent()[0].context, &manager);
}

TEST_F(AIChatManagerTest, AFailedRequestIsNotTriedAgain) {
    manager.RequestAIChatEnableStatus();
    channel.Fail(channel.LastSession(), kCSProtoTimedOut);

    time.Advance(std::chrono::hours(25));

    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

// The answer

TEST_F(AIChatManagerTest, AChannelErrorIsLoggedWithErrorAndCommandAndChangesNothing) {
    SceneThreeIsOpen();
    manager.RequestAIChatEnableStatus();

    channel.ReplyWith(channel.LastSession(), CSProtoError(-7), CSProtoData{20982, ""});

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] RequestAIChatEnableStatus callback, receive cmd error, "
                                              "error = -7, cmd = 20982")));
    ExpectNothingHappened();
}

TEST_F(AIChatManagerTest, AGoodAnswerUnderAForeignCommandIsLoggedWithErrorZeroAndChangesNothing) {
    SceneThreeIsOpen();
    manager.RequestAIChatEnableStatus();

    channel.Reply(channel.LastSession(), 20832, Answer({{1, true}}));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] RequestAIChatEnableStatus callback, receive cmd error, "
                                              "error = 0, cmd = 20832")));
    ExpectNothingHappened();
}

TEST_F(AIChatManagerTest, ABodyThatIsNoMessageIsLoggedUnderTheNumber20832AndChangesNothing) {
    SceneThreeIsOpen();
    manager.RequestAIChatEnableStatus();

    channel.Reply(channel.LastSession(), 20982, std::string("\x1A\x7F"));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = \x1A\x7F"),
                            Info("[AIChat] RequestAIChatEnableStatus callback, receive cmd 20832, data parse failed")));
    ExpectNothingHappened();
}

TEST_F(AIChatManagerTest, ARawBodyIsLoggedToItsLastByteAlsoBehindAZeroByte) {
    // scene 0 closed, scene 200 open: the body holds zero bytes and bytes above 127
    const std::string body("\x1A\x0B\x0A\x02\x08\x00\x0A\x05\x08\xC8\x01\x10\x01", 13);
    manager.RequestAIChatEnableStatus();

    channel.Reply(channel.LastSession(), 20982, body);

    EXPECT_THAT(log.Lines(),
                Contains(Info("[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = " + body)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(200)));
    store.Forget();
}

TEST_F(AIChatManagerTest, OpenScenesAreKeptInTheServersOrderDuplicatesIncluded) {
    ServerAnswers(Answer({{7, true}, {2, false}, {5, true}, {7, true}}));

    EXPECT_EQ(store.AppString(kKey), "[\n\t7,\n\t5,\n\t7\n]\n");
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(7)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(5)));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(2)));
}

TEST_F(AIChatManagerTest, EachEntryOfTheAnswerIsLogged) {
    const auto answer = Answer({{7, true}, {2, false}});

    ServerAnswers(answer);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = " +
                                 answer.SerializeAsString()),
                            Info("[AIChat] RequestAIChatEnableStatus success, scene = 7, is_all_open = true"),
                            Info("[AIChat] RequestAIChatEnableStatus success, scene = 2, is_all_open = false")));
    store.Forget();
}

TEST_F(AIChatManagerTest, TheNextAnswerReplacesTheListWhole) {
    SceneThreeIsOpen();

    ServerAnswers(Answer({{4, true}}));

    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(4)));
    store.Forget();
}

TEST_F(AIChatManagerTest, AResultCodeIsNotLookedAt) {
    auto answer = Answer({{4, true}});
    answer.set_result_code(-1);
    answer.set_result_message("refused");

    ServerAnswers(answer);

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(4)));
    store.Forget();
}

TEST_F(AIChatManagerTest, AnEmptyEntryListClearsTheScenesTellsAndStoresAnEmptyArray) {
    SceneThreeIsOpen();

    ServerAnswers(Answer({}));

    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_EQ(store.AppString(kKey), "[]\n");
}

TEST_F(AIChatManagerTest, AnAnswerWithoutDataIsAnEmptyOne) {
    SceneThreeIsOpen();

    ServerAnswers(chat::GetChatEntryRsp());

    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_EQ(store.AppString(kKey), "[]\n");
}

TEST_F(AIChatManagerTest, TheVeryFirstAnswerMayBeEmptyAndIsStoredAsAnArray) {
    ServerAnswers(Answer({}));

    EXPECT_EQ(store.AppString(kKey), "[]\n");
}

TEST_F(AIChatManagerTest, TheSameAnswerAgainIsToldAndStoredAgain) {
    ServerAnswers(Answer({{3, true}}));
    ServerAnswers(Answer({{3, true}}));

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300), ::Message(20300)));
    EXPECT_THAT(store.Saves(), SizeIs(2));
}

TEST_F(AIChatManagerTest, AnOpenEntryWithoutASceneIsSceneZeroAndOneThatDoesNotSayOpenIsClosed) {
    chat::GetChatEntryRsp answer;
    answer.mutable_data()->add_entry_list()->set_is_all_open(true);
    answer.mutable_data()->add_entry_list()->set_scene(6);

    ServerAnswers(answer);

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(0)));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(6)));
    store.Forget();
}

TEST_F(AIChatManagerTest, ASceneThatIsNotAllOpenIsClosedWhateverItsStockDetailsSay) {
    SceneThreeIsOpen();
    auto answer = Answer({{3, false}});
    auto* detail = answer.mutable_data()->mutable_entry_list(0)->add_stock_open_details();
    detail->set_is_open(true);
    detail->add_id_list(700);

    ServerAnswers(answer);

    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_EQ(store.AppString(kKey), "[]\n");
}

TEST_F(AIChatManagerTest, ListenersReadTheNewScenesBeforeTheListIsStored) {
    QObject listener;
    bool openWhenTold = false;
    size_t savesWhenTold = 99;
    core::__CMessageDispatch("[Test]").Bind(
        20300,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>& body) {
            EXPECT_FALSE(body);
            openWhenTold = manager.IsAIChatEnable(Scene(9));
            savesWhenTold = store.Saves().size();
        },
        &listener);

    ServerAnswers(Answer({{9, true}}));

    EXPECT_TRUE(openWhenTold);
    EXPECT_EQ(savesWhenTold, 0u);
    EXPECT_THAT(store.Saves(), SizeIs(1));
}

TEST_F(AIChatManagerTest, ARefusedSaveIsLoggedWithTheTextAndTheListStays) {
    store.RefuseSaves(Failing::Always());

    ServerAnswers(Answer({{9, true}}));

    EXPECT_THAT(log.Lines(), Contains(Info("[AIChat] Update cache failed, aiChatEnableDataStr = [\n\t9\n]\n")));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(9)));
    store.Forget();
}

TEST_F(AIChatManagerTest, TheListIsStoredUnderTheUserOfTheMomentOfTheAnswer) {
    manager.RequestAIChatEnableStatus();
    account.Set(18446744073709551615u);

    channel.Reply(channel.LastSession(), 20982, Answer({{9, true}}));

    EXPECT_EQ(store.AppString("ZRBaseAIChatEnableCacheDataKey_18446744073709551615"), "[\n\t9\n]\n");
}

TEST_F(AIChatManagerTest, AnAnswerAfterTheManagerIsGoneIsDropped) {
    auto* shortLived = new CZRAIChatManager;
    shortLived->RequestAIChatEnableStatus();
    delete shortLived;

    channel.Reply(channel.LastSession(), 20982, Answer({{9, true}}));

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

// The question

TEST_F(AIChatManagerTest, EachQuestionIsLoggedWithSceneAndAnswer) {
    SceneThreeIsOpen();

    manager.IsAIChatEnable(Scene(3));
    manager.IsAIChatEnable(Scene(-1));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] Is AI chat enable, entryScene = 3, enable = true"),
                                         Info("[AIChat] Is AI chat enable, entryScene = -1, enable = false")));
}

TEST_F(AIChatManagerTest, BeforeAnythingWasReadEveryScenesIsClosed) {
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(0)));
}

TEST_F(AIChatManagerTest, ASceneBeyondTheSignedRangeIsStoredAndNeverMatches) {
    ServerAnswers(Answer({{4294967295u, true}, {2147483647u, true}}));

    EXPECT_EQ(store.AppString(kKey), "[\n\t4294967295,\n\t2147483647\n]\n");
    EXPECT_THAT(log.Lines(),
                Contains(Info("[AIChat] RequestAIChatEnableStatus success, scene = 4294967295, is_all_open = true")));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(-1)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(std::numeric_limits<int>::max())));
}

// The developer's override

TEST_F(AIChatManagerTest, OverrideOneOpensEveryScenesAndLogsNothing) {
    SceneThreeIsOpen();
    manager.SetAIChatDevelopEnableType(1);

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(77)));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AIChatManagerTest, AnyOtherOverrideClosesEverySceneAndLogsNothing) {
    SceneThreeIsOpen();
    for (const unsigned int type : {2u, 3u, 256u, 65536u, 4294967295u}) {
        manager.SetAIChatDevelopEnableType(type);
        EXPECT_FALSE(manager.IsAIChatEnable(Scene(3))) << type;
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AIChatManagerTest, OverrideZeroGivesTheServersAnswerBack) {
    SceneThreeIsOpen();
    manager.SetAIChatDevelopEnableType(2);

    manager.SetAIChatDevelopEnableType(0);

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(4)));
}

TEST_F(AIChatManagerTest, EverySettingOfTheOverrideIsToldAlsoTheSameAgainAndNoneIsStored) {
    manager.SetAIChatDevelopEnableType(1);
    manager.SetAIChatDevelopEnableType(1);

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300), ::Message(20300)));
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AIChatManagerTest, TheOverrideIsInForceWhenItIsTold) {
    QObject listener;
    bool openWhenTold = false;
    core::__CMessageDispatch("[Test]").Bind(
        20300,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
            openWhenTold = manager.IsAIChatEnable(Scene(1));
        },
        &listener);

    manager.SetAIChatDevelopEnableType(1);

    EXPECT_TRUE(openWhenTold);
}

TEST_F(AIChatManagerTest, TheOverrideSurvivesLogins) {
    manager.SetAIChatDevelopEnableType(1);

    manager.OnLogout();
    manager.OnLogin();

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(1)));
    channel.Forget();
}

}  // namespace
