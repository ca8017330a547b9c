// Input: the bytes of the reply with the rights. It is handled twice: the second time the table contains the first.
#include <gmock/gmock.h>

#include "FuzzTarget.h"
#include "PlainRights.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/ZRPremiumIds.h"
#include "Premium/ZRPremiumManager.h"
#include "modules/ZRGrowthMessages.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

// The handler writes to the process-wide manager. Its table is empty at the start of each input.
CZRPremiumManager& Manager() {
    static bool started = false;
    if (!started) {
        CZRPremiumManager::Singleton()->Init();
        started = true;
    }
    CZRPremiumManager::Singleton()->OnLogout();
    return *CZRPremiumManager::Singleton();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
    const bool good = answer.ParseFromString(bytes) && answer.has_code() && answer.code() == 0;
    const PlainRights expected = good ? ExpectedRights(answer.data().ui_data_and_access_data()) : PlainRights();
    CScriptedHost host;
    host.state.account.Set(12345);
    CZRPremiumManager& manager = Manager();
    CZRPremiumDataHandler handler(nullptr);

    for (const bool serverPush : {false, true}) {
        host.bus.Forget();
        const unsigned long session = handler.GetUiMsgAndPremiumAccessReq(serverPush);
        host.channel.Reply(session, kCmdPremiumAccess, bytes);

        EXPECT_EQ(ActualRights(manager.GetUIAccessData()), expected);
        if (good && serverPush) {
            EXPECT_THAT(host.bus.Sent(), ElementsAre(::Message(kMsgPremiumDataChanged)));
        } else {
            EXPECT_THAT(host.bus.Sent(), ElementsAre(::Message(kMsgPremiumRequestAnswered, session, good ? 0 : 2)));
        }
    }
    EXPECT_EQ(host.store.Saves().size(), good ? 2u : 0u);
    host.log.Forget();
    return 0;
}
