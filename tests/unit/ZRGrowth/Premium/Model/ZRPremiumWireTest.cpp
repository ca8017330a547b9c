// One element of an answer becomes a record, and a record the saved form of itself.
#include "Premium/Model/ZRPremiumWire.h"

#include <functional>

#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;

namespace {

// No element

TEST(PremiumWireTest, AnElementThatDoesNotNameItsRightIsDroppedWhateverItsHalvesSay) {
    PremiumElement element;
    EXPECT_FALSE(premium_wire::ReadRecord(element));

    for (const int right : {0, 13}) {
        Write(right, 1, element);
        element.clear_access();
        EXPECT_FALSE(premium_wire::ReadRecord(element)) << right;
    }
}

struct Mismatch {
    const char* name;
    std::function<void(PremiumElement&)> make;
};

class MismatchedPremiumElementTest : public TestWithParam<Mismatch> {};

TEST_P(MismatchedPremiumElementTest, IsDroppedWithItsGoodHalf) {
    PremiumElement element;
    Write(13, 1, element);
    ASSERT_TRUE(premium_wire::ReadRecord(element));

    GetParam().make(element);

    EXPECT_FALSE(premium_wire::ReadRecord(element));
}

INSTANTIATE_TEST_SUITE_P(
    Halves, MismatchedPremiumElementTest,
    Values(Mismatch{"DisplayOfAnotherRight", [](auto& element) { element.mutable_ui_data()->set_access(14); }},
           Mismatch{"DisplayOfNoRight", [](auto& element) { element.mutable_ui_data()->clear_access(); }},
           Mismatch{"DisplayOfRightZero", [](auto& element) { element.mutable_ui_data()->set_access(0); }},
           Mismatch{"StateOfAnotherRight", [](auto& element) { element.mutable_access_data()->set_access(-13); }},
           Mismatch{"StateOfNoRight", [](auto& element) { element.mutable_access_data()->clear_access(); }},
           Mismatch{"StateOfRightZero", [](auto& element) { element.mutable_access_data()->set_access(0); }},
           Mismatch{"OuterOfAnotherRight", [](auto& element) { element.set_access(14); }},
           Mismatch{"OnlyAStateOfAnotherRight",
                    [](auto& element) {
                        element.clear_ui_data();
                        element.mutable_access_data()->set_access(14);
                    }},
           Mismatch{"OnlyADisplayOfNoRight",
                    [](auto& element) {
                        element.clear_access_data();
                        element.mutable_ui_data()->clear_access();
                    }}),
    [](const auto& row) { return row.param.name; });

TEST(PremiumWireTest, AHalfOfNoRightDoesNotMatchTheRightZero) {
    PremiumElement element;
    element.set_access(0);
    element.mutable_access_data()->set_days_left(3);

    EXPECT_FALSE(premium_wire::ReadRecord(element));
}

// From the wire

TEST(PremiumWireTest, EveryFieldGoesToItsOwn) {
    PremiumElement element;
    Write(1000, 7, element);

    EXPECT_EQ(premium_wire::ReadRecord(element), Record(1000, 7));
}

TEST(PremiumWireTest, AnElementWithNeitherHalfIsABlankRecord) {
    PremiumElement element;
    element.set_access(13);

    EXPECT_EQ(premium_wire::ReadRecord(element), CPremiumUIAccessData());
}

TEST(PremiumWireTest, ADefaultRecordIsAllZeroFalseAndEmpty) {
    const CPremiumUIAccessData record;

    EXPECT_EQ(record.enUIAccess, 0);
    EXPECT_EQ(record.enAccess, 0);
    EXPECT_FALSE(record.bHasPermission);
    for (const int number : {record.nMainBtnUrlID, record.nDetailBtnUrlID, record.nDetailSubBtnUrlID, record.nDaysLeft,
                             record.nActivationType, record.nActivationSource}) {
        EXPECT_EQ(number, 0);
    }
    for (const QString& text :
         {record.strUIType, record.strOtherInfo, record.strMainTitle, record.strMainBtn, record.strDetailTitle,
          record.strDetailBtn, record.strDetailSubBtn, record.strDetailSubTitle}) {
        EXPECT_TRUE(text.isEmpty());
    }
}

TEST(PremiumWireTest, TheDisplayHalfAloneLeavesTheStateBlank) {
    PremiumElement element;
    Write(13, 1, element);
    element.clear_access_data();

    const auto record = premium_wire::ReadRecord(element);

    ASSERT_TRUE(record);
    EXPECT_EQ(CPremiumUIData(*record), CPremiumUIData(Record(13, 1)));
    EXPECT_EQ(CPremiumAccessData(*record), CPremiumAccessData());
}

TEST(PremiumWireTest, TheStateAloneLeavesTheDisplayBlank) {
    PremiumElement element;
    Write(13, 1, element);
    element.clear_ui_data();

    const auto record = premium_wire::ReadRecord(element);

    ASSERT_TRUE(record);
    EXPECT_EQ(CPremiumUIData(*record), CPremiumUIData());
    EXPECT_EQ(CPremiumAccessData(*record), CPremiumAccessData(Record(13, 1)));
}

TEST(PremiumWireTest, ARightZeroIsAcceptedWhereItsHalvesSayZeroToo) {
    PremiumElement element;
    Write(0, 1, element);

    EXPECT_EQ(premium_wire::ReadRecord(element), Record(0, 1));
}

TEST(PremiumWireTest, RightsThatNoNameStandsForAreAccepted) {
    for (const int right : {-2147483647 - 1, -1, 9, 5000, 2147483647}) {
        PremiumElement element;
        Write(right, 1, element);

        EXPECT_EQ(premium_wire::ReadRecord(element), Record(right, 1)) << right;
    }
}

TEST(PremiumWireTest, NumbersOutsideOfTheirEnumerationsAreTakenAsTheyAre) {
    PremiumElement element;
    Write(13, 1, element);
    element.mutable_access_data()->set_activation_type(-1);
    element.mutable_access_data()->set_activation_source(2147483647);
    element.mutable_access_data()->set_days_left(-2147483647 - 1);
    element.mutable_ui_data()->mutable_jump_url_msg()->set_main_btn_url(-5);

    const auto record = premium_wire::ReadRecord(element);

    ASSERT_TRUE(record);
    EXPECT_EQ(record->nActivationType, -1);
    EXPECT_EQ(record->nActivationSource, 2147483647);
    EXPECT_EQ(record->nDaysLeft, -2147483647 - 1);
    EXPECT_EQ(record->nMainBtnUrlID, -5);
}

// Takes one field away from a full element and from the record that is expected of it.
struct FieldOfAnElement {
    const char* name;
    std::function<void(PremiumElement&)> clear;
    std::function<void(CPremiumUIAccessData&)> blank;
};

class AbsentPremiumFieldTest : public TestWithParam<FieldOfAnElement> {};

TEST_P(AbsentPremiumFieldTest, KeepsItsDefaultAndItAlone) {
    PremiumElement element;
    Write(13, 1, element);
    GetParam().clear(element);
    CPremiumUIAccessData expected = Record(13, 1);
    GetParam().blank(expected);

    EXPECT_EQ(premium_wire::ReadRecord(element), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, AbsentPremiumFieldTest,
    Values(FieldOfAnElement{"HasPermission", [](auto& it) { it.mutable_access_data()->clear_has_permission(); },
                            [](auto& it) { it.bHasPermission = false; }},
           FieldOfAnElement{"DaysLeft", [](auto& it) { it.mutable_access_data()->clear_days_left(); },
                            [](auto& it) { it.nDaysLeft = 0; }},
           FieldOfAnElement{"ActivationType", [](auto& it) { it.mutable_access_data()->clear_activation_type(); },
                            [](auto& it) { it.nActivationType = 0; }},
           FieldOfAnElement{"ActivationSource", [](auto& it) { it.mutable_access_data()->clear_activation_source(); },
                            [](auto& it) { it.nActivationSource = 0; }},
           FieldOfAnElement{"UIType", [](auto& it) { it.mutable_ui_data()->clear_ui_type(); },
                            [](auto& it) { it.strUIType.clear(); }},
           FieldOfAnElement{"OtherInfo", [](auto& it) { it.mutable_ui_data()->clear_other_info(); },
                            [](auto& it) { it.strOtherInfo.clear(); }},
           FieldOfAnElement{"MainTitle", [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_main_title(); },
                            [](auto& it) { it.strMainTitle.clear(); }},
           FieldOfAnElement{"MainBtn", [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_main_btn(); },
                            [](auto& it) { it.strMainBtn.clear(); }},
           FieldOfAnElement{"DetailTitle",
                            [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_detail_title(); },
                            [](auto& it) { it.strDetailTitle.clear(); }},
           FieldOfAnElement{"DetailSubTitle",
                            [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_detail_sub_title(); },
                            [](auto& it) { it.strDetailSubTitle.clear(); }},
           FieldOfAnElement{"DetailBtn", [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_detail_btn(); },
                            [](auto& it) { it.strDetailBtn.clear(); }},
           FieldOfAnElement{"DetailSubBtn",
                            [](auto& it) { it.mutable_ui_data()->mutable_ui_text()->clear_detail_sub_btn(); },
                            [](auto& it) { it.strDetailSubBtn.clear(); }},
           FieldOfAnElement{"AllTexts", [](auto& it) { it.mutable_ui_data()->clear_ui_text(); },
                            [](auto& it) {
                                for (QString* text : {&it.strMainTitle, &it.strMainBtn, &it.strDetailTitle,
                                                      &it.strDetailBtn, &it.strDetailSubBtn, &it.strDetailSubTitle}) {
                                    text->clear();
                                }
                            }},
           FieldOfAnElement{"MainBtnUrl",
                            [](auto& it) { it.mutable_ui_data()->mutable_jump_url_msg()->clear_main_btn_url(); },
                            [](auto& it) { it.nMainBtnUrlID = 0; }},
           FieldOfAnElement{"DetailBtnUrl",
                            [](auto& it) { it.mutable_ui_data()->mutable_jump_url_msg()->clear_detail_btn_url(); },
                            [](auto& it) { it.nDetailBtnUrlID = 0; }},
           FieldOfAnElement{"DetailSubBtnUrl",
                            [](auto& it) { it.mutable_ui_data()->mutable_jump_url_msg()->clear_detail_sub_btn_url(); },
                            [](auto& it) { it.nDetailSubBtnUrlID = 0; }},
           FieldOfAnElement{"AllLinks", [](auto& it) { it.mutable_ui_data()->clear_jump_url_msg(); },
                            [](auto& it) { it.nMainBtnUrlID = it.nDetailBtnUrlID = it.nDetailSubBtnUrlID = 0; }}),
    [](const auto& row) { return row.param.name; });

TEST(PremiumWireTest, TextsAreReadAsUtf8WithTheirZeroBytes) {
    PremiumElement element;
    Write(13, 1, element);
    element.mutable_ui_data()->set_other_info(std::string("\xE6\x9D\x83\0\xF0\x9F\x91\x91", 8));

    const auto record = premium_wire::ReadRecord(element);

    ASSERT_TRUE(record);
    EXPECT_EQ(record->strOtherInfo, QString::fromUtf16(u"\u6743\0\U0001F451", 4));
}

TEST(PremiumWireTest, BytesThatAreNoUtf8BecomeReplacementCharacters) {
    PremiumElement element;
    Write(13, 1, element);
    element.mutable_ui_data()->mutable_ui_text()->set_main_title("a\xFF\x80z");

    const auto record = premium_wire::ReadRecord(element);

    ASSERT_TRUE(record);
    EXPECT_EQ(record->strMainTitle, QString::fromUtf16(u"a\uFFFD\uFFFDz"));
    EXPECT_EQ(record->strMainBtn, Record(13, 1).strMainBtn);
}

// To the saved form

std::string Saved(int right, const CPremiumUIAccessData& record) {
    PremiumElement element;
    premium_wire::WriteRecord(Right(right), record, element);
    return element.SerializeAsString();
}

TEST(PremiumWireTest, ABlankRecordIsSavedAsItsRightAlone) {
    EXPECT_EQ(Saved(13, CPremiumUIAccessData()), Bytes({0x08, 0x0D}));
}

TEST(PremiumWireTest, ASavedDisplayHasAllItsFieldsAlsoTheEmptyOnes) {
    CPremiumUIAccessData record;
    record.enUIAccess = Right(13);

    EXPECT_EQ(Saved(13, record),
              Bytes({0x08, 0x0D,                                                        // access
                     0x12, 0x1C,                                                        // ui_data
                     0x08, 0x0D,                                                        // access
                     0x12, 0x00,                                                        // ui_type
                     0x1A, 0x0C,                                                        // ui_text
                     0x0A, 0,    0x12, 0,    0x1A, 0,    0x22, 0,    0x2A, 0, 0x32, 0,  // six of them
                     0x22, 0x06, 0x08, 0x00, 0x10, 0x00, 0x18, 0x00,                    // jump_url_msg
                     0x2A, 0x00}));                                                     // other_info
}

TEST(PremiumWireTest, ASavedDisplayHasEachTextAndLinkInItsPlace) {
    CPremiumUIAccessData record;
    record.enUIAccess = Right(13);
    record.strUIType = QStringLiteral("t");
    record.strOtherInfo = QStringLiteral("o");
    record.strMainTitle = QStringLiteral("a");
    record.strMainBtn = QStringLiteral("b");
    record.strDetailTitle = QStringLiteral("c");
    record.strDetailSubTitle = QStringLiteral("d");
    record.strDetailBtn = QStringLiteral("e");
    record.strDetailSubBtn = QString::fromUtf16(u"\u6743");
    record.nMainBtnUrlID = 1;
    record.nDetailBtnUrlID = 2;
    record.nDetailSubBtnUrlID = 3;

    EXPECT_EQ(Saved(13, record),
              Bytes({0x08, 0x0D, 0x12, 0x26, 0x08, 0x0D, 0x12, 1,    't',  0x1A, 0x14, 0x0A, 1,    'a',
                     0x12, 1,    'b',  0x1A, 1,    'c',  0x22, 1,    'd',  0x2A, 1,    'e',  0x32, 3,
                     0xE6, 0x9D, 0x83, 0x22, 0x06, 0x08, 0x01, 0x10, 0x02, 0x18, 0x03, 0x2A, 1,    'o'}));
}

TEST(PremiumWireTest, ASavedStateHasAllItsFieldsButTheSource) {
    CPremiumUIAccessData record;
    record.enAccess = Right(13);
    record.nActivationSource = 2;
    EXPECT_EQ(Saved(13, record), Bytes({0x08, 0x0D, 0x1A, 0x08, 0x08, 0x0D, 0x10, 0x00, 0x18, 0x00, 0x20, 0x00}));

    record.bHasPermission = true;
    record.nActivationType = 3;
    record.nDaysLeft = 30;
    EXPECT_EQ(Saved(13, record), Bytes({0x08, 0x0D, 0x1A, 0x08, 0x08, 0x0D, 0x10, 0x01, 0x18, 0x03, 0x20, 0x1E}));
}

TEST(PremiumWireTest, AHalfWithoutARightIsNotSavedWhateverElseItHolds) {
    CPremiumUIAccessData record = Record(13, 1);
    record.enUIAccess = Right(0);
    record.enAccess = Right(0);

    EXPECT_EQ(Saved(13, record), Bytes({0x08, 0x0D}));
}

TEST(PremiumWireTest, TheElementHasTheRightItIsFiledUnderAndEachHalfItsOwn) {
    CPremiumUIAccessData record;
    record.enUIAccess = Right(14);
    record.enAccess = Right(-1);
    PremiumElement element;

    premium_wire::WriteRecord(Right(13), record, element);

    EXPECT_EQ(element.access(), 13);
    EXPECT_EQ(element.ui_data().access(), 14);
    EXPECT_EQ(element.access_data().access(), -1);
    EXPECT_FALSE(premium_wire::ReadRecord(element));
}

TEST(PremiumWireTest, AFullRecordComesBackButForItsSource) {
    PremiumElement element;
    premium_wire::WriteRecord(Right(13), Record(13, 9), element);
    CPremiumUIAccessData expected = Record(13, 9);
    expected.nActivationSource = 0;

    EXPECT_EQ(premium_wire::ReadRecord(element), expected);
}

}  // namespace
