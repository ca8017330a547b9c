// The number of a user's status in the VIP service.
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/VipStatusTest.h"

using namespace ::testing;

namespace {

struct Row {
    const char* name;
    uint32_t newState;
    uint32_t subState;
    int32_t autoRenewal;
    int status;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.name;
}

class VipEngineStatusTest : public ScriptedHostTest {
protected:
    void Become(uint32_t newState, uint32_t subState, int32_t autoRenewal = 0, uint32_t version = 1) {
        auto answer = FullAnswer();
        auto* basic = answer.mutable_data()->mutable_vip_basic_data();
        basic->set_vip_version(version);
        basic->set_new_vip_state(newState);
        basic->set_new_vip_sub_state(subState);
        basic->set_auto_renewal(autoRenewal);
        handler.RequestVipStatus();
        channel.Reply(channel.LastSession(), 20831, answer);
        log.Forget();
    }

    CZRVipDataHandler handler{nullptr};
    const std::shared_ptr<CFakeTradeFactory> trade = RegisterTradeModule();
};

class VipEngineStatusOfMembersTest : public VipEngineStatusTest, public WithParamInterface<Row> {};

TEST_P(VipEngineStatusOfMembersTest, FollowsStateSubStateAndRenewal) {
    const Row& row = GetParam();
    Become(row.newState, row.subState, row.autoRenewal);

    EXPECT_EQ(handler.GetVipEngineStatus(), row.status);
    EXPECT_THAT(trade->module->asked, IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, VipEngineStatusOfMembersTest,
                         Values(Row{"Trial", 1, 101, 0, 0}, Row{"TrialThatRenews", 1, 101, 1, 0},
                                Row{"Gift", 1, 102, 0, 1}, Row{"AssetQualified", 1, 105, 0, 1},
                                Row{"MonthlyThatRenews", 1, 103, 1, 1}, Row{"MonthlyOff", 1, 103, 0, 5},
                                Row{"MonthlyWithRenewal2IsOff", 1, 103, 2, 5}, Row{"AnnualThatRenews", 1, 104, 1, 1},
                                Row{"AnnualOff", 1, 104, 0, 5}, Row{"AssetProtection", 1, 106, 0, 2},
                                Row{"Expired", 2, 0, 0, 3}, Row{"ExpiredTrial", 2, 101, 1, 3}),
                         [](const auto& row) { return PrintToString(row.param); });

TEST_F(VipEngineStatusTest, AnUnexpectedSubStateOfAMemberIsAssertedLoggedAndUndeterminedAtEachCall) {
    for (const uint32_t subState : {0u, 100u, 107u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(subState);
        Become(1, subState);

        EXPECT_EQ(handler.GetVipEngineStatus(), -1);
        EXPECT_EQ(handler.GetVipEngineStatus(), -1);

        const auto line =
            Error("[Vip] Unexpected Sub State While Active, Sub State = " + std::to_string(int(subState)));
        EXPECT_THAT(log.Lines(), ElementsAre(line, line));
        const auto assertions = log.Assertions();
        ASSERT_THAT(assertions, SizeIs(2));
        EXPECT_EQ(assertions[0].type, 3);
        EXPECT_EQ(assertions[0].module, "ZRGrowth");
        EXPECT_EQ(assertions[0].expression, "Unexpected New Vip Sub State While Active");
        EXPECT_EQ(assertions[0].detail, "");
        EXPECT_EQ(assertions[0].file, "ZRGrowth/Vip/Model/ZRVipDataHandler");
        EXPECT_GT(assertions[0].line, 0);
        EXPECT_THAT(trade->module->asked, IsEmpty());
    }
}

TEST_F(VipEngineStatusTest, ANonMemberIsWhatTheTradeModuleSays) {
    Become(0, 0);

    trade->module->answer = true;
    EXPECT_EQ(handler.GetVipEngineStatus(), -1);
    trade->module->answer = false;
    EXPECT_EQ(handler.GetVipEngineStatus(), 4);
    EXPECT_THAT(trade->module->asked, ElementsAre(1007, 1007));
}

TEST_F(VipEngineStatusTest, AStateThatNoNameStandsForIsDecidedLikeANonMember) {
    for (const uint32_t state : {3u, 7u, 0xFFFFFFFFu}) {
        Become(state, 101);
        EXPECT_EQ(handler.GetVipEngineStatus(), 4) << state;
    }
}

TEST_F(VipEngineStatusTest, WithoutATradeModuleANonMemberIsUndetermined) {
    trade->module.reset();

    EXPECT_EQ(handler.GetVipEngineStatus(), -1);
}

TEST_F(VipEngineStatusTest, TheTradeModuleIsLookedForAtEachCall) {
    const auto module = trade->module;
    trade->module.reset();
    EXPECT_EQ(handler.GetVipEngineStatus(), -1);

    trade->module = module;

    EXPECT_EQ(handler.GetVipEngineStatus(), 4);
}

TEST_F(VipEngineStatusTest, TheVersionPlaysNoPart) {
    Become(0, 0, 0, 0);
    EXPECT_EQ(handler.GetVipEngineStatus(), 4);

    Become(1, 101, 0, 0);
    EXPECT_EQ(handler.GetVipEngineStatus(), 0);
}

TEST_F(VipEngineStatusTest, AUserWhoIsClearedIsANonMember) {
    Become(1, 101);
    handler.ClearVipStatus();
    log.Forget();

    EXPECT_EQ(handler.GetVipEngineStatus(), 4);
}

}  // namespace
