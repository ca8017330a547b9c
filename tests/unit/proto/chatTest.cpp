#include <gmock/gmock.h>
#include <google/protobuf/message.h>

#include "WireBytes.h"
#include "chat.pb.h"

using namespace ::testing;

namespace {

TEST(ChatMessagesTest, TheRequestHasNoBytes) {
    EXPECT_EQ(chat::GetChatEntryReq().SerializeAsString(), "");
}

TEST(ChatMessagesTest, AnAnswerIsWrittenFieldByFieldWithUnpackedIds) {
    chat::GetChatEntryRsp answer;
    answer.set_result_code(5);
    answer.set_result_message("ok");
    chat::ChatEntry* entry = answer.mutable_data()->add_entry_list();
    entry->set_scene(300);
    entry->set_is_all_open(true);
    chat::StockOpenDetail* detail = entry->add_stock_open_details();
    detail->set_detail_type(2);
    detail->set_is_open(false);
    detail->add_id_list(1);
    detail->add_id_list(2);

    EXPECT_EQ(answer.SerializeAsString(), Bytes({0x08, 0x05,                 // result_code
                                                 0x12, 0x02, 'o',  'k',      // result_message
                                                 0x1A, 0x11,                 // data
                                                 0x0A, 0x0F,                 // entry_list
                                                 0x08, 0xAC, 0x02,           // scene
                                                 0x10, 0x01,                 // is_all_open
                                                 0x1A, 0x08,                 // stock_open_details
                                                 0x08, 0x02,                 // detail_type
                                                 0x10, 0x00,                 // is_open
                                                 0x18, 0x01, 0x18, 0x02}));  // id_list, a tag each
}

TEST(ChatMessagesTest, PackedIdsAreReadAsWell) {
    chat::StockOpenDetail detail;

    ASSERT_TRUE(detail.ParseFromString(Bytes({0x1A, 0x03, 0x01, 0xAC, 0x02})));

    EXPECT_THAT(detail.id_list(), ElementsAre(1, 300));
}

TEST(ChatMessagesTest, ANegativeResultCodeTakesTenBytes) {
    chat::GetChatEntryRsp answer;
    answer.set_result_code(-1);

    EXPECT_EQ(answer.SerializeAsString(), Bytes({0x08, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}));
}

TEST(ChatMessagesTest, UnsignedFieldsTakeFiveBytesAtMost) {
    const std::string most = Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0x0F});
    chat::ChatEntry entry;
    entry.set_scene(4294967295u);
    EXPECT_EQ(entry.SerializeAsString(), Bytes({0x08}) + most);

    chat::StockOpenDetail detail;
    detail.set_detail_type(4294967295u);
    detail.add_id_list(4294967295u);
    EXPECT_EQ(detail.SerializeAsString(), Bytes({0x08}) + most + Bytes({0x18}) + most);
}

TEST(ChatMessagesTest, SingularFieldsTellWhetherTheyWereSet) {
    chat::ChatEntry entry;
    ASSERT_TRUE(entry.ParseFromString(Bytes({0x08, 0x00})));

    EXPECT_TRUE(entry.has_scene());
    EXPECT_FALSE(entry.has_is_all_open());
}

TEST(ChatMessagesTest, UnknownFieldsAreKeptAndWrittenBack) {
    const std::string bytes = Bytes({0x08, 0x07, 0xF8, 0x01, 0x2A});
    chat::ChatEntry entry;
    ASSERT_TRUE(entry.ParseFromString(bytes));

    EXPECT_EQ(entry.SerializeAsString(), bytes);
}

TEST(ChatMessagesTest, TheMessagesAreOfTheLiteRuntime) {
    EXPECT_TRUE((std::is_base_of<google::protobuf::MessageLite, chat::GetChatEntryRsp>::value));
    EXPECT_FALSE((std::is_base_of<google::protobuf::Message, chat::GetChatEntryRsp>::value));
}

}  // namespace
