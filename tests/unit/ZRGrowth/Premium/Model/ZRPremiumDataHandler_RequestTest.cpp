// The request for rights, and its log lines.
#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;

namespace {

using PremiumRequestTest = PremiumTest;

TEST_F(PremiumRequestTest, ARequestForAllRightsIsTwoBytesUnderCommand20637OwnedByTheHandler) {
    const unsigned long session = handler->GetUiMsgAndPremiumAccessReq(true);

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].session, session);
    EXPECT_EQ(channel.Sent()[0].cmd, kRequest);
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 0x01}));
    EXPECT_EQ(channel.Sent()[0].context, handler);
}

TEST_F(PremiumRequestTest, ARequestForAListSaysNotAllAndHoldsTheListInItsOrder) {
    const unsigned long session = handler->GetUiMsgAndPremiumAccessReq(QVector<int>{15, 13, 15}, true);

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].session, session);
    EXPECT_EQ(channel.Sent()[0].cmd, kRequest);
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 0x00, 0x10, 0x0F, 0x10, 0x0D, 0x10, 0x0F}));
    EXPECT_EQ(channel.Sent()[0].context, handler);
}

TEST_F(PremiumRequestTest, ARequestForOneRightIsFourBytes) {
    handler->GetUiMsgAndPremiumAccessReq(QVector<int>{13}, false);

    EXPECT_THAT(channel.Sent(), ElementsAre(Field(&SentCommand::body, Bytes({0x08, 0x00, 0x10, 0x0D}))));
}

TEST_F(PremiumRequestTest, AnEmptyListIsSentAsItIs) {
    EXPECT_NE(handler->GetUiMsgAndPremiumAccessReq(QVector<int>(), false), 0u);
    EXPECT_NE(handler->GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>(), false), 0u);

    EXPECT_THAT(channel.Sent(), AllOf(SizeIs(2), Each(Field(&SentCommand::body, Bytes({0x08, 0x00})))));
}

TEST_F(PremiumRequestTest, AListOfTheClientsNumbersIsTheSameListOnTheWire) {
    handler->GetUiMsgAndPremiumAccessReq(
        QVector<EnPremiumAccess>{EnPremiumAccess_MyPagePremium, EnPremiumAccess_hk_stock_lv1, EnPremiumAccess(-1)},
        false);
    handler->GetUiMsgAndPremiumAccessReq(QVector<int>{1000, 13, -1}, false);

    ASSERT_THAT(channel.Sent(), SizeIs(2));
    EXPECT_EQ(channel.Sent()[0].body, channel.Sent()[1].body);
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 0x00, 0x10, 0xE8, 0x07, 0x10, 0x0D, 0x10, 0xFF, 0xFF, 0xFF, 0xFF,
                                             0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));
}

TEST_F(PremiumRequestTest, NumbersThatAreNoRightsAreAskedForAllTheSame) {
    handler->GetUiMsgAndPremiumAccessReq(QVector<int>{0, 9, 5000}, false);

    EXPECT_THAT(channel.Sent(),
                ElementsAre(Field(&SentCommand::body, Bytes({0x08, 0x00, 0x10, 0x00, 0x10, 0x09, 0x10, 0x88, 0x27}))));
}

TEST_F(PremiumRequestTest, EachRequestHasASessionOfItsOwn) {
    const unsigned long first = handler->GetUiMsgAndPremiumAccessReq(true);
    const unsigned long second = handler->GetUiMsgAndPremiumAccessReq(QVector<int>{13}, true);
    const unsigned long third = handler->GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{}, true);

    EXPECT_THAT(channel.Sent(), ElementsAre(Field(&SentCommand::session, first), Field(&SentCommand::session, second),
                                            Field(&SentCommand::session, third)));
    EXPECT_THAT((std::set<unsigned long>{first, second, third}), SizeIs(3));
}

TEST_F(PremiumRequestTest, ARequestForAllRightsIsLoggedWithSessionAndFlag) {
    const auto first = std::to_string(handler->GetUiMsgAndPremiumAccessReq(true));
    const auto second = std::to_string(handler->GetUiMsgAndPremiumAccessReq(false));
    channel.Forget();

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(
            Info("[Premium] Send Request For All Premium Access, Session = " + first + ", Server Push = true"),
            Info("[Premium] Send Request For All Premium Access, Session = " + second + ", Server Push = false")));
}

TEST_F(PremiumRequestTest, ARequestForAListIsLoggedWithItsCountFirst) {
    const auto first = std::to_string(handler->GetUiMsgAndPremiumAccessReq(QVector<int>{7, 7, 8}, false));
    const auto second = std::to_string(handler->GetUiMsgAndPremiumAccessReq(QVector<int>(), true));
    const auto third = std::to_string(handler->GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{Right(1)}, true));
    channel.Forget();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Premium] Send Request For Custom Premium Access, Count = 3, Session = " + first +
                                 ", Server Push = false"),
                            Info("[Premium] Send Request For Custom Premium Access, Count = 0, Session = " + second +
                                 ", Server Push = true"),
                            Info("[Premium] Send Request For Custom Premium Access, Count = 1, Session = " + third +
                                 ", Server Push = true")));
}

TEST_F(PremiumRequestTest, AskingAloneTellsNobodyAndChangesNothing) {
    TableHolds({13});

    handler->GetUiMsgAndPremiumAccessReq(true);
    channel.Forget();

    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

TEST_F(PremiumRequestTest, LinesCarryTheModuleTagTheirSourceAndTheirFunction) {
    handler->GetUiMsgAndPremiumAccessReq(true);
    channel.Forget();

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].module, "ZRGrowth");
    EXPECT_EQ(log.Lines()[0].file, "ZRGrowth/Premium/Model/ZRPremiumDataHandler");
    EXPECT_EQ(log.Lines()[0].function, "GetUiMsgAndPremiumAccessReq");
    EXPECT_GT(log.Lines()[0].line, 0);
}

}  // namespace
