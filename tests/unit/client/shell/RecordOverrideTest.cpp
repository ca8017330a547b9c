#include "RecordOverride.h"

#include "FakeGrowthService.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr EnPremiumAccess kFive{5};
constexpr EnPremiumAccess kSix{6};

class RecordOverrideTest : public ScriptedHostTest {
protected:
    RecordOverrideTest() { service->table[kFive] = RecordOf(kFive, true, "five"); }

    CPremiumUIAccessData& Five() { return service->table[kFive]; }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CRecordOverride changes;
};

}  // namespace

TEST_F(RecordOverrideTest, GivenValuesReplaceTheServers) {
    changes.Set({1, 7, QStringLiteral("B")});

    EXPECT_EQ(Five().nActivationType, 1);
    EXPECT_EQ(Five().nDaysLeft, 7);
    EXPECT_EQ(Five().strUIType, QStringLiteral("B"));
    EXPECT_EQ(Five().strMainTitle, QStringLiteral("five"));
    EXPECT_TRUE(Five().bHasPermission);
}

TEST_F(RecordOverrideTest, MissingValuesKeepTheServers) {
    changes.Set({std::nullopt, 7, std::nullopt});

    EXPECT_EQ(Five().nActivationType, 3);
    EXPECT_EQ(Five().nDaysLeft, 7);
    EXPECT_EQ(Five().strUIType, QStringLiteral("D"));
}

TEST_F(RecordOverrideTest, NoValuesRestoreTheServers) {
    changes.Set({1, 7, QStringLiteral("B")});
    changes.Set({2, std::nullopt, std::nullopt});

    changes.Set({});

    EXPECT_EQ(Five().nActivationType, 3);
    EXPECT_EQ(Five().nDaysLeft, 12);
    EXPECT_EQ(Five().strUIType, QStringLiteral("D"));
}

TEST_F(RecordOverrideTest, EndRestoresTheServers) {
    {
        CRecordOverride shorter;
        shorter.Set({1, 7, QStringLiteral("B")});
    }

    EXPECT_EQ(Five().nActivationType, 3);
    EXPECT_EQ(Five().nDaysLeft, 12);
    EXPECT_EQ(Five().strUIType, QStringLiteral("D"));
}

TEST_F(RecordOverrideTest, ValuesReceivedMeanwhileAreRestored) {
    changes.Set({1, 7, std::nullopt});
    Five().nActivationType = 5;  // days left were not received again
    Five().strUIType = QStringLiteral("A");

    changes.Apply();
    EXPECT_EQ(Five().nActivationType, 1);
    changes.Set({});

    EXPECT_EQ(Five().nActivationType, 5);
    EXPECT_EQ(Five().nDaysLeft, 12);
    EXPECT_EQ(Five().strUIType, QStringLiteral("A"));
}

TEST_F(RecordOverrideTest, RightsThatArriveMeanwhileAreReplacedToo) {
    changes.Set({1, std::nullopt, std::nullopt});
    service->table[kSix] = RecordOf(kSix, true, "six");

    changes.Apply();
    EXPECT_EQ(service->table[kSix].nActivationType, 1);
    changes.Set({});

    EXPECT_EQ(service->table[kSix].nActivationType, 3);
}

TEST_F(RecordOverrideTest, RightsOfAFormerUserAreNotWritten) {
    changes.Set({1, std::nullopt, std::nullopt});
    service->table.clear();

    changes.Apply();
    changes.Set({});

    EXPECT_TRUE(service->table.isEmpty());
}

TEST_F(RecordOverrideTest, NothingHappensWithoutTheModule) {
    changes.Set({1, std::nullopt, std::nullopt});
    service.reset();

    changes.Set({});
}
