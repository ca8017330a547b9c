#include "core/pb_helper.h"

#include <gmock/gmock.h>

#include "chat.pb.h"

using namespace ::testing;

namespace {

TEST(PbHelperTest, AMessageComesBackFromItsBytes) {
    chat::ChatEntry entry;
    entry.set_scene(7);
    std::string bytes = "replaced";

    ASSERT_TRUE(core::pb_helper::PBDataToBuf(&entry, bytes));
    EXPECT_EQ(bytes, std::string("\x08\x07", 2));

    chat::ChatEntry read;
    read.set_is_all_open(true);
    ASSERT_TRUE(core::pb_helper::PBBufToData(bytes, &read));
    EXPECT_EQ(read.scene(), 7u);
    EXPECT_FALSE(read.has_is_all_open());
}

TEST(PbHelperTest, BytesThatAreNoMessageAreRefused) {
    chat::ChatEntry entry;

    EXPECT_FALSE(core::pb_helper::PBBufToData("\x1A\x7F", &entry));
}

TEST(PbHelperTest, NoMessageIsNoSuccess) {
    std::string bytes = "kept";

    EXPECT_FALSE(core::pb_helper::PBDataToBuf(nullptr, bytes));
    EXPECT_EQ(bytes, "kept");
    EXPECT_FALSE(core::pb_helper::PBBufToData(bytes, nullptr));
}

}  // namespace
