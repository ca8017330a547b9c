// Input: the bytes of the answer to an activation.
#include <gmock/gmock.h>

#include "FuzzTarget.h"
#include "Vip/Controller/ZRActiveVipPopupController.h"
#include "premium_svr.pb.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr uint32_t kActivate = 20981;

/// The lines without a window, in order.
std::vector<std::string> Expected(const std::string& bytes) {
    web_premium_access::ActivePermissionStateRsp answer;
    if (answer.ParseFromString(bytes) && answer.code() == 0) {
        return {"Show popup failed, parent is empty"};
    }
    return {answer.ParseFromString(bytes) ? "active failed, code = " + std::to_string(answer.code()) + ", message = "
                                          : std::string("receive cmd 20981, data parse failed"),
            "Show toast failed, parent is empty, toastLangId = 292248"};
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CScriptedHost host;
    CZRActiveVipPopupController controller(nullptr);
    controller.RequestActiveVip(EnPremiumAccess(101), QStringLiteral("https://target.test/a"), nullptr);

    host.channel.Reply(host.channel.LastSession(), kActivate, bytes);
    EXPECT_THAT(host.log.Lines(), IsEmpty());
    host.time.Settle();

    const auto lines = host.log.Lines();
    const auto expected = Expected(bytes);
    EXPECT_EQ(lines.size(), expected.size());
    for (size_t i = 0; i < std::min(lines.size(), expected.size()); ++i) {
        EXPECT_THAT(lines[i].text, HasSubstr(expected[i]));
    }
    host.log.Forget();
    return 0;
}
