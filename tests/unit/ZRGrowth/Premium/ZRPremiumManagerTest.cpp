#include "Premium/ZRPremiumManager.h"

#include <QTimer>

#include "CallList.h"
#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

using PremiumManagerTest = PremiumTest;

// Before its start

TEST_F(ScriptedHostTest, BeforeItsStartThePremiumManagerGivesEmptyValuesAndDoesNothing) {
    store.SetUserString(0, kSavedKey, SavedBytes(Table({13})));
    CZRPremiumManager manager;

    EXPECT_EQ(manager.GetUiMsgAndPremiumAccessReq(true), 0u);
    EXPECT_EQ(manager.GetUiMsgAndPremiumAccessReq(QVector<int>{13}, false), 0u);
    EXPECT_EQ(manager.GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{Right(13)}, false), 0u);
    manager.OnLogin();
    manager.SetUIAccessData(Right(13), Record(13, 1));
    manager.SavePremiumData();
    EXPECT_EQ(manager.GetUIData(Right(13)), CPremiumUIData());
    EXPECT_EQ(manager.GetAccessData(Right(13)), CPremiumAccessData());
    EXPECT_EQ(manager.GetUIAccessData(Right(13)), CPremiumUIAccessData());
    EXPECT_TRUE(manager.GetUIAccessData().isEmpty());
    manager.OnLogout();
    manager.UnInit();

    EXPECT_TRUE(manager.children().isEmpty());
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_EQ(bus.SubscriptionCount(), 0);
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ScriptedHostTest, TheFirstUseMakesThePremiumManagerAndDoesNotStartIt) {
    CZRPremiumManager* manager = CZRPremiumManager::Singleton();

    EXPECT_EQ(CZRPremiumManager::Singleton(), manager);
    EXPECT_FALSE(manager->parent());
    EXPECT_TRUE(manager->children().isEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
}

TEST(PremiumManagerMetaTest, TheManagerHasNeitherSignalsNorSlotsOfItsOwn) {
    const QMetaObject& meta = CZRPremiumManager::staticMetaObject;

    EXPECT_STREQ(meta.className(), "CZRPremiumManager");
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
}

// Start and end

TEST_F(ScriptedHostTest, ThePremiumManagersStartMakesTheHandlerWhichWorksFromThenOnAndReadsNoSavedTable) {
    account.Set(kUser);
    store.SetUserString(kUser, kSavedKey, SavedBytes(Table({13})));
    CZRPremiumManager manager;

    manager.Init();

    const auto handlers = manager.findChildren<CZRPremiumDataHandler*>();
    ASSERT_EQ(handlers.size(), 1);
    EXPECT_EQ(handlers[0]->parent(), &manager);
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_EQ(bus.SubscriptionCount(), 1);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_TRUE(manager.GetUIAccessData().isEmpty());
    EXPECT_THAT(log.Lines(), SizeIs(2));
}

TEST_F(PremiumManagerTest, ItsEndDoesNothing) {
    TableHolds({13});

    manager->UnInit();

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_EQ(bus.SubscriptionCount(), 1);
    EXPECT_THAT(log.Lines(), IsEmpty());
    time.Advance(1h);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

// Login and logout

TEST_F(PremiumManagerTest, ALoginIsHandedToTheHandler) {
    manager->OnLogin();

    EXPECT_THAT(channel.Sent(), ElementsAre(AllOf(Field(&SentCommand::body, Bytes({0x08, 0x01})),
                                                  Field(&SentCommand::context, handler))));
    EXPECT_THAT(log.Lines()[0], Info("[Premium] User Login Received, Request All Premium Data From Server"));
}

TEST_F(PremiumManagerTest, ALoginDoesNotRestoreWhatIsSaved) {
    store.SetUserString(kUser, kSavedKey, SavedBytes(Table({13})));

    manager->OnLogin();
    time.Advance(1min);
    channel.Forget();

    EXPECT_TRUE(manager->GetUIAccessData().isEmpty());
    EXPECT_EQ(manager->GetUIAccessData(Right(13)), CPremiumUIAccessData());
}

TEST_F(PremiumManagerTest, ALoginLeavesTheTableAsItIs) {
    TableHolds({13});

    manager->OnLogin();
    channel.Forget();

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

TEST_F(PremiumManagerTest, ALogoutEmptiesTheTableAndTellsNobodyAlsoNotTheHandler) {
    ServerAnswers(Answer({13, 1000}));
    Forget();

    manager->OnLogout();

    EXPECT_TRUE(manager->GetUIAccessData().isEmpty());
    EXPECT_EQ(manager->GetUIAccessData(Right(1000)), CPremiumUIAccessData());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(store.UserString(kUser, kSavedKey), SavedBytes(Table({13, 1000})));
}

TEST_F(PremiumManagerTest, AfterALogoutTimerAndBindingsGoOn) {
    manager->OnLogout();

    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_EQ(bus.SubscriptionCount(), 1);
    EXPECT_TRUE(handler->findChild<QTimer*>()->isActive());
    time.Advance(1h);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
    bus.HostSend(kLanguageChanged);
    EXPECT_THAT(channel.Sent(), SizeIs(2));
    channel.Push(kPush, Bytes({0x08, 0x00, 0x10, 0x01}));
    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(3));
}

TEST_F(PremiumManagerTest, ARequestThatIsOutAtALogoutFillsTheTableAgain) {
    const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(false);
    manager->OnLogout();
    account.Set(0);

    channel.Reply(session, kRequest, Answer({13}));

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{0u, kSavedKey, SavedBytes(Table({13}))}));
}

// Forwarding

TEST_F(PremiumManagerTest, TheThreeRequestsAreTheHandlers) {
    const unsigned long all = manager->GetUiMsgAndPremiumAccessReq(true);
    const unsigned long list = manager->GetUiMsgAndPremiumAccessReq(QVector<int>{14, 13}, false);
    const unsigned long clients = manager->GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{Right(14)}, false);

    ASSERT_THAT(channel.Sent(), SizeIs(3));
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 0x01}));
    EXPECT_EQ(channel.Sent()[1].body, Bytes({0x08, 0x00, 0x10, 0x0E, 0x10, 0x0D}));
    EXPECT_EQ(channel.Sent()[2].body, Bytes({0x08, 0x00, 0x10, 0x0E}));
    for (const unsigned long session : {all, list, clients}) {
        channel.Reply(session, kRequest, Answer({}));
    }
    EXPECT_THAT(bus.Sent(),
                ElementsAre(::Message(kChanged), ::Message(kAnswered, list, 0), ::Message(kAnswered, clients, 0)));
    store.Forget();
}

TEST_F(PremiumManagerTest, TheHalvesAreThoseOfTheWholeRecord) {
    manager->SetUIAccessData(Right(13), Record(14, 2));

    EXPECT_EQ(manager->GetUIAccessData(Right(13)), Record(14, 2));
    EXPECT_EQ(manager->GetUIData(Right(13)), CPremiumUIData(Record(14, 2)));
    EXPECT_EQ(manager->GetAccessData(Right(13)), CPremiumAccessData(Record(14, 2)));
    EXPECT_EQ(manager->GetUIAccessData(), (PremiumTable{{Right(13), Record(14, 2)}}));
}

TEST_F(PremiumManagerTest, SettingARecordReplacesItAndTellsSavesAndLogsNothing) {
    TableHolds({13});
    CPremiumUIAccessData blank;

    manager->SetUIAccessData(Right(13), blank);

    EXPECT_EQ(manager->GetUIAccessData(), (PremiumTable{{Right(13), blank}}));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(PremiumManagerTest, ARecordThatWasSetLastsUntilTheServersNextWordOnIt) {
    manager->SetUIAccessData(Right(13), Record(13, 5));

    ServerAnswers(Answer({14}));
    EXPECT_EQ(manager->GetUIAccessData(Right(13)), Record(13, 5));
    ServerAnswers(Answer({13}, 6));
    EXPECT_EQ(manager->GetUIAccessData(Right(13)), Record(13, 6));
    store.Forget();
}

TEST_F(PremiumManagerTest, SavingIsTheModels) {
    manager->SetUIAccessData(Right(13), Record(13, 1));

    manager->SavePremiumData();

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13}))}));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

/// Asks the manager to set a right at the moment when its handler begins to work.
class CCurious : public CCallList {
public:
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override {
        CCallList::BindCallback(commandId, std::move(callback), context);
        manager->SetUIAccessData(EnPremiumAccess_Insider, {});
    }

    CZRPremiumManager* manager = nullptr;
};

TEST(PremiumManagerCallsTest, TheHandlerStartsBeforeThereIsATable) {
    CCurious host;
    host.Install();
    CZRPremiumManager manager;
    host.manager = &manager;

    manager.Init();

    EXPECT_THAT(host.calls, Contains("bind push 20837"));
    EXPECT_TRUE(manager.GetUIAccessData().isEmpty());
    host::Uninstall();
}

}  // namespace
