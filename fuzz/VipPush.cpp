// Input: the bytes of the push about a changed VIP status. The first four choose the random delay within the window.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

#include "FuzzTarget.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/ZRVipIds.h"
#include "support/ScriptedHost.h"
#include "vip_base_service.pb.h"

using namespace ::testing;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    uint32_t chance = 0;
    const size_t head = std::min(size, sizeof(chance));
    std::memcpy(&chance, data, head);
    const std::string bytes(reinterpret_cast<const char*>(data + head), size - head);
    vip_base_service::UserVipStateChangePush push;
    const bool good = push.ParseFromString(bytes);
    const uint32_t window = push.refresh_window_seconds() * 1000u;
    CScriptedHost host;
    host.timeAndRandom.random.WillReturn({chance});
    CZRVipDataHandler handler(nullptr);

    host.channel.Push(kCmdVipStatusPush, bytes);

    EXPECT_THAT(host.channel.Sent(), IsEmpty());
    const std::vector<int64_t> delays = host.poster.Delays();
    EXPECT_EQ(delays.size(), good ? 1u : 0u);
    for (const int64_t posted : delays) {
        const auto delay = uint32_t(posted);
        EXPECT_TRUE(window == 0 ? delay == 0 : delay < window) << delay << " of " << window;
        host.time.Advance(std::chrono::milliseconds(std::max(0, int(delay))));
        host.time.Settle();
        EXPECT_THAT(host.channel.Sent(), SizeIs(1));
    }
    host.log.Forget();
    return 0;
}
