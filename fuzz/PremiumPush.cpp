// Input: the bytes of the push about changed rights.
#include <gmock/gmock.h>

#include <algorithm>

#include "FuzzTarget.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/ZRPremiumIds.h"
#include "premium_svr.pb.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr int64_t kHourMs = 3'600'000;

// The expected request after the delay.
std::string RequestBytes(const web_premium_access::PremiumChangePush& push) {
    web_premium_access::GetUiMsgAndPremiumAccessReq request;
    request.set_need_all_access(push.need_all_access());
    if (!push.need_all_access()) {
        *request.mutable_access_list() = push.access_list();
    }
    return request.SerializeAsString();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    web_premium_access::PremiumChangePush push;
    const bool good = !bytes.empty() && push.ParseFromString(bytes) && push.has_delay_seconds();
    // A delay beyond the signed range ends at once.
    const int64_t delayMs = std::max(0, int(push.delay_seconds() * 1000u));
    CScriptedHost host;
    CZRPremiumDataHandler handler(nullptr);

    host.channel.Push(kCmdPremiumChangePush, bytes);

    EXPECT_THAT(host.channel.Sent(), IsEmpty());
    EXPECT_EQ(host.poster.Delays(), good ? std::vector<int64_t>{delayMs} : std::vector<int64_t>());
    // During longer delays the hourly refresh would send a request first.
    if (good && delayMs < kHourMs) {
        host.time.Advance(std::chrono::milliseconds(delayMs));
        host.time.Settle();
        EXPECT_THAT(host.channel.Sent(), SizeIs(1));
        EXPECT_EQ(host.channel.Sent()[0].body, RequestBytes(push));
    }
    host.log.Forget();
    return 0;
}
