// The service as a module of another library uses it, through the plug-in centre, in each state of the growth module.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <thread>

#include "plugin/IZRPluginCenter.h"
#include "plugin/PluginLoader.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using host::CModuleLifecycle;

namespace {

class ServiceCallsTest : public ScriptedHostTest {
protected:
    ServiceCallsTest() {
        links.Set(301, "https://links.test/main");
        EXPECT_EQ(host::MapModule({"CZRGrowthModule", QStringLiteral(ZR_MODULE)}, QString()), QString());
        EXPECT_EQ(host::MapModule({"CCaller", QStringLiteral(ZR_CALLER)}, QString()), QString());
    }

    ~ServiceCallsTest() override {
        LogOut();
        CModuleLifecycle::Close();
        ForgetAll();
    }

    /// Starts the module and logs a user in.
    void Run() {
        CModuleLifecycle::Init();
        account.Set(501);
        CModuleLifecycle::Login();
        ForgetAll();
    }

    /// Closes the window of the chat as well.
    void LogOut() {
        if (account.UserId() != 0) {
            account.Set(0);
            CModuleLifecycle::Logout();
            ForgetAll();
        }
    }

    std::vector<std::string> Call(bool forAnyThread = false) {
        void* library = dlopen(ZR_CALLER, RTLD_NOW | RTLD_NOLOAD);
        EXPECT_NE(library, nullptr);
        const auto call = reinterpret_cast<void (*)(bool, std::vector<std::string>*)>(dlsym(library, "CallService"));
        std::vector<std::string> lines;
        call(forAnyThread, &lines);
        dlclose(library);
        return lines;
    }

    std::vector<std::string> CallFromAThread() {
        std::vector<std::string> lines;
        std::thread([&] { lines = Call(true); }).join();
        time.Settle();
        return lines;
    }

    void ForgetAll() {
        time.Settle();
        channel.Forget();
        store.Forget();
        urls.Forget();
        http.Forget();
        reports.Forget();
        log.Forget();
        web.Forget();
        bus.Forget();
    }
};

/// The results of a module that is not initialised.
std::vector<std::string> EmptyResults() {
    return {
        "1 done",
        "2 done",
        "3 CZRAdBottomPopupDeveloperView",
        "4 false",
        "5 false",
        "6 false",
        "7 ''",
        "8 0",
        "9 ''",
        "10 0",
        "11 done",
        "12 CZRPremiumTimeActivationStateWidget",
        "13 CZRPremiumMenuEntryAction",
        "14 CZRVipMenuEntryAction",
        "15 CZRVipTitleBarEntryWidget",
        "16 false",
        "17 0",
        "18 0",
        "19 false",
        "20 -1",
        "21 0",
        "22 false",
        "23 CZRVipIconWidget",
        "24 'icon_vip_16_normal'",
        "25 16x16",
        "26 false",
        "27 CZRVipTagWidget",
        "28 ''",
        "29 26x16",
        "30 false",
        "31 CZRVipBannerWidget",
        "32 false",
        "33 CZRVipExclusiveMaskWidget",
        "34 done",
        "35 done",
        "36 false",
        "37 done",
        "38 false",
        "39 true",
        "40 done",
        "41 done",
        "42 done",
    };
}

/// The same for a module whose table has the record that operation 11 set.
std::vector<std::string> ResultsWithARecord(bool isInTheTableAtFirst) {
    std::vector<std::string> results = EmptyResults();
    const auto set = [&results](int number, const char* result) {
        results[size_t(number) - 1] = std::to_string(number) + " " + result;
    };
    for (const int number : {4, 5, 6, 22, 30, 32}) {
        set(number, "true");
    }
    if (isInTheTableAtFirst) {
        set(7, "'title'");
        set(8, "5");
        set(9, "'button'");
        set(10, "1");
    }
    return results;
}

TEST_F(ServiceCallsTest, EachOperationAnswersBeforeTheStart) {
    EXPECT_EQ(Call(), EmptyResults());

    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://vip.test/")));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_THAT(log.Lines(),
                Contains(Error("[Vip] Click vip widget failed, btnUrlID = 0, access = 103, dataType = 1")));
}

TEST_F(ServiceCallsTest, EachOperationReachesARunningModule) {
    Run();
    EXPECT_EQ(Call(), ResultsWithARecord(false));
    ForgetAll();

    EXPECT_EQ(Call(), ResultsWithARecord(true));

    EXPECT_THAT(channel.Sent(), SizeIs(3));
    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://links.test/main"),
                                           Field(&OpenedUrl::url, "https://vip.test/")));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Get ad banner, adPosition = 7")));
    // The chat's window is there since the login, and its page made no call.
    EXPECT_THAT(log.Lines(), Contains(Error("Dropped an answer without an open call: name")));
}

TEST_F(ServiceCallsTest, OperationsForAnyThreadAnswerOnAnother) {
    Run();
    Call();
    ForgetAll();

    EXPECT_THAT(CallFromAThread(), ElementsAre("1 done", "7 'title'", "8 5", "9 'button'", "10 1", "37 done"));

    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Get ad banner, adPosition = 7")));
    EXPECT_THAT(log.Lines(), Contains(Info(HasSubstr("Request ad limited"))));
}

TEST_F(ServiceCallsTest, EachOperationAnswersAfterTheEnd) {
    Run();
    LogOut();
    CModuleLifecycle::UnInit();
    ForgetAll();

    EXPECT_EQ(Call(), ResultsWithARecord(false));
    EXPECT_THAT(channel.Sent(), SizeIs(3));
}

TEST_F(ServiceCallsTest, CentreGivesNoServiceAfterItsEnd) {
    Run();
    LogOut();
    CModuleLifecycle::Close();
    EXPECT_EQ(IZRPluginCenter::_CreateInterface("24IZRGrowthModuleInterface"), nullptr);
}

}  // namespace
