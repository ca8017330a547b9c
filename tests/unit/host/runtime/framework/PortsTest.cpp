#include "framework/Ports.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <QObject>
#include <atomic>
#include <fstream>
#include <thread>

#include "core/IZRChannelProxy.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/config_local.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/message_dispatch.h"
#include "core/post.h"
#include "core/random.h"
#include "core/time_date.h"
#include "core/urlhandler.h"
#include "framework/ILog.h"
#include "framework/assertion.h"

using namespace ::testing;

namespace {

// Without services, before the first Install and after the last Uninstall.
TEST(PortsTest, AContractCallWithoutServicesDoesNothingAndGivesItsEmptyValue) {
    QObject context;
    std::string text = "untouched";
    long number = 7;
    const core::__CMessageDispatch bus("[Test]");
    bus.Bind(
        1, [](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {}, &context);
    bus.Send(1, nullptr, true);
    bus.UnBind(&context);
    core::post::ToMain(
        &context, [] { ADD_FAILURE() << "ran"; }, nullptr);
    FrameWork::_WriteLogRaw(nullptr, 0, nullptr, kZRLogError, nullptr, QString(), -128);
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "", "", 0, "false");
    IZRChannelProxy::BindCallback(kCSChannelMain, 1, {}, &context);
    IZRChannelProxy::UnbindCallback(&context);

    EXPECT_EQ(IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData(), nullptr, {}, &context), 0u);
    EXPECT_FALSE(core::urlhandler::DispatchUrl(QStringLiteral("https://a.example/"), core::urlhandler::kBusinessDefault,
                                               nullptr, QVariant(), core::urlhandler::kFallbackWeb));
    EXPECT_FALSE(core::config_local::AppCfgReadString("key", text));
    EXPECT_FALSE(core::config_local::AppCfgSaveString("key", text));
    EXPECT_FALSE(core::config_local::UserCfgReadString("key", text));
    EXPECT_FALSE(core::config_local::UserCfgSaveString("key", text));
    EXPECT_FALSE(core::config_local::AppCfgReadInt64("key", number));
    EXPECT_FALSE(core::config_local::AppCfgSaveInt64("key", number));
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(core::config_common::GetJsonConfigByName("ai_chat").isNull());
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 0u);
    EXPECT_EQ(core::login_status_data::GetSessionId(), 0u);
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), IsEmpty());
    EXPECT_TRUE(core::environment::IsReleaseAppVersion());
    EXPECT_FALSE(core::environment::IsVelora());
    EXPECT_EQ(core::environment::GetDeviceId(), "");
    EXPECT_FALSE(core::lang::IsChinese());
    EXPECT_EQ(core::langx::tr(1, "\xE6\x97\xA5"), QString::fromUtf8("\xE6\x97\xA5"));
    EXPECT_EQ(core::time_date::GetSvrTimeMillis(), 0);
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), 0);
    EXPECT_EQ(core::random::GetRandUInt32(), 0u);
}

/// The letter of a thread's state in /proc.
char StateOf(pid_t thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string text;
    std::getline(file, text);
    return text.at(text.rfind(')') + 2);
}

class CSlowLog : public ILog {
public:
    void Write(const LogRecord&) override {
        entered = true;
        while (!leave) {
            std::this_thread::yield();
        }
        left = true;
    }
    void AssertionFailed(const AssertionRecord&) override {}

    std::atomic<bool> entered{false};
    std::atomic<bool> leave{false};
    std::atomic<bool> left{false};
};

TEST(PortsTest, UninstallWaitsForTheCallOfAnotherThread) {
    CSlowLog log;
    host::Ports ports;
    ports.log = &log;
    host::Install(ports);
    std::thread writer([] { FrameWork::_WriteLogRaw("", 0, "", kZRLogInfo, "", QStringLiteral("from afar"), -128); });
    while (!log.entered) {
        std::this_thread::yield();
    }
    std::thread releaser([&log] { log.leave = true; });

    host::Uninstall();

    EXPECT_TRUE(log.left);
    writer.join();
    releaser.join();
}

/// Calls the contract from within a call of the contract.
class CNestingLog : public CSlowLog {
public:
    void Write(const LogRecord& record) override {
        CSlowLog::Write(record);
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "", "", 0, "false");
    }
    void AssertionFailed(const AssertionRecord&) override { nested = true; }

    std::atomic<bool> nested{false};
};

TEST(PortsTest, NestedCallOfAnotherThreadEndsWhileUninstallWaits) {
    CNestingLog log;
    host::Ports ports;
    ports.log = &log;
    host::Install(ports);
    std::atomic<bool> uninstalling{false};
    std::thread writer([] { FrameWork::_WriteLogRaw("", 0, "", kZRLogInfo, "", QStringLiteral("from afar"), -128); });
    while (!log.entered) {
        std::this_thread::yield();
    }
    const auto main = gettid();
    std::thread releaser([&] {
        // The state of a thread that waits for a lock is S.
        while (!uninstalling || StateOf(main) != 'S') {
            std::this_thread::yield();
        }
        log.leave = true;
    });

    uninstalling = true;
    host::Uninstall();

    EXPECT_TRUE(log.nested);
    writer.join();
    releaser.join();
}

TEST(PortsTest, TheMainThreadIsTheOneThatInstalled) {
    host::Install({});
    EXPECT_TRUE(host::OnMainThread());
    bool other = true;
    std::thread([&other] { other = host::OnMainThread(); }).join();
    EXPECT_FALSE(other);
    host::Uninstall();
}

}  // namespace
