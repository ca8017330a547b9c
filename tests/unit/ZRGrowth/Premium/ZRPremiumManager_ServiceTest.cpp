// The rights as other modules read them through the module's service.
#include "Premium/PremiumTest.h"
#include "WireBytes.h"
#include "ZRGrowthModule.h"
#include "core/message_dispatch.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"

using namespace ::testing;

namespace {

class PremiumServiceTest : public ScriptedHostTest {
protected:
    PremiumServiceTest() { account.Set(kUser); }

    const std::shared_ptr<IZRGrowthModuleInterface> service =
        IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    CZRGrowthModule module;
};

TEST_F(PremiumServiceTest, BeforeTheModuleStartsRequestsGiveZeroAndNothingIsSent) {
    EXPECT_EQ(service->GetUiMsgAndPremiumAccessReq(true), 0u);
    EXPECT_EQ(service->GetUiMsgAndPremiumAccessReq(false), 0u);
    EXPECT_EQ(service->GetUiMsgAndPremiumAccessReq(QVector<int>{13}, true), 0u);
    EXPECT_EQ(service->GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{Right(13)}, true), 0u);

    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(PremiumServiceTest, BeforeTheModuleStartsRightsAreBlankAndCannotBeSet) {
    service->SetUIAccessData(Right(13), Record(13, 1));

    EXPECT_EQ(service->GetUIData(Right(13)), CPremiumUIData());
    EXPECT_EQ(service->GetAccessData(Right(13)), CPremiumAccessData());
    EXPECT_EQ(service->GetUIAccessData(Right(13)), CPremiumUIAccessData());
    EXPECT_TRUE(service->GetUIAccessData().isEmpty());

    module.OnInit();
    EXPECT_TRUE(service->GetUIAccessData().isEmpty());
}

TEST_F(PremiumServiceTest, ARequestForAllRightsGivesItsSessionWhichTheMessageNames) {
    module.OnInit();

    const unsigned long session = service->GetUiMsgAndPremiumAccessReq(false);

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].session, session);
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 0x01}));
    channel.Reply(session, kRequest, Answer({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_EQ(service->GetUIAccessData(), Table({13}));
    store.Forget();
}

TEST_F(PremiumServiceTest, ListsOfBothTypesAskForTheSame) {
    module.OnInit();

    const unsigned long numbers = service->GetUiMsgAndPremiumAccessReq(QVector<int>{1000, 13}, false);
    const unsigned long rights = service->GetUiMsgAndPremiumAccessReq(
        QVector<EnPremiumAccess>{EnPremiumAccess_MyPagePremium, EnPremiumAccess_hk_stock_lv1}, true);

    const std::string body = Bytes({0x08, 0x00, 0x10, 0xE8, 0x07, 0x10, 0x0D});
    EXPECT_THAT(channel.Sent(),
                ElementsAre(AllOf(Field(&SentCommand::session, numbers), Field(&SentCommand::body, body)),
                            AllOf(Field(&SentCommand::session, rights), Field(&SentCommand::body, body))));
    channel.Reply(rights, kRequest, Answer({13}));
    channel.Reply(numbers, kRequest, Answer({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged), ::Message(kAnswered, numbers, 0)));
    store.Forget();
}

TEST_F(PremiumServiceTest, AFailureIsToldWithItsSession) {
    module.OnInit();

    const unsigned long session = service->GetUiMsgAndPremiumAccessReq(QVector<int>{13}, true);
    channel.Fail(session, kCSProtoTimedOut);

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2)));
    log.Forget();
}

TEST_F(PremiumServiceTest, TheGettersGiveTheRecordAndItsHalves) {
    module.OnInit();
    service->SetUIAccessData(Right(13), Record(13, 1));
    service->SetUIAccessData(Right(1000), Record(1000, 2));

    EXPECT_EQ(service->GetUIData(Right(1000)), CPremiumUIData(Record(1000, 2)));
    EXPECT_EQ(service->GetAccessData(Right(1000)), CPremiumAccessData(Record(1000, 2)));
    EXPECT_EQ(service->GetUIAccessData(Right(13)), Record(13, 1));
    EXPECT_EQ(service->GetUIAccessData(), (PremiumTable{{Right(13), Record(13, 1)}, {Right(1000), Record(1000, 2)}}));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(PremiumServiceTest, ARightThatIsNotInTheTableIsZeroWithoutPermission) {
    module.OnInit();
    service->SetUIAccessData(Right(13), Record(13, 1));

    const CPremiumAccessData state = service->GetAccessData(Right(14));

    EXPECT_EQ(state, CPremiumAccessData());
    EXPECT_FALSE(state.bHasPermission);
    EXPECT_EQ(service->GetUIAccessData(Right(14)), CPremiumUIAccessData());
    EXPECT_EQ(service->GetUIAccessData().size(), 1);
}

TEST_F(PremiumServiceTest, AReceiverOfTheMessageReadsTheNewRightsThroughTheService) {
    module.OnInit();
    QObject receiver;
    std::vector<CPremiumUIAccessData> read;
    core::__CMessageDispatch("[Test]").Bind(
        kAnswered,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
            read.push_back(service->GetUIAccessData(Right(13)));
        },
        &receiver);

    channel.Reply(service->GetUiMsgAndPremiumAccessReq(false), kRequest, Answer({13}));
    store.Forget();

    EXPECT_THAT(read, ElementsAre(Record(13, 1)));
}

TEST_F(PremiumServiceTest, ALogoutOfTheModuleEmptiesTheTableAndItsEndDoesNot) {
    module.OnInit();
    service->SetUIAccessData(Right(13), Record(13, 1));

    module.OnUnInit();
    EXPECT_EQ(service->GetUIAccessData(), Table({13}));
    module.OnLogout();
    EXPECT_TRUE(service->GetUIAccessData().isEmpty());
}

}  // namespace
