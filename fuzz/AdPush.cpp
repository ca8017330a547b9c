// Input: the bytes of an ad push, decoded as each of the three types. A decoded push survives encoding and has a debug
// text.
#include <gtest/gtest.h>

#include <string>

#include "FuzzTarget.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"

namespace {

template <class Push>
void ReadAndWrite(const std::string& bytes) {
    Push push;
    if (!push.ParseFromString(bytes)) {
        return;
    }
    const std::string written = push.SerializeAsString();
    Push again;
    ASSERT_TRUE(again.ParseFromString(written));
    EXPECT_EQ(again.SerializeAsString(), written);
    EXPECT_EQ(again.DebugString(), push.DebugString());
    EXPECT_EQ(again.ad_type(), push.ad_type());
    EXPECT_EQ(again.ad_position(), push.ad_position());
    EXPECT_EQ(again.delay(), push.delay());
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    ReadAndWrite<ad_manage_oss::AdPush>(bytes);
    ReadAndWrite<ad_manage_oss::AdCheckPush>(bytes);
    ReadAndWrite<ads_service::AdPush>(bytes);
    return 0;
}
