// The messages of the rights on the wire, byte by byte.
#include <gmock/gmock.h>
#include <google/protobuf/message_lite.h>

#include <limits>

#include "WireBytes.h"
#include "premium_svr.pb.h"

using namespace ::testing;
using namespace web_premium_access;

namespace {

TEST(PremiumMessagesTest, ARequestForAllRightsIsTwoBytes) {
    GetUiMsgAndPremiumAccessReq request;
    request.set_need_all_access(true);

    EXPECT_EQ(request.SerializeAsString(), Bytes({0x08, 0x01}));
}

TEST(PremiumMessagesTest, ARequestForOneRightSaysThatNotAllAreWanted) {
    GetUiMsgAndPremiumAccessReq request;
    request.set_need_all_access(false);
    request.add_access_list(13);

    EXPECT_EQ(request.SerializeAsString(), Bytes({0x08, 0x00, 0x10, 0x0D}));
}

TEST(PremiumMessagesTest, TheRightsOfARequestAreWrittenWithATagEachInTheirOrder) {
    GetUiMsgAndPremiumAccessReq request;
    for (const int right : {1000, 1, 1000, 0}) {
        request.add_access_list(right);
    }

    EXPECT_EQ(request.SerializeAsString(), Bytes({0x10, 0xE8, 0x07, 0x10, 0x01, 0x10, 0xE8, 0x07, 0x10, 0x00}));
}

TEST(PremiumMessagesTest, AnAnswerIsWrittenInTheOrderOfTheFieldNumbers) {
    GetUiMsgAndPremiumAccessRsp answer;
    GetUiMsgAndPremiumAccessData& data = *answer.mutable_data();
    data.set_unread_value(std::numeric_limits<uint64_t>::max());
    UiDataAndAccessData& element = *data.add_ui_data_and_access_data();
    element.mutable_access_data();
    element.mutable_ui_data();
    element.set_access(13);
    data.add_ui_data_and_access_data();
    answer.set_message("ok");
    answer.set_code(0);

    EXPECT_EQ(answer.SerializeAsString(),
              Bytes({0x08, 0x00,                                                           // code
                     0x12, 0x02, 'o',  'k',                                                // message
                     0x1A, 0x15,                                                           // data
                     0x0A, 0x06, 0x08, 0x0D, 0x12, 0x00, 0x1A, 0x00,                       // ui_data_and_access_data
                     0x0A, 0x00,                                                           // the second of them
                     0x10, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));  // unread_value
}

TEST(PremiumMessagesTest, DisplayDataAreWrittenWithTheOtherInfoLast) {
    UiData display;
    display.set_other_info("{}");
    display.mutable_jump_url_msg();
    display.mutable_ui_text();
    display.set_ui_type("A");
    display.set_access(300);

    EXPECT_EQ(display.SerializeAsString(),
              Bytes({0x08, 0xAC, 0x02, 0x12, 0x01, 'A', 0x1A, 0x00, 0x22, 0x00, 0x2A, 0x02, '{', '}'}));
}

TEST(PremiumMessagesTest, TheSixTextsAreFieldsOneToSix) {
    UiText texts;
    texts.set_main_title("a");
    texts.set_main_btn("b");
    texts.set_detail_title("c");
    texts.set_detail_sub_title("d");
    texts.set_detail_btn("e");
    texts.set_detail_sub_btn("f");

    EXPECT_EQ(texts.SerializeAsString(),
              Bytes({0x0A, 1, 'a', 0x12, 1, 'b', 0x1A, 1, 'c', 0x22, 1, 'd', 0x2A, 1, 'e', 0x32, 1, 'f'}));
}

TEST(PremiumMessagesTest, TheThreeLinksAreFieldsOneToThree) {
    JumpUrlID links;
    links.set_main_btn_url(1);
    links.set_detail_btn_url(2);
    links.set_detail_sub_btn_url(-1);

    EXPECT_EQ(links.SerializeAsString(),
              Bytes({0x08, 0x01, 0x10, 0x02, 0x18, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));
}

TEST(PremiumMessagesTest, TheStateOfARightIsFiveVarints) {
    AccessData state;
    state.set_access(1000);
    state.set_has_permission(true);
    state.set_activation_type(3);
    state.set_days_left(30);
    state.set_activation_source(2);

    EXPECT_EQ(state.SerializeAsString(), Bytes({0x08, 0xE8, 0x07, 0x10, 0x01, 0x18, 0x03, 0x20, 0x1E, 0x28, 0x02}));
}

TEST(PremiumMessagesTest, ANegativeNumberOfDaysTakesTenBytes) {
    AccessData state;
    state.set_days_left(-2);

    EXPECT_EQ(state.SerializeAsString(), Bytes({0x20, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));
}

/// Each of these fields is read and written as ten bytes when it is -1, and keeps 32 bits of a longer number.
template <class Message>
void ExpectSigned(std::initializer_list<int> numbers) {
    const std::string minusOne = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01});
    for (const int number : numbers) {
        SCOPED_TRACE(Message().GetTypeName() + ", field " + std::to_string(number));
        const std::string tag = Bytes({number * 8});
        Message message;
        ASSERT_TRUE(message.ParseFromString(tag + minusOne));
        EXPECT_EQ(message.SerializeAsString(), tag + minusOne);
        ASSERT_TRUE(message.ParseFromString(tag + Bytes({0x85, 0x80, 0x80, 0x80, 0x10})));
        EXPECT_EQ(message.SerializeAsString(), tag + Bytes({0x05}));
    }
}

TEST(PremiumMessagesTest, SignedFieldsTakeTenBytesBelowZero) {
    ExpectSigned<GetUiMsgAndPremiumAccessReq>({2});
    ExpectSigned<GetUiMsgAndPremiumAccessRsp>({1});
    ExpectSigned<UiDataAndAccessData>({1});
    ExpectSigned<UiData>({1});
    ExpectSigned<JumpUrlID>({1, 2, 3});
    ExpectSigned<AccessData>({1, 3, 4, 5});
    ExpectSigned<PremiumChangePush>({3});
    ExpectSigned<ActivePermissionStateReq>({1, 2});
    ExpectSigned<ActivePermissionStateRsp>({1});
}

TEST(PremiumMessagesTest, APushHoldsItsDelayTheFlagAndTheUnpackedList) {
    PremiumChangePush push;
    push.set_delay_seconds(4294967295u);
    push.set_need_all_access(false);
    push.add_access_list(13);
    push.add_access_list(-1);

    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F, 0x10, 0x00, 0x18, 0x0D, 0x18,
                                               0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));
}

TEST(PremiumMessagesTest, ARequestToActivateHoldsTheOperationAndTheUnpackedList) {
    ActivePermissionStateReq request;
    request.set_operate(READY_TO_LIMITED);
    request.add_access_list(101);
    request.add_access_list(102);

    EXPECT_EQ(request.SerializeAsString(), Bytes({0x08, 0x02, 0x10, 0x65, 0x10, 0x66}));
}

TEST(PremiumMessagesTest, TheCodeOfARepeatedActivationIsOneOfTheNamedOnes) {
    ActivePermissionStateRsp answer;
    answer.set_code(ACTIVE_PERMISSION_STATE_REPEAT);
    answer.set_message("no");
    const std::string bytes = Bytes({0x08, 0xE9, 0x07, 0x12, 0x02, 'n', 'o'});

    EXPECT_EQ(answer.SerializeAsString(), bytes);

    ActivePermissionStateRsp read;
    ASSERT_TRUE(read.ParseFromString(bytes));
    EXPECT_EQ(read.code(), 1001);
}

// Reading

TEST(PremiumMessagesTest, PackedAndUnpackedListsReadTheSame) {
    PremiumChangePush push;
    ASSERT_TRUE(push.ParseFromString(Bytes({0x1A, 0x03, 0x0D, 0xE8, 0x07})));
    EXPECT_THAT(push.access_list(), ElementsAre(13, 1000));
    ASSERT_TRUE(push.ParseFromString(Bytes({0x18, 0x0D, 0x18, 0xE8, 0x07})));
    EXPECT_THAT(push.access_list(), ElementsAre(13, 1000));

    GetUiMsgAndPremiumAccessReq request;
    ASSERT_TRUE(request.ParseFromString(Bytes({0x12, 0x02, 0x0D, 0x01})));
    EXPECT_THAT(request.access_list(), ElementsAre(13, 1));

    ActivePermissionStateReq activation;
    ASSERT_TRUE(activation.ParseFromString(Bytes({0x12, 0x02, 0x0D, 0x01})));
    EXPECT_THAT(activation.access_list(), ElementsAre(13, 1));
}

TEST(PremiumMessagesTest, BothFormsOfAListMayAlternateAndAreWrittenUnpacked) {
    PremiumChangePush push;

    ASSERT_TRUE(push.ParseFromString(Bytes({0x18, 0x01, 0x1A, 0x02, 0x02, 0x03, 0x18, 0x04, 0x1A, 0x00})));

    EXPECT_THAT(push.access_list(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(push.SerializeAsString(), Bytes({0x18, 0x01, 0x18, 0x02, 0x18, 0x03, 0x18, 0x04}));
}

TEST(PremiumMessagesTest, OfASingularFieldThatComesTwiceTheLastOneCounts) {
    GetUiMsgAndPremiumAccessRsp answer;

    ASSERT_TRUE(answer.ParseFromString(Bytes({0x08, 0x00, 0x08, 0x05})));

    EXPECT_EQ(answer.code(), 5);
}

TEST(PremiumMessagesTest, ANumberBeyond32BitsLosesItsUpperBits) {
    AccessData state;

    ASSERT_TRUE(state.ParseFromString(Bytes({0x20, 0x85, 0x80, 0x80, 0x80, 0x10})));

    EXPECT_EQ(state.days_left(), 5);
}

TEST(PremiumMessagesTest, NumbersThatNoNameStandsForAreRead) {
    AccessData state;

    ASSERT_TRUE(state.ParseFromString(Bytes({0x08, 0x09, 0x18, 0x63, 0x28, 0xE8, 0x07})));

    EXPECT_EQ(state.access(), 9);
    EXPECT_EQ(state.activation_type(), 99);
    EXPECT_EQ(state.activation_source(), 1000);
    EXPECT_THAT(state.unknown_fields(), IsEmpty());
}

TEST(PremiumMessagesTest, TextsAreNotCheckedForUtf8) {
    UiData display;

    ASSERT_TRUE(display.ParseFromString(Bytes({0x12, 0x02, 0xFF, 0xFE, 0x1A, 0x03, 0x0A, 0x01, 0x80})));

    EXPECT_EQ(display.ui_type(), Bytes({0xFF, 0xFE}));
    EXPECT_EQ(display.ui_text().main_title(), Bytes({0x80}));
    EXPECT_EQ(display.SerializeAsString(), Bytes({0x12, 0x02, 0xFF, 0xFE, 0x1A, 0x03, 0x0A, 0x01, 0x80}));
}

TEST(PremiumMessagesTest, UnknownFieldsAreKeptAtEachLevelAndWrittenBehindTheKnownOnes) {
    // an unknown field before the known one, in the answer, in its data and in their element
    const std::string read = Bytes({0xF8, 0x01, 0x2A, 0x08, 0x00, 0x1A, 0x0B,             // 31 of the answer
                                    0xFA, 0x01, 0x01, 'u', 0x0A, 0x05, 0xF8, 0x01, 0x01,  // 31 of data, of the element
                                    0x08, 0x0D});
    const std::string written = Bytes({0x08, 0x00, 0x1A, 0x0B, 0x0A, 0x05, 0x08, 0x0D, 0xF8, 0x01, 0x01,  // the known
                                       0xFA, 0x01, 0x01, 'u', 0xF8, 0x01, 0x2A});
    GetUiMsgAndPremiumAccessRsp answer;

    ASSERT_TRUE(answer.ParseFromString(read));

    EXPECT_EQ(answer.data().ui_data_and_access_data(0).access(), 13);
    EXPECT_EQ(answer.SerializeAsString(), written);
}

TEST(PremiumMessagesTest, AnElementWhoseInnerBytesAreTruncatedFailsTheWholeAnswer) {
    EXPECT_FALSE(GetUiMsgAndPremiumAccessRsp().ParseFromString(
        Bytes({0x08, 0x00, 0x1A, 0x06, 0x0A, 0x04, 0x08, 0x0D, 0x12, 0x05})));
}

// Every field of every message

constexpr int kVarint = 0;
constexpr int kLength = 2;

struct Field {
    int number;
    int wireType;
    bool repeatedNumber = false;  // reads the packed form as well
};

/// The layout of a message of the lite runtime, the only one that keeps unknown fields as a text.
struct MessageShape {
    const char* name;
    const google::protobuf::MessageLite* empty;
    std::vector<Field> fields;
    std::string (*unknown)(const google::protobuf::MessageLite&);
};

template <class Wire>
MessageShape Shape(const char* name, std::vector<Field> fields) {
    return {name, &Wire::default_instance(), std::move(fields),
            [](const google::protobuf::MessageLite& message) -> std::string {
                return static_cast<const Wire&>(message).unknown_fields();
            }};
}

std::ostream& operator<<(std::ostream& stream, const MessageShape& shape) {
    return stream << shape.name;
}

/// A field with the value 0, empty or blank, as its wire type has it.
std::string FieldBytes(int number, int wireType) {
    const int tag = number << 3;
    switch (wireType) {
        case 1:
            return Bytes({tag | 1, 0, 0, 0, 0, 0, 0, 0, 0});
        case 3:
            return Bytes({tag | 3, tag | 4});
        case 5:
            return Bytes({tag | 5, 0, 0, 0, 0});
        default:
            return Bytes({tag | wireType, 0});
    }
}

class PremiumMessageShapeTest : public TestWithParam<MessageShape> {
protected:
    std::unique_ptr<google::protobuf::MessageLite> Parsed(const std::string& bytes) {
        std::unique_ptr<google::protobuf::MessageLite> message(GetParam().empty->New());
        EXPECT_TRUE(message->ParseFromString(bytes)) << PrintToString(bytes);
        return message;
    }
};

TEST_P(PremiumMessageShapeTest, ReadsEachFieldUnderItsNumberAndWireTypeAndKeepsItsPresence) {
    for (const Field& field : GetParam().fields) {
        const std::string bytes = FieldBytes(field.number, field.wireType);
        const auto message = Parsed(bytes);

        EXPECT_EQ(GetParam().unknown(*message), "") << field.number;
        EXPECT_EQ(message->SerializeAsString(), bytes) << field.number;
    }
}

TEST_P(PremiumMessageShapeTest, KeepsAKnownNumberOfAForeignWireTypeAsUnknownAndTheFieldAbsent) {
    for (const Field& field : GetParam().fields) {
        for (const int wireType : {0, 1, 2, 3, 5}) {
            if (wireType == field.wireType || (wireType == kLength && field.repeatedNumber)) {
                continue;
            }
            const std::string bytes = FieldBytes(field.number, wireType);
            const auto message = Parsed(bytes);

            EXPECT_EQ(GetParam().unknown(*message), bytes) << field.number << " as wire type " << wireType;
            EXPECT_EQ(message->SerializeAsString(), bytes) << field.number << " as wire type " << wireType;
        }
    }
}

TEST_P(PremiumMessageShapeTest, KnowsNoOtherNumbers) {
    for (int number = 1; number <= 15; ++number) {
        const auto& fields = GetParam().fields;
        if (std::any_of(fields.begin(), fields.end(), [number](const Field& it) { return it.number == number; })) {
            continue;
        }
        const std::string bytes = FieldBytes(number, kVarint);
        EXPECT_EQ(GetParam().unknown(*Parsed(bytes)), bytes) << number;
    }
}

TEST_P(PremiumMessageShapeTest, NeedsNoFieldAndWritesNothingWhenNoneIsSet) {
    EXPECT_EQ(Parsed("")->SerializeAsString(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Messages, PremiumMessageShapeTest,
    Values(
        Shape<GetUiMsgAndPremiumAccessReq>("GetUiMsgAndPremiumAccessReq", {{1, kVarint}, {2, kVarint, true}}),
        Shape<GetUiMsgAndPremiumAccessRsp>("GetUiMsgAndPremiumAccessRsp", {{1, kVarint}, {2, kLength}, {3, kLength}}),
        Shape<GetUiMsgAndPremiumAccessData>("GetUiMsgAndPremiumAccessData", {{1, kLength}, {2, kVarint}}),
        Shape<UiDataAndAccessData>("UiDataAndAccessData", {{1, kVarint}, {2, kLength}, {3, kLength}}),
        Shape<UiData>("UiData", {{1, kVarint}, {2, kLength}, {3, kLength}, {4, kLength}, {5, kLength}}),
        Shape<UiText>("UiText", {{1, kLength}, {2, kLength}, {3, kLength}, {4, kLength}, {5, kLength}, {6, kLength}}),
        Shape<JumpUrlID>("JumpUrlID", {{1, kVarint}, {2, kVarint}, {3, kVarint}}),
        Shape<AccessData>("AccessData", {{1, kVarint}, {2, kVarint}, {3, kVarint}, {4, kVarint}, {5, kVarint}}),
        Shape<PremiumChangePush>("PremiumChangePush", {{1, kVarint}, {2, kVarint}, {3, kVarint, true}}),
        Shape<ActivePermissionStateReq>("ActivePermissionStateReq", {{1, kVarint}, {2, kVarint, true}}),
        Shape<ActivePermissionStateRsp>("ActivePermissionStateRsp", {{1, kVarint}, {2, kLength}})),
    [](const auto& row) { return row.param.name; });

}  // namespace
