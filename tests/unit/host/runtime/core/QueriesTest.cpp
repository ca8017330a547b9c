#include <limits>

#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/config_local.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/random.h"
#include "core/time_date.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class QueriesTest : public ScriptedHostTest {};

TEST_F(QueriesTest, LoginTellsUserSessionAndMarketsInAllTheirBits) {
    account.Set(18446744073709551615u, 9223372036854775809u, {3, 1});

    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 18446744073709551615u);
    EXPECT_EQ(core::login_status_data::GetSessionId(), 9223372036854775809u);
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), ElementsAre(3, 1));
}

TEST_F(QueriesTest, EnvironmentTellsBuildEditionAndDevice) {
    environment.SetRelease(false);
    environment.SetVelora(true);
    environment.SetDeviceId("device");

    EXPECT_FALSE(core::environment::IsReleaseAppVersion());
    EXPECT_TRUE(core::environment::IsVelora());
    EXPECT_EQ(core::environment::GetDeviceId(), "device");

    environment.SetRelease(true);
    EXPECT_TRUE(core::environment::IsReleaseAppVersion());
}

TEST_F(QueriesTest, SimplifiedAndTraditionalAreTheChineseLanguages) {
    for (const auto& [id, chinese] : {std::pair(0, true), {1, true}, {2, false}, {5, false}, {7, false}, {-1, false}}) {
        language.Set(id);
        EXPECT_EQ(core::lang::GetLanguageID(), id);
        EXPECT_EQ(core::lang::IsChinese(), chinese) << id;
    }
}

TEST_F(QueriesTest, ATextComesFromThePackAndElseFromTheFallback) {
    language.SetText(277229, QStringLiteral("day"));

    EXPECT_EQ(core::langx::tr(277229, "\xE6\x97\xA5"), QStringLiteral("day"));
    EXPECT_EQ(core::langx::tr(277228, "\xE6\x97\xA5"), QString::fromUtf8("\xE6\x97\xA5"));
}

TEST_F(QueriesTest, ServerSecondsAreTheMillisecondsRoundedDown) {
    time.SetServerTime(1'700'000'000'999);
    EXPECT_EQ(core::time_date::GetSvrTimeMillis(), 1'700'000'000'999);
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), 1'700'000'000);

    time.SetServerTime(-1);
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), -1);
    time.SetServerTime(-1000);
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), -1);
}

TEST_F(QueriesTest, ARandomNumberMayHaveAllItsBits) {
    random.WillReturn({4294967295u, 0});

    EXPECT_EQ(core::random::GetRandUInt32(), 4294967295u);
    EXPECT_EQ(core::random::GetRandUInt32(), 0u);
}

TEST_F(QueriesTest, CommonConfigurationIsKeptByNameAndNullForAnUnknownOne) {
    config.Set("ai_chat", Json::Value("text"));

    EXPECT_EQ(core::config_common::GetJsonConfigByName("ai_chat"), Json::Value("text"));
    EXPECT_TRUE(core::config_common::GetJsonConfigByName("other").isNull());
}

TEST_F(QueriesTest, TheUserStoreIsOfWhoeverIsLoggedInAndOfUserZeroWithNobody) {
    account.Set(11);
    EXPECT_TRUE(core::config_local::UserCfgSaveString("key", "of 11"));
    account.Set(0);
    EXPECT_TRUE(core::config_local::UserCfgSaveString("key", "of nobody"));

    EXPECT_EQ(store.UserString(11, "key"), "of 11");
    EXPECT_EQ(store.UserString(0, "key"), "of nobody");
    EXPECT_FALSE(store.AppString("key"));
}

TEST_F(QueriesTest, AStoredNumberKeepsItsSixtyFourBits) {
    EXPECT_TRUE(core::config_local::AppCfgSaveInt64("key", std::numeric_limits<long>::min()));
    long value = 0;
    EXPECT_TRUE(core::config_local::AppCfgReadInt64("key", value));
    EXPECT_EQ(value, std::numeric_limits<long>::min());
    EXPECT_EQ(store.Int64("key"), std::numeric_limits<long>::min());
}

}  // namespace
