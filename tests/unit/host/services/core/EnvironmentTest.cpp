#include "core/Environment.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class EnvironmentTest : public ScriptedHostTest {};

TEST_F(EnvironmentTest, TheDeviceIdIsMadeOnceAndKept) {
    const CEnvironment first(store, {});
    EXPECT_THAT(first.DeviceId(), MatchesRegex("[0-9a-f]{32}"));
    EXPECT_THAT(store.Saves(), SizeIs(1));

    const CEnvironment second(store, {});
    EXPECT_EQ(second.DeviceId(), first.DeviceId());
    EXPECT_THAT(store.Saves(), SizeIs(1));
}

TEST_F(EnvironmentTest, ADeviceIdThatCantBeKeptLastsForTheProcess) {
    store.RefuseSaves(Failing::Always());

    const CEnvironment refused(store, {});

    EXPECT_THAT(refused.DeviceId(), SizeIs(32));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("The device id could not be kept"))));
    store.Forget();
}

TEST_F(EnvironmentTest, BuildAndEditionAreWhatTheOptionsSay) {
    CEnvironment velora(store, {true, true});
    EXPECT_TRUE(velora.IsReleaseAppVersion());
    EXPECT_TRUE(velora.IsVelora());

    velora.SetVelora(false);
    EXPECT_FALSE(velora.IsVelora());
    EXPECT_FALSE(CEnvironment(store, {}).IsReleaseAppVersion());
    store.Forget();
}

}  // namespace
