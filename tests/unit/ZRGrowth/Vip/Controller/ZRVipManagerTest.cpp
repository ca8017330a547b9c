#include "Vip/Controller/ZRVipManager.h"

#include "Vip/VipStatusTest.h"
#include "modules/IZRGrowthModuleInterface.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class VipManagerTest : public ScriptedHostTest {
protected:
    void LogIn() {
        manager.OnLogin();
        channel.Reply(channel.LastSession(), 20831, FullAnswer());
        log.Forget();
        channel.Forget();
        bus.Forget();
    }

    CZRVipManager manager;
};

TEST_F(VipManagerTest, BeforeItsStartTheManagerKnowsNothingAndDoesNothing) {
    environment.SetVelora(true);
    manager.OnLogin();
    manager.OnLogout();

    EXPECT_FALSE(manager.HasVipQualification());
    EXPECT_EQ(manager.GetVipGrade(), 0);
    EXPECT_EQ(manager.GetVipState(), 0);
    EXPECT_EQ(manager.GetNewVipState(), 0);
    EXPECT_FALSE(manager.IsNewVipSystem());
    EXPECT_EQ(manager.GetVipEngineStatus(), -1);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipManagerTest, LoginAsksForTheStatusAndLogoutClearsIt) {
    manager.Init();
    LogIn();
    EXPECT_TRUE(manager.HasVipQualification());
    EXPECT_EQ(manager.GetVipGrade(), 3);
    EXPECT_EQ(manager.GetVipState(), 1);
    EXPECT_EQ(manager.GetNewVipState(), 1);
    EXPECT_EQ(manager.GetVipEngineStatus(), 1);

    manager.OnLogout();

    EXPECT_FALSE(manager.HasVipQualification());
    EXPECT_EQ(manager.GetVipGrade(), 0);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Clear Vip Status, Reset To Default")));
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

TEST_F(VipManagerTest, UnInitKeepsTheStatusAndServesPushes) {
    manager.Init();
    LogIn();

    manager.UnInit();

    EXPECT_TRUE(manager.HasVipQualification());
    channel.Push(20832, vip_base_service::UserVipStateChangePush());
    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(VipManagerTest, LoginKeepsTheStatusUntilTheAnswerWhenNoLogoutCameBefore) {
    manager.Init();
    LogIn();

    manager.OnLogin();

    EXPECT_TRUE(manager.HasVipQualification());
    EXPECT_EQ(manager.GetVipGrade(), 3);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Send Request For Vip Status From Server")));
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(VipManagerTest, PushLeadsToARequestWhenTheUserIsLoggedOut) {
    manager.Init();
    LogIn();
    manager.OnLogout();
    log.Forget();

    channel.Push(20832, vip_base_service::UserVipStateChangePush());
    time.Settle();

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, 20831u);
}

TEST_F(VipManagerTest, AnswerIsTakenWhenItComesAfterTheLogout) {
    manager.Init();
    manager.OnLogin();
    manager.OnLogout();
    EXPECT_EQ(channel.OutstandingCount(), 1);

    channel.Reply(channel.LastSession(), 20831, FullAnswer());

    EXPECT_EQ(manager.GetVipGrade(), 3);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(80052)));
}

TEST_F(VipManagerTest, TheNewerSystemIsOffInAnotherEditionWhateverTheServerSays) {
    manager.Init();
    LogIn();

    environment.SetVelora(false);
    EXPECT_FALSE(manager.IsNewVipSystem());
    environment.SetVelora(true);
    EXPECT_TRUE(manager.IsNewVipSystem());
}

TEST_F(VipManagerTest, TheNewerSystemIsWhatTheServerSaysInTheVeloraEdition) {
    environment.SetVelora(true);
    manager.Init();
    EXPECT_FALSE(manager.IsNewVipSystem());

    LogIn();
    EXPECT_TRUE(manager.IsNewVipSystem());

    manager.OnLogout();
    EXPECT_FALSE(manager.IsNewVipSystem());
    log.Forget();
}

TEST_F(VipManagerTest, TheOldersAndTheNewersStateAreApart) {
    manager.Init();
    manager.OnLogin();
    auto answer = FullAnswer();
    answer.mutable_data()->mutable_vip_basic_data()->set_vip_state(1);
    answer.mutable_data()->mutable_vip_basic_data()->set_new_vip_state(2);

    channel.Reply(channel.LastSession(), 20831, answer);

    EXPECT_EQ(manager.GetVipState(), 1);
    EXPECT_EQ(manager.GetNewVipState(), 2);
    EXPECT_EQ(manager.GetVipEngineStatus(), 3);
}

TEST(VipManagerShapeTest, TheManagerHasNeitherSignalsNorSlotsOfItsOwn) {
    EXPECT_EQ(CZRVipManager::staticMetaObject.methodCount(), QObject::staticMetaObject.methodCount());
}

TEST_F(VipManagerTest, TheHandlerGoesWithTheManager) {
    auto passing = std::make_unique<CZRVipManager>();
    passing->Init();
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(20832));

    passing.reset();

    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    log.Forget();
}

TEST_F(ScriptedHostTest, TheVipManagerStartsAtItsFirstUseThroughTheService) {
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());

    const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    EXPECT_EQ(service->GetVipGrade(), 0);

    EXPECT_THAT(channel.BoundCommands(), ElementsAre(20832));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Data Handler Module Init Begin"),
                                         Info("[Vip] Vip Data Handler Module Init End, Push Callback Ready")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
}

TEST_F(ScriptedHostTest, AnotherUsersAnswerReplacesTheFormerUsersStatus) {
    CZRVipManager manager;
    manager.Init();
    manager.OnLogin();
    channel.Reply(channel.LastSession(), 20831, FullAnswer());
    manager.OnLogout();
    manager.OnLogin();
    auto second = FullAnswer();
    second.mutable_data()->clear_has_vip_qualification();
    second.mutable_data()->mutable_vip_basic_data()->set_vip_level(1);

    channel.Reply(channel.LastSession(), 20831, second);

    EXPECT_FALSE(manager.HasVipQualification());
    EXPECT_EQ(manager.GetVipGrade(), 1);
}

}  // namespace
