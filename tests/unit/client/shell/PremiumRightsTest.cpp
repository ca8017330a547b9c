#include "PremiumRights.h"

#include <QSignalSpy>

#include "FakeGrowthService.h"
#include "PremiumNumbers.h"
#include "modules/ZRGrowthMessages.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class PremiumRightsTest : public ScriptedHostTest {
protected:
    std::vector<int> Rights() const {
        std::vector<int> numbers;
        for (const EnPremiumAccess right : rights.Table().keys()) {
            numbers.push_back(right);
        }
        return numbers;
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
};

class PremiumMessageTest : public PremiumRightsTest, public WithParamInterface<unsigned int> {};

}  // namespace

TEST_P(PremiumMessageTest, BringsTableAndStatusAnew) {
    QSignalSpy changed(&rights, &CPremiumRights::Changed);
    service->table[EnPremiumAccess(5)] = RecordOf(EnPremiumAccess(5), true, "five");
    service->qualification = true;
    service->grade = 3;
    service->state = 1;
    service->isNewSystem = true;
    service->newState = 2;
    service->engine = kVipEngineExpired;
    EXPECT_THAT(Rights(), IsEmpty());

    bus.HostSend(GetParam());

    EXPECT_EQ(changed.count(), 1);
    EXPECT_THAT(Rights(), ElementsAre(5));
    EXPECT_TRUE(rights.Vip().qualification);
    EXPECT_EQ(rights.Vip().grade, 3);
    EXPECT_EQ(rights.Vip().state, 1);
    EXPECT_TRUE(rights.Vip().isNewSystem);
    EXPECT_EQ(rights.Vip().newState, 2);
    EXPECT_EQ(rights.Vip().engine, kVipEngineExpired);
}

INSTANTIATE_TEST_SUITE_P(Messages, PremiumMessageTest, Values(80050u, 80051u, 80052u, 20100u),
                         [](const auto& row) { return std::to_string(row.param); });

TEST_F(PremiumRightsTest, ALogoutThatTheModuleTellsNobodyIsSeenAtTheNextRefresh) {
    service->table[EnPremiumAccess(5)] = RecordOf(EnPremiumAccess(5), true, "five");
    service->engine = kVipEngineMember;
    bus.HostSend(kMsgPremiumDataChanged);

    service->table.clear();
    service->engine = kVipEngineUndetermined;
    rights.Refresh();

    EXPECT_THAT(Rights(), IsEmpty());
    EXPECT_EQ(rights.Vip().engine, kVipEngineUndetermined);
}

TEST_F(PremiumRightsTest, WithoutTheModuleThereIsNothingAndNobodyIsAsked) {
    service->table[EnPremiumAccess(5)] = RecordOf(EnPremiumAccess(5), true, "five");
    service->engine = kVipEngineMember;
    service->session = 9;
    rights.Refresh();
    EXPECT_TRUE(CPremiumRights::HasModule());

    service.reset();
    rights.Refresh();

    EXPECT_FALSE(CPremiumRights::HasModule());
    EXPECT_THAT(Rights(), IsEmpty());
    EXPECT_EQ(rights.Vip().engine, kVipEngineUndetermined);
    EXPECT_EQ(CPremiumRights::AskAll(true), 0u);
    EXPECT_EQ(CPremiumRights::AskList({1}, true), 0u);
    EXPECT_EQ(CPremiumRights::Record(EnPremiumAccess(5)).enAccess, 0);
}

TEST_F(PremiumRightsTest, ARecordIsAskedForAsOfTheMoment) {
    service->table[EnPremiumAccess(5)] = RecordOf(EnPremiumAccess(5), true, "five");

    EXPECT_EQ(CPremiumRights::Record(EnPremiumAccess(5)).strMainTitle, QStringLiteral("five"));
    EXPECT_EQ(CPremiumRights::Record(EnPremiumAccess(6)).enUIAccess, 0);
}

TEST_F(PremiumRightsTest, AQuestionGoesToTheModuleAndItsSessionComesBack) {
    service->session = 17;

    EXPECT_EQ(CPremiumRights::AskAll(false), 17u);
    EXPECT_EQ(CPremiumRights::AskList({1000, 5}, true), 17u);
    EXPECT_EQ(CPremiumRights::AskList({}, false), 17u);

    EXPECT_THAT(service->asked, ElementsAre("all wait", "1000 5 push", "wait"));
}

TEST_F(PremiumRightsTest, TheServiceIsNotHeldBetweenCalls) {
    rights.Refresh();

    EXPECT_EQ(service.use_count(), 1);
}
