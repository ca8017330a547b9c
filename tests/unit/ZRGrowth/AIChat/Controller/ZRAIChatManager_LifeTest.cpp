// The cache, and the life from the first use to the end.
#include <QMetaMethod>

#include "AIChatManagerTest.h"
#include "GrowthJson.h"
#include "ZRGrowthModule.h"
#include "core/IChannel.h"
#include "core/message_dispatch.h"
#include "framework/Ports.h"

using namespace ::testing;

namespace {

// The cache

TEST_F(AIChatManagerTest, TheKeyIsTheConstantAndTheDecimalUserId) {
    EXPECT_EQ(manager.GenerateAIChatEnableCacheDataKey().toStdString(), kKey);
    account.Set(0);
    EXPECT_EQ(manager.GenerateAIChatEnableCacheDataKey().toStdString(), "ZRBaseAIChatEnableCacheDataKey_0");
}

TEST_F(AIChatManagerTest, AMissingCacheIsLoggedAndLeavesTheListEmpty) {
    SceneThreeIsOpen();
    account.Set(777);

    manager.ReadAIChatEnableCacheData();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] Read cache failed")));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
}

TEST_F(AIChatManagerTest, AReadableCacheIsNeverServed) {
    store.SetAppString(kKey, "[ 3 ]");

    manager.ReadAIChatEnableCacheData();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
}

TEST_F(AIChatManagerTest, ACacheThatIsNoJsonIsLoggedWithTheParsersTextAndLeavesTheListEmpty) {
    SceneThreeIsOpen();
    store.SetAppString(kKey, "[ 3, ");

    manager.ReadAIChatEnableCacheData();

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].severity, kZRLogInfo);
    EXPECT_THAT(log.Lines()[0].text, StartsWith("[AIChat] Parse cache failed, error = * Line 1, Column"));
    Json::Value value;
    std::string error;
    ASSERT_FALSE(growth_json::Parse("[ 3, ", value, error));
    EXPECT_EQ(log.Lines()[0].text, "[AIChat] Parse cache failed, error = " + error);
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
}

TEST_F(AIChatManagerTest, ACacheIsReadWithTheParsersLenientDefaults) {
    for (const char* cached : {"[ 3 ] // seen", "[ 3, ]", "7"}) {
        store.SetAppString(kKey, cached);

        manager.ReadAIChatEnableCacheData();

        EXPECT_THAT(log.Lines(), IsEmpty()) << cached;
    }
}

TEST_F(AIChatManagerTest, ACacheThatIsNestedPastTheParsersDepthIsAParseFailureToo) {
    SceneThreeIsOpen();
    store.SetAppString(kKey, std::string(2000, '['));

    manager.ReadAIChatEnableCacheData();

    EXPECT_THAT(log.Lines(), ElementsAre(Info(MatchesRegex("\\[AIChat\\] Parse cache failed, error = .*[a-z].*"))));
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
}

TEST_F(AIChatManagerTest, AnUnreadableStoreIsAMissingCache) {
    store.SetAppString(kKey, "[ 3 ]");
    store.RefuseReads(Failing::Always());

    manager.ReadAIChatEnableCacheData();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] Read cache failed")));
}

TEST_F(AIChatManagerTest, TheResetByAReadIsNotTold) {
    SceneThreeIsOpen();

    manager.ReadAIChatEnableCacheData();

    EXPECT_THAT(bus.Sent(), IsEmpty());
}

// The lifecycle

const Matcher<LogLine> kPageLine = Info("[AIChat] Get AI chat url from local, url = https://chat.zrgrowth.example/");
const Matcher<LogLine> kPreloadLine =
    Info("[AIChat] Get AI chat preload url from local, url = https://chat.zrgrowth.example/preload");
const Matcher<LogLine> kLoginLine = Info("[AIChat] OnLogin, preload AI chat web page");
const Matcher<LogLine> kReadLine = Info("[AIChat] Read cache failed");

TEST_F(AIChatManagerTest, InitReadsTheCacheAndAsksNobody) {
    account.Set(0);

    manager.Init();

    EXPECT_THAT(log.Lines(), ElementsAre(kPageLine, kPreloadLine, kReadLine));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

TEST_F(AIChatManagerTest, LoginReadsTheCacheOfTheUserWhoIsLoggedInAndTellsNobody) {
    store.SetAppString("ZRBaseAIChatEnableCacheDataKey_777", "[ 3");
    account.Set(777);

    manager.OnLogin();

    EXPECT_THAT(log.Lines(), ElementsAre(kLoginLine, Info(StartsWith("[AIChat] Parse cache failed, error = "))));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    channel.Forget();
}

/// A channel that notes how many lines the log had when something was sent.
class CNotingChannel : public IChannel {
public:
    explicit CNotingChannel(CScriptedLog& log) : m_log(log) {}

    unsigned long SendCommand(const CSProtoData&, CSCallback, QObject*) override {
        linesAtSend = m_log.Lines().size();
        return 1;
    }
    void BindCallback(unsigned short, CSCallback, QObject*) override {}
    void UnbindCallback(QObject*) override {}

    size_t linesAtSend = 99;

private:
    CScriptedLog& m_log;
};

TEST_F(AIChatManagerTest, LoginReadsBeforeItAsks) {
    CNotingChannel noting(log);
    host::Ports ports;
    ports.log = &log;
    ports.store = &store;
    ports.channel = &noting;
    host::Install(ports);

    manager.OnLogin();

    EXPECT_THAT(log.Lines(), ElementsAre(kLoginLine, kReadLine));
    EXPECT_EQ(noting.linesAtSend, 2u);
}

TEST_F(AIChatManagerTest, UnInitEndsTheManagersSubscriptions) {
    int told = 0;
    core::__CMessageDispatch("[Test]").Bind(
        20100, [&told](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { ++told; }, &manager);

    manager.UnInit();
    bus.HostSend(20100);

    EXPECT_EQ(told, 0);
}

TEST_F(AIChatManagerTest, UnInitKeepsTheOutstandingAnswer) {
    manager.RequestAIChatEnableStatus();

    manager.UnInit();

    EXPECT_EQ(channel.OutstandingCount(), 1);
    channel.Reply(channel.LastSession(), 20982, Answer({{3, true}}));
    EXPECT_TRUE(manager.IsAIChatEnable(Scene(3)));
    store.Forget();
}

TEST_F(AIChatManagerTest, TheCallbackIsAProtectedSlotOfTheMetaObject) {
    const QMetaObject& meta = CZRAIChatManager::staticMetaObject;
    const int index = meta.indexOfSlot(
        "OnRequestAIChatEnableStatusCallback(qulonglong,CSProtoError,CSProtoData,const CSResponseExt*)");

    ASSERT_GE(index, 0);
    EXPECT_EQ(meta.method(index).access(), QMetaMethod::Protected);
}

TEST_F(AIChatManagerTest, LinesOfTheCallbackNameItAsTheirFunction) {
    ServerAnswers(Answer({{1, true}}));

    EXPECT_THAT(log.Lines(), Each(Field(&LogLine::function, "OnRequestAIChatEnableStatusCallback")));
    store.Forget();
}

TEST_F(AIChatManagerTest, LoginEmptiesTheListThenAsksOnce) {
    SceneThreeIsOpen();
    store.SetAppString(kKey, "[ 3 ]");

    manager.OnLogin();

    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, 20982u);
}

TEST_F(AIChatManagerTest, LogoutKeepsTheLastUsersScenesUntilTheNextLogin) {
    SceneThreeIsOpen();

    manager.OnLogout();

    EXPECT_TRUE(manager.IsAIChatEnable(Scene(3)));
    EXPECT_THAT(bus.Sent(), IsEmpty());

    account.Set(777);
    manager.OnLogin();
    EXPECT_FALSE(manager.IsAIChatEnable(Scene(3)));
    channel.Forget();
}

TEST_F(AIChatManagerTest, EveryLineCarriesTheModuleTagItsSourceAndItsFunction) {
    manager.ReadAIChatEnableCacheData();

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].module, "ZRGrowth");
    EXPECT_EQ(log.Lines()[0].file, "ZRGrowth/AIChat/Controller/ZRAIChatManager");
    EXPECT_EQ(log.Lines()[0].function, "ReadAIChatEnableCacheData");
    EXPECT_GT(log.Lines()[0].line, 0);
}

TEST_F(AIChatManagerTest, TheFirstUseMakesAndStartsTheOneManager) {
    CZRAIChatManager* first = CZRAIChatManager::Singleton();

    EXPECT_EQ(CZRAIChatManager::Singleton(), first);
    EXPECT_THAT(log.Lines(), ElementsAre(kPageLine, kPreloadLine, kReadLine));
}

TEST_F(AIChatManagerTest, ALoginThatIsTheFirstUseReadsTheCacheTwice) {
    CZRAIChatManager::Singleton()->OnLogin();

    EXPECT_THAT(log.Lines(), ElementsAre(kPageLine, kPreloadLine, kReadLine, kLoginLine, kReadLine));
    channel.Forget();
}

TEST_F(AIChatManagerTest, TheModulesEndIsAFirstUseToo) {
    CZRGrowthModule module;

    module.OnUnInit();

    EXPECT_THAT(log.Lines(), ElementsAre(kPageLine, kPreloadLine, kReadLine));
}

}  // namespace
