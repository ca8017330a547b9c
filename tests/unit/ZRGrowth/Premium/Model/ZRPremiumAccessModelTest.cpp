#include "Premium/Model/ZRPremiumAccessModel.h"

#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;

namespace {

class PremiumAccessModelTest : public ScriptedHostTest {
protected:
    PremiumAccessModelTest() { account.Set(kUser); }

    void Set(int right, int version = 1) { model.SetUIAccessData(Right(right), Record(right, version)); }

    void StoreHolds(const std::string& bytes) { store.SetUserString(kUser, kSavedKey, bytes); }

    CZRPremiumAccessModel model;
};

// Reading

TEST_F(PremiumAccessModelTest, TheTableIsEmptyAtFirstAndHoldsNoRight) {
    EXPECT_TRUE(model.GetUIAccessData().isEmpty());
    EXPECT_EQ(model.GetUIData(Right(13)), CPremiumUIData());
    EXPECT_EQ(model.GetAccessData(Right(13)), CPremiumAccessData());
    EXPECT_EQ(model.GetUIAccessData(Right(13)), CPremiumUIAccessData());
}

TEST_F(PremiumAccessModelTest, AskingForARightDoesNotPutItIntoTheTable) {
    model.GetUIData(Right(13));
    model.GetAccessData(Right(13));
    model.GetUIAccessData(Right(13));

    EXPECT_TRUE(model.GetUIAccessData().isEmpty());
}

TEST_F(PremiumAccessModelTest, TheHalvesAreThoseOfTheRecord) {
    Set(13);
    Set(14, 2);

    EXPECT_EQ(model.GetUIAccessData(Right(14)), Record(14, 2));
    EXPECT_EQ(model.GetUIData(Right(14)), CPremiumUIData(Record(14, 2)));
    EXPECT_EQ(model.GetAccessData(Right(14)), CPremiumAccessData(Record(14, 2)));
    EXPECT_EQ(model.GetUIAccessData(Right(15)), CPremiumUIAccessData());
}

TEST_F(PremiumAccessModelTest, TheTableIsInAscendingOrderOfTheRightsWhateverOrderTheyCameIn) {
    for (const int right : {1000, 13, -1, 0, 1, 2147483647, 99}) {
        Set(right);
    }

    EXPECT_THAT(Rights(model.GetUIAccessData()), ElementsAre(-1, 0, 1, 13, 99, 1000, 2147483647));
}

TEST_F(PremiumAccessModelTest, CopiesShareTheTableUntilItChanges) {
    Set(13);
    const PremiumTable first = model.GetUIAccessData();
    EXPECT_TRUE(first.isSharedWith(model.GetUIAccessData()));

    Set(13, 2);

    EXPECT_EQ(first, Table({13}));
    EXPECT_EQ(model.GetUIAccessData(), Table({13}, 2));
}

// Writing

TEST_F(PremiumAccessModelTest, SettingReplacesTheWholeRecord) {
    Set(13);

    CPremiumUIAccessData stateOnly;
    stateOnly.enAccess = Right(13);
    model.SetUIAccessData(Right(13), stateOnly);

    EXPECT_EQ(model.GetUIAccessData(Right(13)), stateOnly);
    EXPECT_EQ(model.GetUIData(Right(13)), CPremiumUIData());
}

TEST_F(PremiumAccessModelTest, ARecordIsFiledUnderTheGivenRightAndKeepsItsOwnNumbers) {
    model.SetUIAccessData(Right(14), Record(13, 1));

    EXPECT_EQ(model.GetUIAccessData(Right(14)), Record(13, 1));
    EXPECT_EQ(model.GetUIAccessData(Right(13)), CPremiumUIAccessData());
}

TEST_F(PremiumAccessModelTest, SettingAndClearingSaveSendAndLogNothing) {
    Set(13);
    model.ClearPremiumData();

    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(PremiumAccessModelTest, ClearingEmptiesTheTableAndLeavesCopiesAndTheStoredEntry) {
    Set(1000);
    model.SavePremiumData();
    const PremiumTable copy = model.GetUIAccessData();
    const std::string saved = SavedBytes(copy);

    model.ClearPremiumData();

    EXPECT_TRUE(model.GetUIAccessData().isEmpty());
    EXPECT_EQ(model.GetUIAccessData(Right(1000)), CPremiumUIAccessData());
    EXPECT_EQ(copy, Table({1000}));
    EXPECT_EQ(store.UserString(kUser, kSavedKey), saved);
}

TEST_F(PremiumAccessModelTest, ClearingAnEmptyTableDoesNothing) {
    model.ClearPremiumData();

    EXPECT_TRUE(model.GetUIAccessData().isEmpty());
    EXPECT_EQ(model.GetUIAccessData(Right(1000)), CPremiumUIAccessData());
}

// Saving

TEST_F(PremiumAccessModelTest, AnEmptyTableIsSavedAsNoBytes) {
    model.SavePremiumData();

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, ""}));
}

TEST_F(PremiumAccessModelTest, TheTableIsSavedInOneEntryOfTheUser) {
    Set(13);

    model.SavePremiumData();

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13}))}));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(PremiumAccessModelTest, RightsAreSavedInAscendingOrderWhateverOrderTheyCameIn) {
    for (const int right : {1000, 13, 300, -1}) {
        model.SetUIAccessData(Right(right), CPremiumUIAccessData());
    }

    model.SavePremiumData();

    EXPECT_EQ(store.UserString(kUser, kSavedKey),
              Bytes({0x0A, 0x0B, 0x08, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01,  // -1
                     0x0A, 0x02, 0x08, 0x0D,                                                        // 13
                     0x0A, 0x03, 0x08, 0xAC, 0x02,                                                  // 300
                     0x0A, 0x03, 0x08, 0xE8, 0x07}));                                               // 1000
}

TEST_F(PremiumAccessModelTest, TheEntryBelongsToTheUserOfTheMoment) {
    Set(13);
    account.Set(777);
    model.SavePremiumData();
    account.Set(0);
    model.SavePremiumData();

    const std::string bytes = SavedBytes(Table({13}));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{777u, kSavedKey, bytes}, StoreSave{0u, kSavedKey, bytes}));
}

TEST_F(PremiumAccessModelTest, ARefusedSaveIsLoggedAsAnErrorAndChangesNothingInMemory) {
    Set(13);
    store.RefuseSaves(Failing::Always());

    model.SavePremiumData();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Premium] Latest News Filter Save Failed.")));
    EXPECT_EQ(model.GetUIAccessData(), Table({13}));
    EXPECT_THAT(store.Saves(), SizeIs(1));
    EXPECT_FALSE(store.UserString(kUser, kSavedKey));
}

TEST_F(PremiumAccessModelTest, TheLineOfARefusedSaveNamesItsPlace) {
    store.RefuseSaves(Failing::Always());

    model.SavePremiumData();
    store.Forget();

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].module, "ZRGrowth");
    EXPECT_EQ(log.Lines()[0].file, "ZRGrowth/Premium/Model/ZRPremiumAccessModel");
    EXPECT_EQ(log.Lines()[0].function, "SavePremiumData");
}

// A reader on another thread may hold the table's data: the save must not copy them away from under it.
TEST_F(PremiumAccessModelTest, SavingLeavesTheTableSharedWithItsCopies) {
    Set(13);
    Set(14);
    const PremiumTable copy = model.GetUIAccessData();

    model.SavePremiumData();
    store.Forget();

    EXPECT_TRUE(copy.isSharedWith(model.GetUIAccessData()));
}

// Restoring

TEST_F(PremiumAccessModelTest, ASavedTableComesBackButForTheSources) {
    Set(1000, 3);
    Set(13);
    model.SavePremiumData();
    store.Forget();
    CZRPremiumAccessModel another;

    another.InitPremiumData();

    PremiumTable expected = {{Right(1000), Record(1000, 3)}, {Right(13), Record(13, 1)}};
    for (CPremiumUIAccessData& record : expected) {
        record.nActivationSource = 0;
    }
    EXPECT_EQ(another.GetUIAccessData(), expected);
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(PremiumAccessModelTest, ARecordWhoseHalvesAreOfAnotherRightIsSavedAndDroppedOnReading) {
    model.SetUIAccessData(Right(14), Record(13, 1));
    Set(15);
    model.SavePremiumData();
    store.Forget();
    model.ClearPremiumData();

    model.InitPremiumData();

    EXPECT_THAT(Rights(model.GetUIAccessData()), ElementsAre(15));
}

TEST_F(PremiumAccessModelTest, ASourceThatAnEntryHoldsAllTheSameIsRead) {
    StoreHolds(Bytes({0x0A, 0x08, 0x08, 0x0D, 0x1A, 0x04, 0x08, 0x0D, 0x28, 0x02}));

    model.InitPremiumData();

    EXPECT_EQ(model.GetAccessData(Right(13)).nActivationSource, 2);
}

TEST_F(PremiumAccessModelTest, RestoringReplacesTheRightsOfTheEntryAndLeavesTheOthers) {
    Set(13, 2);
    Set(14, 2);
    StoreHolds(Bytes({0x0A, 0x02, 0x08, 0x0D}));

    model.InitPremiumData();

    EXPECT_EQ(model.GetUIAccessData(Right(13)), CPremiumUIAccessData());
    EXPECT_EQ(model.GetUIAccessData(Right(14)), Record(14, 2));
}

TEST_F(PremiumAccessModelTest, BadElementsOfAnEntryAreDroppedOneByOne) {
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    Write(13, 1, *saved.add_ui_data_and_access_data());
    saved.mutable_ui_data_and_access_data(0)->mutable_ui_data()->set_access(14);
    saved.add_ui_data_and_access_data()->mutable_access_data()->set_access(15);
    Write(16, 1, *saved.add_ui_data_and_access_data());
    StoreHolds(saved.SerializeAsString());

    model.InitPremiumData();

    EXPECT_EQ(model.GetUIAccessData(), Table({16}));
}

TEST_F(PremiumAccessModelTest, TheEntryIsReadOfTheUserOfTheMoment) {
    store.SetUserString(777, kSavedKey, Bytes({0x0A, 0x02, 0x08, 0x0E}));
    StoreHolds(Bytes({0x0A, 0x02, 0x08, 0x0D}));
    account.Set(777);

    model.InitPremiumData();

    EXPECT_THAT(Rights(model.GetUIAccessData()), ElementsAre(14));
}

struct Entry {
    const char* name;
    std::optional<std::string> bytes;
};

class UselessPremiumEntryTest : public PremiumAccessModelTest, public WithParamInterface<Entry> {};

TEST_P(UselessPremiumEntryTest, LeavesTheTableUntouchedWithoutAWord) {
    Set(13);
    if (GetParam().bytes) {
        StoreHolds(*GetParam().bytes);
    }

    model.InitPremiumData();

    EXPECT_EQ(model.GetUIAccessData(), Table({13}));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Entries, UselessPremiumEntryTest,
    Values(Entry{"Absent", std::nullopt}, Entry{"OfNoBytes", std::string()},
           Entry{"WithoutElements", Bytes({0x10, 0x07})}, Entry{"OfOneElementWithoutARight", Bytes({0x0A, 0x00})},
           Entry{"BrokenFromTheStart", Bytes({0xFF})},
           Entry{"BrokenBehindAGoodElement", Bytes({0x0A, 0x02, 0x08, 0x0D, 0x0A, 0x02, 0x08, 0x0E, 0x0A, 0x05})}),
    [](const auto& row) { return row.param.name; });

TEST_F(PremiumAccessModelTest, AnUnreadableStoreLeavesTheTableUntouched) {
    Set(13);
    StoreHolds(Bytes({0x0A, 0x02, 0x08, 0x0E}));
    store.RefuseReads(Failing::Always());

    model.InitPremiumData();

    EXPECT_EQ(model.GetUIAccessData(), Table({13}));
}

}  // namespace
