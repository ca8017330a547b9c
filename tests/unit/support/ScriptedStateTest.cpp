#include "support/ScriptedState.h"

#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/random.h"
#include "support/ScriptedHostTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ScriptedStateTest : public ScriptedHostTest {};

}  // namespace

TEST_F(ScriptedStateTest, NobodyIsLoggedInUntilTheTestSaysSo) {
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 0u);

    account.Set(7, 8, {2, 1});

    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 7u);
    EXPECT_EQ(core::login_status_data::GetSessionId(), 8u);
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), ElementsAre(2, 1));
}

TEST_F(ScriptedStateTest, LoggingInAsAnotherDropsTheSessionAndTheMarkets) {
    account.Set(7, 8, {2, 1});

    account.Set(9);

    EXPECT_EQ(core::login_status_data::GetSessionId(), 0u);
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), IsEmpty());
}

TEST_F(ScriptedStateTest, TheEnvironmentIsAsTheTestSetIt) {
    EXPECT_TRUE(core::environment::IsReleaseAppVersion());
    EXPECT_FALSE(core::environment::IsVelora());

    environment.SetRelease(false);
    environment.SetVelora(true);
    environment.SetDeviceId("device");

    EXPECT_FALSE(core::environment::IsReleaseAppVersion());
    EXPECT_TRUE(core::environment::IsVelora());
    EXPECT_EQ(core::environment::GetDeviceId(), "device");
}

TEST_F(ScriptedStateTest, TextsAreTheFallbackUnlessSet) {
    language.Set(core::lang::kLanguageJapanese);
    language.SetText(4, QStringLiteral("text"));

    EXPECT_EQ(core::lang::GetLanguageID(), 5);
    EXPECT_EQ(core::langx::tr(4, "fallback"), QStringLiteral("text"));
    EXPECT_EQ(core::langx::tr(5, "fallback"), QStringLiteral("fallback"));
}

TEST_F(ScriptedStateTest, ConfigurationIsNullWhereUnknownOrRefused) {
    config.Set("name", Json::Value(3));
    EXPECT_EQ(core::config_common::GetJsonConfigByName("name"), Json::Value(3));
    EXPECT_TRUE(core::config_common::GetJsonConfigByName("other").isNull());

    config.RefuseReads(Failing::Nth(1));
    EXPECT_TRUE(core::config_common::GetJsonConfigByName("name").isNull());
    EXPECT_EQ(core::config_common::GetJsonConfigByName("name"), Json::Value(3));
}

TEST_F(ScriptedStateTest, RandomNumbersAreTheAskedOnesAndThenAFixedSequence) {
    random.WillReturn({11, 12});

    EXPECT_EQ(core::random::GetRandUInt32(), 11u);
    EXPECT_EQ(core::random::GetRandUInt32(), 12u);
    // The first number of the standard generator with its default seed.
    EXPECT_EQ(core::random::GetRandUInt32(), 3499211612u);
}
