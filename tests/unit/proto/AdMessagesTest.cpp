// The wire format of the three ad pushes.
#include <gmock/gmock.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <type_traits>

#include "WireBytes.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"

using namespace ::testing;

namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;

using StatusPush = ad_manage_oss::AdPush;
using CheckPush = ad_manage_oss::AdCheckPush;
using NewPush = ads_service::AdPush;

static_assert(std::is_base_of_v<google::protobuf::Message, StatusPush>, "a push of ads can describe itself");
static_assert(std::is_base_of_v<google::protobuf::Message, CheckPush>, "a push of ads can describe itself");
static_assert(std::is_base_of_v<google::protobuf::Message, NewPush>, "a push of ads can describe itself");

/// "<label> <type> <name> = <number>" of each field.
std::vector<std::string> Fields(const Descriptor* message) {
    std::vector<std::string> fields;
    for (int i = 0; i < message->field_count(); ++i) {
        const FieldDescriptor* field = message->field(i);
        fields.push_back(std::string(field->is_repeated()   ? "repeated "
                                     : field->is_optional() ? "optional "
                                                            : "? ") +
                         field->type_name() + " " + field->name() + " = " + std::to_string(field->number()));
    }
    return fields;
}

template <class Push>
void SetNumbers(Push& push, uint32_t type, uint32_t position, uint32_t delay) {
    push.set_ad_type(type);
    push.set_ad_position(position);
    push.set_delay(delay);
}

TEST(AdMessagesTest, TheStatusPushHasFourFields) {
    EXPECT_EQ(StatusPush::descriptor()->full_name(), "ad_manage_oss.AdPush");
    EXPECT_EQ(StatusPush::descriptor()->file()->name(), "ad_push_20145.proto");
    EXPECT_EQ(StatusPush::descriptor()->file()->syntax(), google::protobuf::FileDescriptor::SYNTAX_PROTO2);
    EXPECT_THAT(Fields(StatusPush::descriptor()),
                ElementsAre("optional uint32 ad_type = 1", "optional uint32 ad_position = 2",
                            "optional uint32 delay = 3", "repeated string offline_ad_id = 4"));
}

TEST(AdMessagesTest, TheCheckPushHasFourFields) {
    EXPECT_EQ(CheckPush::descriptor()->full_name(), "ad_manage_oss.AdCheckPush");
    EXPECT_EQ(CheckPush::descriptor()->file()->name(), "ad_push_20170.proto");
    EXPECT_EQ(CheckPush::descriptor()->file()->syntax(), google::protobuf::FileDescriptor::SYNTAX_PROTO2);
    EXPECT_THAT(Fields(CheckPush::descriptor()),
                ElementsAre("optional uint32 ad_type = 1", "optional uint32 ad_position = 2",
                            "optional uint32 delay = 3", "repeated string ad_id = 4"));
}

TEST(AdMessagesTest, ThePushOfANewAdHasThreeFields) {
    EXPECT_EQ(NewPush::descriptor()->full_name(), "ads_service.AdPush");
    EXPECT_EQ(NewPush::descriptor()->file()->name(), "ad_push_20171.proto");
    EXPECT_EQ(NewPush::descriptor()->file()->syntax(), google::protobuf::FileDescriptor::SYNTAX_PROTO2);
    EXPECT_THAT(
        Fields(NewPush::descriptor()),
        ElementsAre("optional uint32 ad_type = 1", "optional uint32 ad_position = 2", "optional uint32 delay = 3"));
}

TEST(AdMessagesTest, TheStatusPushIsWrittenInTheOrderOfItsNumbers) {
    StatusPush push;
    push.add_offline_ad_id("18088");
    push.add_offline_ad_id("");
    push.add_offline_ad_id("18088");
    SetNumbers(push, 2, 42, 300);

    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08, 0x02,                            //
                                               0x10, 0x2A,                            //
                                               0x18, 0xAC, 0x02,                      //
                                               0x22, 0x05, '1',  '8', '0', '8', '8',  //
                                               0x22, 0x00,                            //
                                               0x22, 0x05, '1',  '8', '0', '8', '8'}));
}

TEST(AdMessagesTest, TheCheckPushIsWrittenInTheOrderOfItsNumbers) {
    CheckPush push;
    push.add_ad_id("b");
    push.add_ad_id("a");
    SetNumbers(push, 3, 7, 0);

    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08, 0x03, 0x10, 0x07, 0x18, 0x00, 0x22, 0x01, 'b', 0x22, 0x01, 'a'}));
}

TEST(AdMessagesTest, ThePushOfANewAdIsWrittenInTheOrderOfItsNumbers) {
    NewPush push;
    SetNumbers(push, 0xFFFFFFFF, 0, 1);

    EXPECT_EQ(push.SerializeAsString(), Bytes({0x08, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F, 0x10, 0x00, 0x18, 0x01}));
}

template <class Push>
class AdPushReadTest : public Test {};

using Pushes = Types<StatusPush, CheckPush, NewPush>;
TYPED_TEST_SUITE(AdPushReadTest, Pushes, );

TYPED_TEST(AdPushReadTest, AbsentFieldReadsAsZero) {
    TypeParam push;
    ASSERT_TRUE(push.ParseFromString(std::string()));

    EXPECT_EQ(push.ad_type(), 0u);
    EXPECT_EQ(push.ad_position(), 0u);
    EXPECT_EQ(push.delay(), 0u);
    EXPECT_FALSE(push.has_ad_type());
    EXPECT_FALSE(push.has_ad_position());
    EXPECT_FALSE(push.has_delay());
    EXPECT_EQ(push.SerializeAsString(), "");
}

TYPED_TEST(AdPushReadTest, TheFieldsMayComeInAnyOrderAndTheLaterOfOneCounts) {
    TypeParam push;

    ASSERT_TRUE(push.ParseFromString(Bytes({0x18, 0x05, 0x10, 0x2A, 0x08, 0x09, 0x08, 0x02})));

    EXPECT_EQ(push.ad_type(), 2u);
    EXPECT_EQ(push.ad_position(), 42u);
    EXPECT_EQ(push.delay(), 5u);
}

TYPED_TEST(AdPushReadTest, AFieldOfANewerServerIsPassedOver) {
    TypeParam push;

    ASSERT_TRUE(push.ParseFromString(Bytes({0x2A, 0x01, 'x', 0x10, 0x2A, 0x98, 0x06, 0x01})));

    EXPECT_EQ(push.ad_position(), 42u);
}

TYPED_TEST(AdPushReadTest, ANumberOfAnotherWireTypeIsNotRead) {
    TypeParam push;

    ASSERT_TRUE(push.ParseFromString(Bytes({0x0D, 0x02, 0x00, 0x00, 0x00})));  // four bytes where a varint belongs

    EXPECT_FALSE(push.has_ad_type());
}

TYPED_TEST(AdPushReadTest, BytesThatAreNoMessageAreRefused) {
    for (const std::string& bytes :
         {Bytes({0x08}), Bytes({0x08, 0x80}), Bytes({0x22, 0x05, 'x'}), Bytes({0x00, 0x00}), Bytes({0x0C})}) {
        TypeParam push;
        EXPECT_FALSE(push.ParseFromString(bytes)) << PrintToString(bytes);
    }
}

TYPED_TEST(AdPushReadTest, AnIdThatIsNoUtf8IsReadAndItsBytesAreKept) {
    const std::string bytes = Bytes({0x08, 0x02, 0x22, 0x01, 0xFF});
    TypeParam push;

    ASSERT_TRUE(push.ParseFromString(bytes));

    // the push of a new ad has no ids: there it is a newer server's field
    EXPECT_EQ(push.SerializeAsString(), bytes);
}

TEST(AdMessagesTest, IdsThatAreAbsentAreAnEmptyListAndTheirBytesAreKept) {
    StatusPush status;
    CheckPush check;
    ASSERT_TRUE(status.ParseFromString(Bytes({0x08, 0x02})));
    ASSERT_TRUE(check.ParseFromString(Bytes({0x08, 0x02})));
    EXPECT_EQ(status.offline_ad_id_size(), 0);
    EXPECT_EQ(check.ad_id_size(), 0);

    ASSERT_TRUE(status.ParseFromString(Bytes({0x22, 0x02, 'b', 0x00, 0x22, 0x00, 0x22, 0x01, 'a'})));
    ASSERT_TRUE(check.ParseFromString(Bytes({0x22, 0x02, 'b', 0x00, 0x22, 0x01, 'a'})));
    EXPECT_THAT(status.offline_ad_id(), ElementsAre(std::string("b\0", 2), "", "a"));
    EXPECT_THAT(check.ad_id(), ElementsAre(std::string("b\0", 2), "a"));

    ASSERT_TRUE(status.ParseFromString(Bytes({0x22, 0x01, 0xFF})));
    ASSERT_TRUE(check.ParseFromString(Bytes({0x22, 0x01, 0xFF})));
    EXPECT_THAT(status.offline_ad_id(), ElementsAre("\xFF"));
    EXPECT_THAT(check.ad_id(), ElementsAre("\xFF"));
}

}  // namespace
