// Input: the stored bytes of a user's saved rights.
#include <gmock/gmock.h>

#include "FuzzTarget.h"
#include "PlainRights.h"
#include "Premium/Model/ZRPremiumAccessModel.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr uint64_t kUser = 12345;
constexpr const char* kKey = "Growth_PremiumData";

PlainRights ActualWithoutSources(const CZRPremiumAccessModel& model) {
    auto table = model.GetUIAccessData();
    for (CPremiumUIAccessData& record : table) {
        record.nActivationSource = 0;
        // A half without a right's number is not saved.
        if (record.enUIAccess == 0) {
            static_cast<CPremiumUIData&>(record) = {};
        }
        if (record.enAccess == 0) {
            static_cast<CPremiumAccessData&>(record) = {};
        }
    }
    return ActualRights(table);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    const bool good = saved.ParseFromString(bytes);
    CScriptedHost host;
    host.state.account.Set(kUser);
    host.store.SetUserString(kUser, kKey, bytes);

    CZRPremiumAccessModel model;
    model.InitPremiumData();
    EXPECT_EQ(ActualRights(model.GetUIAccessData()),
              good ? ExpectedRights(saved.ui_data_and_access_data()) : PlainRights());

    // Saving and loading keeps everything except the sources.
    model.SavePremiumData();
    CZRPremiumAccessModel again;
    again.InitPremiumData();
    EXPECT_EQ(ActualRights(again.GetUIAccessData()), ActualWithoutSources(model));

    host.store.Forget();
    return 0;
}
