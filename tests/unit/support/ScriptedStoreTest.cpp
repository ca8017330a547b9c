#include "support/ScriptedStore.h"

#include "core/config_local.h"
#include "support/ScriptedHostTest.h"

using namespace core::config_local;
using ::testing::ElementsAre;

namespace {

class ScriptedStoreTest : public ScriptedHostTest {};

}  // namespace

TEST_F(ScriptedStoreTest, SavesAreRecordedWithTheirOwner) {
    account.Set(7);

    EXPECT_TRUE(AppCfgSaveString("a", "1"));
    EXPECT_TRUE(UserCfgSaveString("b", "2"));
    EXPECT_TRUE(AppCfgSaveInt64("c", -3));

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "a", "1"}, StoreSave{7, "b", "2"},
                                           StoreSave{std::nullopt, "c", "-3"}));
    EXPECT_EQ(store.AppString("a"), "1");
    EXPECT_EQ(store.UserString(7, "b"), "2");
    EXPECT_EQ(store.Int64("c"), -3);
}

TEST_F(ScriptedStoreTest, AbsentValuesAndThoseOfTheOtherTypeAreEmpty) {
    store.SetInt64("number", 1);

    EXPECT_EQ(store.AppString("number"), std::nullopt);
    EXPECT_EQ(store.AppString("absent"), std::nullopt);
    EXPECT_EQ(store.UserString(0, "number"), std::nullopt);
}

TEST_F(ScriptedStoreTest, TheNthSaveIsRefusedOnceAndLeavesTheOldValue) {
    store.SetAppString("key", "old");
    store.RefuseSaves(Failing::Nth(2));

    EXPECT_TRUE(AppCfgSaveString("other", "1"));
    EXPECT_FALSE(AppCfgSaveString("key", "new"));
    EXPECT_EQ(store.AppString("key"), "old");
    EXPECT_TRUE(AppCfgSaveString("key", "newer"));

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "other", "1"}, StoreSave{std::nullopt, "key", "new"},
                                           StoreSave{std::nullopt, "key", "newer"}));
}

TEST_F(ScriptedStoreTest, FromTheNthSaveOnAllAreRefused) {
    store.RefuseSaves(Failing::From(2));

    EXPECT_TRUE(AppCfgSaveString("key", "1"));
    EXPECT_FALSE(AppCfgSaveString("key", "2"));
    EXPECT_FALSE(AppCfgSaveInt64("key", 3));

    EXPECT_EQ(store.AppString("key"), "1");
}

TEST_F(ScriptedStoreTest, ARefusedReadGivesFalseAndLeavesTheValueAlone) {
    store.SetAppString("key", "stored");
    store.RefuseReads(Failing::Always());
    std::string value = "before";

    EXPECT_FALSE(AppCfgReadString("key", value));
    EXPECT_EQ(value, "before");

    store.RefuseReads(Failing::Never());
    EXPECT_TRUE(AppCfgReadString("key", value));
    EXPECT_EQ(value, "stored");
}
