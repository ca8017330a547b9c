#include <gmock/gmock.h>
#include <google/protobuf/message.h>

#include "WireBytes.h"
#include "modules/ZRGrowthTypes.h"
#include "vip_base_service.pb.h"

using namespace ::testing;
using namespace vip_base_service;

namespace {

TEST(VipMessagesTest, TheRequestHasNoBytes) {
    EXPECT_EQ(GetAppEntryMessageReq().SerializeAsString(), "");
}

TEST(VipMessagesTest, AnAnswerIsWrittenInTheOrderOfTheFieldNumbers) {
    GetAppEntryMessageRsp answer;
    AppEntryMessageData* data = answer.mutable_data();
    data->set_app_entry_field_5(true);
    data->set_app_entry_field_4(-1);
    data->set_has_vip_qualification(true);
    AppEntryMessage* entry = data->mutable_app_entry_message();
    entry->set_entry_field_3("x");
    entry->mutable_entry_btn_title();
    entry->mutable_entry_main_title();
    data->mutable_vip_basic_data();
    answer.set_message("m");
    answer.set_code(26);

    EXPECT_EQ(answer.SerializeAsString(),
              Bytes({0x08, 0x1A,                                                        // code
                     0x12, 0x01, 'm',                                                   // message
                     0x1A, 0x1A,                                                        // data
                     0x0A, 0x00,                                                        // vip_basic_data
                     0x12, 0x07, 0x0A, 0x00, 0x12, 0x00, 0x1A, 0x01, 'x',               // app_entry_message
                     0x18, 0x01,                                                        // has_vip_qualification
                     0x20, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01,  // app_entry_field_4
                     0x28, 0x01}));                                                     // app_entry_field_5
}

TEST(VipMessagesTest, TheBasicDataAreFifteenVarints) {
    VipBasicData basic;
    basic.set_vip_basic_field_1(1);
    basic.set_vip_state(2);
    basic.set_vip_level(3);
    basic.set_vip_basic_field_4(4);
    basic.set_vip_basic_field_5(5);
    basic.set_vip_basic_field_6(6);
    basic.set_vip_basic_field_7(7);
    basic.set_vip_basic_field_8(8);
    basic.set_vip_basic_field_9(9);
    basic.set_vip_basic_field_10(10);
    basic.set_vip_version(11);
    basic.set_new_vip_state(12);
    basic.set_new_vip_sub_state(13);
    basic.set_vip_basic_field_14(14);
    basic.set_auto_renewal(15);

    EXPECT_EQ(basic.SerializeAsString(),
              Bytes({0x08, 1,    0x10, 2,    0x18, 3,    0x20, 4,    0x28, 5,    0x30, 6,    0x38, 7,    0x40,
                     8,    0x48, 9,    0x50, 10,   0x58, 11,   0x60, 12,   0x68, 13,   0x70, 14,   0x78, 15}));
}

TEST(VipMessagesTest, ANegativeStateTakesTenBytesAndALevelNeverDoes) {
    VipBasicData basic;
    basic.set_vip_state(-1);
    EXPECT_EQ(basic.SerializeAsString(), Bytes({0x10, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));

    basic.Clear();
    basic.set_vip_level(0xFFFFFFFF);
    EXPECT_EQ(basic.SerializeAsString(), Bytes({0x18, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F}));
}

/// Written and read again, each field at the end of its range.
void ExpectReadBack(const VipBasicData& basic, const std::string& bytes) {
    EXPECT_EQ(basic.SerializeAsString(), bytes);
    VipBasicData read;
    ASSERT_TRUE(read.ParseFromString(bytes));
    EXPECT_EQ(read.SerializeAsString(), bytes);
}

TEST(VipMessagesTest, SignedFieldsTakeTenBytesBelowZero) {
    const std::string minusOne = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01});
    VipBasicData basic;
    basic.set_auto_renewal(-1);
    ExpectReadBack(basic, Bytes({0x78}) + minusOne);

    GetAppEntryMessageRsp answer;
    answer.set_code(-1);
    EXPECT_EQ(answer.SerializeAsString(), Bytes({0x08}) + minusOne);
}

TEST(VipMessagesTest, TheTwoLongFieldsHave64Bits) {
    const std::string most = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01});
    VipBasicData basic;
    basic.set_vip_basic_field_1(~0ull);
    basic.set_vip_basic_field_14(~0ull);

    ExpectReadBack(basic, Bytes({0x08}) + most + Bytes({0x70}) + most);
}

TEST(VipMessagesTest, UnsignedFieldsTakeFiveBytesAtMost) {
    const std::string most = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0x0F});
    for (const int number : {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) {
        const std::string bytes = Bytes({number * 8}) + most;
        VipBasicData basic;
        ASSERT_TRUE(basic.ParseFromString(bytes)) << number;
        EXPECT_EQ(basic.SerializeAsString(), bytes) << number;
    }
    UserVipStateChangePush push;
    push.set_refresh_window_seconds(~0u);
    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08}) + most);
}

TEST(VipMessagesTest, ALocaleStringHasATextPerLanguage) {
    ZRStringDefine::LocaleString text;
    text.set_simplified_chinese("a");
    text.set_traditional_chinese("b");
    text.set_english("c");
    text.set_japanese("d");
    text.set_french("e");

    EXPECT_EQ(text.SerializeAsString(), Bytes({0x0A, 1, 'a', 0x12, 1, 'b', 0x1A, 1, 'c', 0x22, 1, 'd', 0x2A, 1, 'e'}));
}

TEST(VipMessagesTest, ThePushHoldsItsWindow) {
    UserVipStateChangePush push;
    push.set_refresh_window_seconds(30);

    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08, 0x1E}));
}

TEST(VipMessagesTest, NoBytesAreAnAnswerWithoutData) {
    GetAppEntryMessageRsp answer;

    ASSERT_TRUE(answer.ParseFromString(""));

    EXPECT_FALSE(answer.has_code());
    EXPECT_FALSE(answer.has_data());
    EXPECT_FALSE(answer.data().has_vip_basic_data());
    EXPECT_FALSE(answer.data().has_app_entry_message());
    EXPECT_FALSE(answer.data().has_has_vip_qualification());
    EXPECT_FALSE(answer.data().has_app_entry_field_4());
    EXPECT_FALSE(answer.data().has_app_entry_field_5());
}

TEST(VipMessagesTest, NumbersThatNoNameStandsForAreRead) {
    VipBasicData basic;

    ASSERT_TRUE(basic.ParseFromString(Bytes({0x18, 9, 0x68, 50})));

    EXPECT_EQ(basic.vip_level(), 9u);
    EXPECT_EQ(basic.new_vip_sub_state(), 50u);
    EXPECT_FALSE(basic.has_vip_state());
}

TEST(VipMessagesTest, TextsAreNotCheckedForUtf8) {
    GetAppEntryMessageRsp answer;

    ASSERT_TRUE(answer.ParseFromString(Bytes({0x12, 0x02, 0xFF, 0xFE})));

    EXPECT_EQ(answer.message(), Bytes({0xFF, 0xFE}));
}

TEST(VipMessagesTest, TheTextsOfTheEntryAreParsedPast) {
    ZRStringDefine::LocaleString text;
    text.set_english("Join");
    text.set_simplified_chinese("x");
    AppEntryMessage entry;
    *entry.mutable_entry_main_title() = text;

    AppEntryMessage read;
    ASSERT_TRUE(read.ParseFromString(entry.SerializeAsString()));

    EXPECT_EQ(read.entry_main_title().english(), "Join");
    EXPECT_EQ(read.entry_main_title().simplified_chinese(), "x");
}

template <class Message>
void ExpectUnknownFieldsAreKept(const std::string& known) {
    const std::string unknown = Bytes({0xF8, 0x01, 0x2A});
    Message message;

    ASSERT_TRUE(message.ParseFromString(unknown + known));

    EXPECT_EQ(message.SerializeAsString(), known + unknown) << message.GetTypeName();
}

TEST(VipMessagesTest, UnknownFieldsAreWrittenBackBehindTheKnown) {
    ExpectUnknownFieldsAreKept<GetAppEntryMessageReq>("");
    ExpectUnknownFieldsAreKept<GetAppEntryMessageRsp>(Bytes({0x08, 0x01}));
    ExpectUnknownFieldsAreKept<AppEntryMessageData>(Bytes({0x18, 0x01}));
    ExpectUnknownFieldsAreKept<AppEntryMessage>(Bytes({0x1A, 0x01, 'x'}));
    ExpectUnknownFieldsAreKept<VipBasicData>(Bytes({0x10, 0x01}));
    ExpectUnknownFieldsAreKept<UserVipStateChangePush>(Bytes({0x08, 0x01}));
}

TEST(VipMessagesTest, AKnownNumberOfAnotherKindStaysAbsentAndIsKept) {
    const std::string bytes = Bytes({0x0A, 0x01, 'x'});
    UserVipStateChangePush push;

    ASSERT_TRUE(push.ParseFromString(bytes));

    EXPECT_FALSE(push.has_refresh_window_seconds());
    EXPECT_EQ(push.SerializeAsString(), bytes);
}

TEST(VipMessagesTest, TheMessagesAreOfTheLiteRuntimeAndCarryTheirFullNames) {
    EXPECT_TRUE((std::is_base_of<google::protobuf::MessageLite, GetAppEntryMessageRsp>::value));
    EXPECT_FALSE((std::is_base_of<google::protobuf::Message, GetAppEntryMessageRsp>::value));
    EXPECT_FALSE((std::is_base_of<google::protobuf::Message, ZRStringDefine::LocaleString>::value));
    EXPECT_EQ(GetAppEntryMessageReq().GetTypeName(), "vip_base_service.GetAppEntryMessageReq");
    EXPECT_EQ(GetAppEntryMessageRsp().GetTypeName(), "vip_base_service.GetAppEntryMessageRsp");
    EXPECT_EQ(AppEntryMessageData().GetTypeName(), "vip_base_service.AppEntryMessageData");
    EXPECT_EQ(AppEntryMessage().GetTypeName(), "vip_base_service.AppEntryMessage");
    EXPECT_EQ(VipBasicData().GetTypeName(), "vip_base_service.VipBasicData");
    EXPECT_EQ(UserVipStateChangePush().GetTypeName(), "vip_base_service.UserVipStateChangePush");
}

TEST(VipMessagesTest, TheEnumerationsHaveTheNumbersOfTheService) {
    EXPECT_THAT((std::vector<int>{SUCCESS, PARAM_ERR, VIP_USER_FOUND_ERR, MARKET_REQ_ERR, USER_ATTRIBUTE_REQ_ERR,
                                  BALANCE_NOT_ENOUGH}),
                ElementsAre(0, 1, 2, 3, 4, 26));
    EXPECT_THAT((std::vector<int>{VIP_LEVEL_Unknown, VIP_LEVEL_1, VIP_LEVEL_2, VIP_LEVEL_3, VIP_LEVEL_4}),
                ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT((std::vector<int>{NON_VIP, VIP}), ElementsAre(0, 1));
    EXPECT_THAT((std::vector<int>{VIP_VERSION_LEGACY, VIP_VERSION_NEW}), ElementsAre(0, 1));
    EXPECT_THAT((std::vector<int>{NEW_VIP_STATE_NON_MEMBER, NEW_VIP_STATE_ACTIVE, NEW_VIP_STATE_EXPIRED}),
                ElementsAre(0, 1, 2));
    EXPECT_THAT((std::vector<int>{NEW_VIP_SUB_STATE_UNKNOWN, NEW_VIP_SUB_STATE_TRIAL, NEW_VIP_SUB_STATE_GIFT,
                                  NEW_VIP_SUB_STATE_MONTHLY, NEW_VIP_SUB_STATE_ANNUAL,
                                  NEW_VIP_SUB_STATE_ASSET_QUALIFIED, NEW_VIP_SUB_STATE_ASSET_PROTECTION}),
                ElementsAre(0, 101, 102, 103, 104, 105, 106));
}

TEST(VipMessagesTest, TheClientsEnumerationsHaveTheNumbersOfTheServiceInterface) {
    EXPECT_THAT((std::vector<int>{ZRVipUIDataMain, ZRVipUIDataDetail, ZRVipUIDataDetailSub}), ElementsAre(1, 2, 3));
    EXPECT_THAT((std::vector<int>{ZRVipMaskLocked, ZRVipMaskLockedCompact, ZRVipMaskExclusive}), ElementsAre(0, 1, 2));
    EXPECT_THAT((std::vector<int>{ZRVipTagGrade, ZRVipTagName}), ElementsAre(0, 1));
    EXPECT_THAT((std::vector<int>{ZRVipGradeNone, ZRVipGrade1, ZRVipGrade2, ZRVipGrade3}), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT((std::vector<int>{kVipEngineUndetermined, kVipEngineTrial, kVipEngineMember, kVipEngineAssetProtection,
                                  kVipEngineExpired, kVipEngineNonMember, kVipEngineRenewalOff}),
                ElementsAre(-1, 0, 1, 2, 3, 4, 5));
    EXPECT_TRUE((std::is_same<std::underlying_type<ZRVipUIDataType>::type, int>::value));
    EXPECT_TRUE((std::is_same<std::underlying_type<ZRVipMaskType>::type, int>::value));
    EXPECT_TRUE((std::is_same<std::underlying_type<ZRVipTagType>::type, int>::value));
    EXPECT_TRUE((std::is_same<std::underlying_type<ZRVipGrade>::type, int>::value));
    EXPECT_TRUE((std::is_same<std::underlying_type<ZRAIChatEntryScene>::type, int>::value));
}

}  // namespace
