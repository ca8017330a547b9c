// The model of the rights, linked with a writer of messages that gives up half-way.
#include "Premium/Model/ZRPremiumAccessModel.h"

#include "core/pb_helper.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

TEST_F(ScriptedHostTest, PremiumModelLogsAnErrorAndSavesWhatThereIsWhenWritingFails) {
    account.Set(501);
    CZRPremiumAccessModel model;

    model.SavePremiumData();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Premium] Latest News Filter Parse To String Failed.")));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{501u, "Growth_PremiumData", "half"}));
}

TEST_F(ScriptedHostTest, PremiumModelLogsBothFailuresInTheirOrderWhenTheStoreRefusesAsWell) {
    account.Set(501);
    store.RefuseSaves(Failing::Always());
    CZRPremiumAccessModel model;

    model.SavePremiumData();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Premium] Latest News Filter Parse To String Failed."),
                                         Error("[Premium] Latest News Filter Save Failed.")));
    EXPECT_THAT(store.Saves(), SizeIs(1));
}

}  // namespace

bool core::pb_helper::PBDataToBuf(const google::protobuf::MessageLite* /*message*/, std::string& out) {
    out = "half";
    return false;
}
