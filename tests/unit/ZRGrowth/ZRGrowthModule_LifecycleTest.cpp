// Many lives of the module in one process: everything ends except for the parts that live as long as the process.
#include <gmock/gmock.h>

#include <QApplication>
#include <QDir>

#include "ZRGrowthModule.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"
#include "support/VirtualEventDispatcher.h"
#include "ui/ThemeControl.h"
#include "ui/ZAction.h"
#include "ui/ZMenu.h"

using namespace ::testing;

namespace {

int EntriesOf(const char* folder) {
    return int(
        QDir(QString::fromLatin1(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size());
}

/// The parts that can be left behind.
struct Left {
    int timers;
    int bindings;
    int pushes;
    int widgets;
    int engines;
    int threads;
    int files;
    int requests;
};

bool operator==(const Left& left, const Left& right) {
    return memcmp(&left, &right, sizeof left) == 0;
}

Left operator-(const Left& left, const Left& right) {
    return {left.timers - right.timers,   left.bindings - right.bindings, left.pushes - right.pushes,
            left.widgets - right.widgets, left.engines - right.engines,   left.threads - right.threads,
            left.files - right.files,     left.requests - right.requests};
}

void PrintTo(const Left& left, std::ostream* stream) {
    *stream << "timers " << left.timers << ", bindings " << left.bindings << ", pushes " << left.pushes << ", widgets "
            << left.widgets << ", engine pages " << left.engines << ", threads " << left.threads << ", files "
            << left.files << ", requests " << left.requests;
}

class ModuleLifecycleTest : public ScriptedHostTest {
protected:
    ModuleLifecycleTest() { environment.SetRelease(true); }

    ~ModuleLifecycleTest() override { Forget(); }

    void Forget() {
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

    Left Now() {
        Forget();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return {CVirtualEventDispatcher::Instance()->TimerCount(),
                bus.SubscriptionCount(),
                int(channel.BoundCommands().size()),
                int(QApplication::allWidgets().size()),
                int(web.Views().size()),
                EntriesOf("/proc/self/task"),
                EntriesOf("/proc/self/fd"),
                http.OutstandingCount()};
    }

    /// A user comes, sees each widget, changes language and theme, and goes.
    void UserComesAndGoes(uint64_t user, int round) {
        account.Set(user);
        module.OnLogin();
        bus.HostSend(10650);
        const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
        {
            CPremiumUIAccessData record;
            record.strUIType = QStringLiteral("D");
            record.strMainTitle = QStringLiteral("title");
            record.strMainBtn = QStringLiteral("button");
            record.nActivationType = ZRPremiumActivationNotActivated;
            const auto right = EnPremiumAccess_Insider;
            service->SetUIAccessData(right, record);
            QWidget page;
            ZMenu menu;
            service->GetVipIcon(right, &page);
            service->GetVipTag(right, ZRVipTagGrade, QString(), &page);
            service->GetVipBanner(right, ZRVipUIDataMain, QString(), &page);
            service->GetVipMask(ZRVipMaskLocked, right, ZRVipUIDataMain, QString(), &page, {}, 20, 14, false);
            service->GetPremiumTimeActivationStateWidget(QString(), QString(), QString(), QString(), 5, &page);
            service->GetVipTitleBarEntryWidget(&page, {});
            service->GetPremiumMenuEntryAction(&menu);
            service->GetVipMenuEntryAction(&menu);
            page.show();
            service->OpenAIChatPage(ZRAIChatPageNews, {}, false, true);
            time.Settle();
            language.Set(round % 2 == 0 ? 2 : 5);
            bus.HostSend(20100);
            host::CThemeControl::Set(host::CThemeControl::kThemes[size_t(round) % 3]);
            bus.HostSend(20101);
            time.Settle();
        }
        for (const StartedRequest& request : http.Started()) {
            http.Answer(request.task, "{}");
        }
        account.Set(0);
        module.OnLogout();
        time.Settle();
    }

    void Live(int round) {
        module.OnInit();
        UserComesAndGoes(501, round);
        UserComesAndGoes(502, round + 1);
        module.OnUnInit();
        time.Settle();
    }

    CZRGrowthModule module;
};

TEST_F(ModuleLifecycleTest, UsersLeaveNothingBehindWithinALife) {
    module.OnInit();
    UserComesAndGoes(501, 0);
    UserComesAndGoes(502, 1);
    const Left before = Now();

    for (int round = 0; round < 100; ++round) {
        UserComesAndGoes(501 + uint64_t(round % 3), round);
    }

    EXPECT_EQ(Now() - before, Left{});
}

// A start creates the handler of the rights, with a timer, a push and a message, and nothing ends it.
TEST_F(ModuleLifecycleTest, EachStartKeepsTheHandlerOfTheRightsOnly) {
    Live(0);
    Live(1);
    const Left before = Now();

    for (int round = 0; round < 100; ++round) {
        Live(round);
    }

    Left kept{};
    kept.timers = 100;
    kept.bindings = 100;
    kept.pushes = 100;
    EXPECT_EQ(Now() - before, kept);
}

}  // namespace
