#include "workbench/Workbench.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include "AIChatEntries.h"
#include "FakeControlClient.h"
#include "FakeGrowthService.h"
#include "FakeSession.h"
#include "PremiumRights.h"
#include "support/Click.h"
#include "support/RealTime.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "webview/IWebEngine.h"
#include "webview/WebHost.h"

using namespace ::testing;

namespace {

/// A page that has a process and nothing else.
class CPage : public IWebView {
public:
    explicit CPage(qint64 process) : m_nProcess(process) {}

    void Load(const WebLoad& /*load*/) override {}
    void Stop() override {}
    void Run(const QString& /*script*/) override {}
    void Send(const QString& /*message*/) override {}
    void SetFrozen(bool /*frozen*/) override {}
    QUrl CommittedUrl() const override { return {}; }
    qint64 ProcessId() const override { return m_nProcess; }

private:
    const qint64 m_nProcess;
};

class WorkbenchTest : public ScriptedHostTest {
protected:
    WorkbenchTest() {
        session.users = {{10001, QStringLiteral("Ada")}, {10002, QStringLiteral("Ben")}};
        Q_EMIT session.UsersChanged();
        window.setCentralWidget(workbench);
        window.resize(700, 800);
        window.show();
        time.Settle();
    }

    ~WorkbenchTest() override {
        delete workbench;
        store.Forget();  // the view, for the next start
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return window.findChild<Widget*>(QString::fromLatin1(name));
    }

    QString Fact(const char* key) { return Child<QLabel>((std::string("UserFact_") + key).c_str())->text(); }

    void LogIn(quint64 user) {
        session.user = user;
        Q_EMIT session.UserChanged();
    }

    void Log(const char* text) {
        LogEntry entry;
        entry.time = QDateTime::currentDateTime();
        entry.record.module = "ZRGrowth";
        entry.record.text = QString::fromUtf8(text);
        workbench->TakeLine(entry);
    }

    void ShowEdition(bool velora) {
        environment.SetVelora(velora);
        Q_EMIT session.EditionChanged();
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), key, modifiers);
        time.Settle();
    }

    void AnswerServer() {
        while (!server.wishes.empty()) {
            const auto wish = server.wishes.front();
            server.wishes.pop_front();
            if (wish.path == "/v1/faults") {
                wish.answered(ServerAnswer::Read(200, R"({"20637":{"error":7}})", QString()));
            } else {
                wish.answered(ServerAnswer::Read(0, QByteArray(), QStringLiteral("no answer")));
            }
        }
    }

    bool IsFileDone() {
        return WaitInRealTime([this] { return Child<QWidget>("ExportRow")->isEnabled(); });
    }

    /// Clicks the button and returns the failure of what it does with the file.
    QString RunFile(const char* button) {
        Click(Child<QPushButton>(button));
        AnswerServer();
        EXPECT_TRUE(IsFileDone());
        const auto* note = Child<QLabel>("ExportNote");
        return note->property("good").toBool() ? QString() : note->text();
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAIChatEntries entries;
    CPremiumRights rights;
    CFakeSession session;
    CFakeControlClient server;
    QMainWindow window;
    CWorkbench* workbench = new CWorkbench(session, entries, rights, server, &window);
};

}  // namespace

TEST_F(WorkbenchTest, TheChosenUserIsLoggedIn) {
    EXPECT_EQ(Fact("user"), QStringLiteral("Nobody is logged in"));
    EXPECT_FALSE(Child<QPushButton>("WorkbenchLogout")->isEnabled());

    Child<QComboBox>("WorkbenchUser")->setCurrentIndex(1);
    Click(Child<QPushButton>("WorkbenchLogin"));

    EXPECT_THAT(session.wanted, ElementsAre("user 10002"));
}

TEST_F(WorkbenchTest, WithoutUsersNobodyCanBeLoggedIn) {
    session.users.clear();
    Q_EMIT session.UsersChanged();

    EXPECT_FALSE(Child<QPushButton>("WorkbenchLogin")->isEnabled());
}

TEST_F(WorkbenchTest, ShowsWhoIsLoggedInAndLogsOut) {
    LogIn(10002);
    EXPECT_EQ(Fact("user"), QStringLiteral("Ben (10002)"));
    EXPECT_EQ(Child<QComboBox>("WorkbenchUser")->currentData().toULongLong(), 10002u);
    Click(Child<QPushButton>("WorkbenchLogout"));

    EXPECT_THAT(session.wanted, ElementsAre("logout"));
}

TEST_F(WorkbenchTest, ANewListOfUsersLeavesTheChoice) {
    LogIn(10001);
    Child<QComboBox>("WorkbenchUser")->setCurrentIndex(1);

    Q_EMIT session.UsersChanged();

    EXPECT_EQ(Child<QComboBox>("WorkbenchUser")->currentData().toULongLong(), 10002u);
}

TEST_F(WorkbenchTest, ALanguageIsAskedForByItsNumberAndShownWithoutAskingAgain) {
    session.language = 5;
    Q_EMIT session.LanguageChanged();
    EXPECT_EQ(Child<QComboBox>("WorkbenchLanguage")->currentText(), QStringLiteral("日本語"));
    EXPECT_THAT(session.wanted, IsEmpty());
    Child<QComboBox>("WorkbenchLanguage")->setCurrentIndex(1);

    EXPECT_THAT(session.wanted, ElementsAre("language 0"));
}

TEST_F(WorkbenchTest, AThemeIsAskedForByItsNumberAndShownWithoutAskingAgain) {
    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeBlack);
    EXPECT_EQ(Child<QComboBox>("WorkbenchTheme")->currentText(), QStringLiteral("Black"));
    EXPECT_THAT(session.wanted, IsEmpty());
    Child<QComboBox>("WorkbenchTheme")->setCurrentIndex(0);

    EXPECT_THAT(session.wanted, ElementsAre("theme 1"));
}

TEST_F(WorkbenchTest, TheOverrideReachesTheModule) {
    auto* combo = Child<QComboBox>("WorkbenchOverride");

    combo->setCurrentIndex(1);
    EXPECT_EQ(service->overrideType, 1u);
    combo->setCurrentIndex(2);
    EXPECT_EQ(service->overrideType, 2u);
    combo->setCurrentIndex(0);
    EXPECT_EQ(service->overrideType, 0u);
}

TEST_F(WorkbenchTest, WithoutTheModuleThereIsNothingToOverride) {
    service.reset();
    entries.Refresh();

    EXPECT_FALSE(Child<QComboBox>("WorkbenchOverride")->isEnabled());
}

TEST_F(WorkbenchTest, TheEditionIsAskedForAndShownWithoutAskingAgain) {
    ShowEdition(true);
    EXPECT_EQ(Child<QComboBox>("WorkbenchEdition")->currentText(), QStringLiteral("Velora"));
    EXPECT_THAT(session.wanted, IsEmpty());
    Child<QComboBox>("WorkbenchEdition")->setCurrentIndex(0);

    EXPECT_THAT(session.wanted, ElementsAre("Kestrel"));
}

TEST_F(WorkbenchTest, MarketsAreReadAsNumbersAndOthersCannotBeTyped) {
    auto* markets = Child<QLineEdit>("WorkbenchMarkets");
    markets->clear();
    Click(markets);
    for (const QChar letter : QStringLiteral("5x, -1  27777777777")) {
        QTest::keyClick(window.windowHandle(), letter.toLatin1());
    }
    Click(Child<QPushButton>("WorkbenchMarketsApply"));

    EXPECT_THAT(session.wanted, ElementsAre("markets 5 1 277777777"));
}

TEST_F(WorkbenchTest, TheUserPageShowsRightsAndVipStatusWithTheirReasons) {
    LogIn(10002);
    CPremiumUIAccessData held;
    held.enAccess = EnPremiumAccess(1000);
    held.bHasPermission = true;
    service->table[EnPremiumAccess(1000)] = held;
    service->table[EnPremiumAccess(1)] = CPremiumUIAccessData();
    service->state = 1;
    service->grade = 3;
    rights.Refresh();

    EXPECT_EQ(Fact("rights"), QStringLiteral("1 of 2 in the table: 1000 MyPagePremium"));
    EXPECT_EQ(Fact("vipOlderSystem"), QStringLiteral("yes: grade 3; not qualified for VIP"));
    EXPECT_EQ(Fact("vipNewerSystem"), QStringLiteral("no: edition Kestrel; the server reports no member"));

    ShowEdition(true);
    EXPECT_EQ(Fact("vipNewerSystem"), QStringLiteral("no: the server does not count the user in it"));
    service->isNewSystem = true;
    service->newState = 2;
    rights.Refresh();
    EXPECT_EQ(Fact("vipNewerSystem"), QStringLiteral("no: expired"));
    service->newState = 1;
    service->engine = 4;
    rights.Refresh();
    EXPECT_EQ(Fact("vipNewerSystem"), QStringLiteral("yes: member, report value 4"));
    EXPECT_EQ(Fact("qtVersion"), QString::fromLatin1(qVersion()));

    service.reset();
    rights.Refresh();
    EXPECT_EQ(Fact("vipOlderSystem"), QStringLiteral("no: the module is missing"));
    EXPECT_EQ(Fact("moduleVersion"), QStringLiteral("not loaded"));
}

TEST_F(WorkbenchTest, TheLastRefreshHasItsReason) {
    EXPECT_EQ(Fact("lastRefresh"), QStringLiteral("none was seen yet"));

    Log("[Premium] Premium Change Push Received, Need All Access = true, Custom Access Count = 0, Will Refresh After 5 "
        "Ms");
    time.Advance(std::chrono::seconds(1));
    Log("[Premium] Send Request For All Premium Access, Session = 5, Server Push = true");
    EXPECT_TRUE(Fact("lastRefresh").endsWith(QStringLiteral(": rights, push \u00B7 in flight")));
    Log("[Premium] Request Failed On Channel Error, Session = 5, Error = 7");
    EXPECT_TRUE(Fact("lastRefresh").endsWith(QStringLiteral(": rights, push \u00B7 channel error 7")));
    Log("[Premium] Send Request For Custom Premium Access, Count = 1, Session = 6, Server Push = false");
    EXPECT_TRUE(Fact("lastRefresh").endsWith(QStringLiteral(": rights, a caller \u00B7 in flight")));
}

TEST_F(WorkbenchTest, TheUserPageShowsTheChatEntryOfEachScene) {
    EXPECT_EQ(Fact("chatScene1"), QStringLiteral("Closed, nobody logged in"));
    account.Set(10001, 1);
    service->open = {1, 4};
    entries.Refresh();

    QStringList states;
    for (const char* scene : {"chatScene1", "chatScene2", "chatScene3", "chatScene4", "chatScene5"}) {
        states << Fact(scene);
    }
    EXPECT_EQ(states.join(QLatin1Char(' ')), QStringLiteral("Open Closed Closed Open Closed"));
    service.reset();
    entries.Refresh();
    EXPECT_EQ(Fact("chatScene1"), QStringLiteral("Closed, no module"));
}

TEST_F(WorkbenchTest, OverridesInForceAreListed) {
    EXPECT_EQ(Fact("overrides"), QStringLiteral("none"));

    Child<QComboBox>("WorkbenchOverride")->setCurrentIndex(2);
    Child<QLineEdit>("WorkbenchMarkets")->setText(QStringLiteral("5"));
    Click(Child<QPushButton>("WorkbenchMarketsApply"));

    EXPECT_EQ(Fact("overrides"), QStringLiteral("AI chat: force closed; markets, until the next login"));
}

TEST_F(WorkbenchTest, CopyTakesEachFactWithItsName) {
    LogIn(10001);

    Click(Child<QPushButton>("UserCopy"));

    const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    EXPECT_EQ(lines.first(), QStringLiteral("User: Ada (10001)"));
    EXPECT_EQ(lines.last(), QStringLiteral("Qt: %1").arg(QLatin1String(qVersion())));
}

TEST_F(WorkbenchTest, KeysChooseTabsAndTheFilter) {
    auto* tabs = Child<QTabWidget>("WorkbenchTabs");
    for (int tab = tabs->count() - 1; tab >= 0; --tab) {
        Press(Qt::Key(Qt::Key_1 + tab), Qt::ControlModifier);
        EXPECT_EQ(tabs->currentIndex(), tab);
    }
    tabs->setCurrentWidget(Child<QWidget>("LogTable")->parentWidget()->parentWidget());
    Press(Qt::Key_F, Qt::ControlModifier);

    EXPECT_EQ(window.focusWidget(), Child<QWidget>("LogFilter"));
}

TEST_F(WorkbenchTest, F5ReadsThePageAgain) {
    auto* tabs = Child<QTabWidget>("WorkbenchTabs");
    tabs->setCurrentWidget(Child<QWidget>("SessionPageScroll"));
    Child<QLabel>("UserFact_user")->clear();

    Press(Qt::Key_F5);

    EXPECT_EQ(Fact("user"), QStringLiteral("Nobody is logged in"));
}

TEST_F(WorkbenchTest, TheStateIsInTheExportAndShownWhenTheFileIsOpened) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("new/x.json"));
    Child<QLineEdit>("ExportPath")->setText(path);
    LogIn(10002);
    Log("[Ad] a line");
    time.Advance(std::chrono::seconds(1));

    ASSERT_EQ(RunFile("ExportSave"), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject state = QJsonDocument::fromJson(file.readAll()).object()[QStringLiteral("state")].toObject();
    EXPECT_THAT(
        state.keys(),
        IsSupersetOf({QStringLiteral("clientVersion"), QStringLiteral("clockOffset"), QStringLiteral("diagnosis"),
                      QStringLiteral("edition"), QStringLiteral("faults"), QStringLiteral("httpFaults"),
                      QStringLiteral("language"), QStringLiteral("overrides"), QStringLiteral("rights"),
                      QStringLiteral("scenario"), QStringLiteral("theme"), QStringLiteral("user")}));
    EXPECT_EQ(state[QStringLiteral("faults")].toObject()[QStringLiteral("20637")].toObject()[QStringLiteral("error")],
              7);
    EXPECT_EQ(state[QStringLiteral("scenario")], QStringLiteral("not known: no answer"));

    LogIn(0);
    Log("[Ad] another");
    time.Advance(std::chrono::seconds(1));
    ASSERT_EQ(RunFile("ExportOpen"), QString());

    EXPECT_TRUE(Child<QWidget>("FileBanner")->isVisible());
    EXPECT_EQ(Fact("user"), QStringLiteral("Ben (10002)"));
    EXPECT_EQ(Child<QAbstractItemView>("LogTable")->model()->rowCount(), 1);
    Click(Child<QPushButton>("FileBack"));
    EXPECT_FALSE(Child<QWidget>("FileBanner")->isVisible());
    EXPECT_EQ(Fact("user"), QStringLiteral("Nobody is logged in"));
    EXPECT_EQ(Child<QAbstractItemView>("LogTable")->model()->rowCount(), 2);
}

TEST_F(WorkbenchTest, AnExportOfFullListsCostsTheWindowLessThanFiftyMilliseconds) {
    QTemporaryDir folder;
    Child<QLineEdit>("ExportPath")->setText(folder.filePath(QStringLiteral("x.json")));
    for (int line = 0; line < 20'000; ++line) {
        Log("[Ad] a line of the log");
        TraceEvent seen;
        seen.number = uint64_t(line) + 1;
        seen.what = CommandTrace{CommandTrace::EnKind::Sent, 20982, 1, 0, -1, "\x08\x01", 20982};
        workbench->Take(seen);
    }
    time.Advance(std::chrono::seconds(3));
    timespec before{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);

    Click(Child<QPushButton>("ExportSave"));
    AnswerServer();

    timespec after{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
    EXPECT_LT((after.tv_sec - before.tv_sec) * 1000 + (after.tv_nsec - before.tv_nsec) / 1'000'000, 50);
    EXPECT_TRUE(IsFileDone());
}

TEST_F(WorkbenchTest, AFailedExportIsToldInRed) {
    Child<QLineEdit>("ExportPath")->setText(QStringLiteral("/proc/nothing/x.json"));

    EXPECT_EQ(RunFile("ExportSave"), QStringLiteral("The folder /proc/nothing can't be created"));

    EXPECT_EQ(Child<QLabel>("ExportNote")->text(), QStringLiteral("The folder /proc/nothing can't be created"));
    EXPECT_EQ(Child<QLabel>("ExportNote")->property("good"), false);
    EXPECT_TRUE(Child<QPushButton>("ExportSave")->isEnabled());
}

TEST_F(WorkbenchTest, TabAndFiltersSurviveARestart) {
    auto* tabs = Child<QTabWidget>("WorkbenchTabs");
    tabs->setCurrentIndex(tabs->count() - 1);
    Child<QLineEdit>("StoreFilter")->setText(QStringLiteral("key"));
    Child<QComboBox>("LogArea")->setCurrentText(QStringLiteral("Vip"));
    delete workbench;

    workbench = new CWorkbench(session, entries, rights, server, &window);

    EXPECT_EQ(Child<QTabWidget>("WorkbenchTabs")->currentIndex(), Child<QTabWidget>("WorkbenchTabs")->count() - 1);
    EXPECT_EQ(Child<QLineEdit>("StoreFilter")->text(), QStringLiteral("key"));
    EXPECT_EQ(Child<QComboBox>("LogArea")->currentText(), QStringLiteral("Vip"));
}

TEST_F(WorkbenchTest, TheButtonEndsTheProcessOfThePages) {
    Child<QTabWidget>("WorkbenchTabs")->setCurrentWidget(Child<QTabWidget>("TrafficTabs"));
    Child<QTabWidget>("TrafficTabs")->setCurrentIndex(4);
    time.Settle();
    EXPECT_EQ(Child<QLabel>("WebState")->text(), QStringLiteral("The web engine displays no page"));
    EXPECT_FALSE(Child<QPushButton>("WebEndProcess")->isEnabled());
    const pid_t process = fork();
    if (process == 0) {
        pause();
    }
    CPage view(process);
    host::web::CWebHost::Instance().AddView(&view);
    TraceEvent seen;
    seen.what = WebTrace{};
    workbench->Take(seen);
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(Child<QLabel>("WebState")->text(), QStringLiteral("Pages: 1, windows: 0, processes: %1").arg(process));

    Click(Child<QPushButton>("WebEndProcess"));

    int status = 0;
    EXPECT_TRUE(WaitInRealTime([&] { return waitpid(process, &status, WNOHANG) == process; }));
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    host::web::CWebHost::Instance().RemoveView(&view);
}
