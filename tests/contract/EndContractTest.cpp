#include <thread>

#include "HostSet.h"
#include "core/IZRChannelProxy.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/config_local.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/message_dispatch.h"
#include "core/network/http.h"
#include "core/post.h"
#include "core/random.h"
#include "core/report.h"
#include "core/time_date.h"
#include "core/url_data.h"
#include "core/urlhandler.h"
#include "framework/Ports.h"
#include "framework/assertion.h"
#include "framework/log.h"

namespace {

class EndContractTest : public HostContractTest {
protected:
    EndContractTest() {
        m_set->SetUser(7);
        core::config_local::UserCfgSaveString("key", "stored");
        host::Uninstall();
    }

    QObject context;
};

}  // namespace

TEST_F(EndContractTest, QueriesGiveTheirEmptyValues) {
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 0u);
    EXPECT_EQ(core::login_status_data::GetSessionId(), 0u);
    EXPECT_TRUE(core::attr_market::GetCurrentUserAttrMarket().empty());
    EXPECT_TRUE(core::config_common::GetJsonConfigByName("name").isNull());
    EXPECT_TRUE(core::environment::IsReleaseAppVersion());
    EXPECT_FALSE(core::environment::IsVelora());
    EXPECT_EQ(core::environment::GetDeviceId(), "");
    EXPECT_EQ(core::lang::GetLanguageID(), int(core::lang::kLanguageEnglish));
    EXPECT_EQ(core::langx::tr(1, "fallback"), QStringLiteral("fallback"));
    EXPECT_EQ(core::time_date::GetSvrTimeMillis(), 0);
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), 0);
    EXPECT_EQ(core::random::GetRandUInt32(), 0u);
}

TEST_F(EndContractTest, TheStoreGivesAndTakesNothing) {
    std::string text = "before";
    long number = 42;

    EXPECT_FALSE(core::config_local::UserCfgReadString("key", text));
    EXPECT_FALSE(core::config_local::AppCfgSaveString("key", "value"));
    EXPECT_FALSE(core::config_local::AppCfgReadInt64("key", number));

    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 42);
}

TEST_F(EndContractTest, NoUrlIsOpened) {
    EXPECT_FALSE(core::urlhandler::DispatchUrl(QStringLiteral("https://a.example/"), core::urlhandler::kBusinessDefault,
                                               &context, QVariant(), core::urlhandler::kFallbackWeb));
}

TEST_F(EndContractTest, NoRequestIsStartedAndNoEventTaken) {
    bool called = false;
    HttpReqInfo request;
    request.m_strUrl = "https://a.example/";

    EXPECT_EQ(core::network::http::StartRequest(
                  request, [&](auto, const auto&) { called = true; }, &context, kHttpWorkPoolDefault, nullptr, nullptr),
              0u);
    EXPECT_FALSE(core::report::Report("Event", 1, Json::Value(), 0));
    EXPECT_EQ(core::report::ReportTimerStart("Event"), nullptr);
    EXPECT_FALSE(core::report::ReportTimerEnd("Event#1", 1, Json::Value(), 0, 0));
    EXPECT_EQ(core::url_data::GetDomainUrl("api", core::url_data::kDomainBizDefault), "");
    EXPECT_FALSE(called);
}

TEST_F(EndContractTest, TheChannelSendsNothingAndCallsNobody) {
    bool called = false;
    const auto callback = [&](auto, auto, const auto&, auto) { called = true; };

    IZRChannelProxy::BindCallback(kCSChannelMain, 5, callback, &context);
    EXPECT_EQ(IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData{5, ""}, nullptr, callback, &context), 0u);
    IZRChannelProxy::UnbindCallback(&context);

    m_set->Push(5, "");
    EXPECT_FALSE(called);
}

TEST_F(EndContractTest, TheBusDeliversNothing) {
    bool called = false;
    const core::__CMessageDispatch bus("test");

    bus.Bind(
        5, [&](auto, auto, const auto&) { called = true; }, &context);
    bus.Send(5, nullptr, true);
    bus.UnBind(&context);

    EXPECT_FALSE(called);
}

TEST_F(EndContractTest, LogLinesAndAssertionsAndPostsAreDroppedFromAnyThread) {
    const auto calls = [this] {
        FrameWork::_WriteLogRaw(nullptr, 0, nullptr, kZRLogError, nullptr, QStringLiteral("late"), -128);
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "", "", 0, "late");
        core::post::ToMain(
            &context, [] { ADD_FAILURE() << "a task ran"; }, nullptr);
    };

    calls();
    std::thread(calls).join();

    m_set->Push(5, "");
}
