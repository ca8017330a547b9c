// The guided tour of the client, case by case.
#include "TourFixture.h"

#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTableWidget>
#include <csignal>

#include "Theme.h"
#include "core/message_ids.h"
#include "ui/zr_ui_theme.h"
#include "workbench/diagnosis/Tracker.h"

using namespace ::testing;

namespace {

constexpr int kChinese = 0;

TEST_F(TourTest, ConnectsAndShowsTheEntriesOfTheFirstUser) {
    StartTour();

    EXPECT_TRUE(WaitInRealTime([this] { return window->StatusLine().IsGood(); }));
    EXPECT_EQ(Child<QToolButton>("UserMenuButton")->text(), QStringLiteral("Ada Free"));
    Picture("connected");
}

TEST_F(TourTest, ShowsTheEntriesOfAnotherUser) {
    StartTour();

    LogIn(kTwoOpen, {2, 5});
    Choose(kEntryPages[1].name);
    Click(Child<QAbstractButton>("AIChatEntry2"));

    EXPECT_FALSE(Child<QLabel>("StatusNote")->text().isEmpty());
    Picture("other-user");
}

TEST_F(TourTest, DisablesTheEntriesOfAUserWithoutThem) {
    StartTour();

    LogIn(kNoneOpen, {});
    Choose(kEntryPages[3].name);

    Picture("no-entries");
}

TEST_F(TourTest, ChangesTheLanguageOfTheRunningClient) {
    StartTour();
    auto* tab = Child<QToolButton>("NavigationTab_watchlist");
    const QString english = tab->text();

    Select("WorkbenchLanguage", kChinese);
    Choose(kEntryPages[2].name);
    EXPECT_NE(tab->text(), english);
    EXPECT_GT(tab->text().trimmed()[0].unicode(), 0x2E80);
    Picture("chinese");

    Select("WorkbenchLanguage", 2);
    EXPECT_EQ(tab->text(), english);
}

struct Look {
    const char* name;
    zr_ui_theme::Manager::Theme theme;
};

void PrintTo(const Look& look, std::ostream* stream) {
    *stream << look.name;
}

class TourThemeTest : public TourTest, public WithParamInterface<Look> {
protected:
    int themeMessages = 0;

    // The lower edge of a page has the window's colour.
    bool HasThemeColor() const {
        const QImage picture = Child<QWidget>("Content")->grab().toImage();
        return picture.pixelColor(picture.width() - 4, picture.height() - 4) == QColor(theme::kWindow);
    }
};

TEST_P(TourThemeTest, ShowsWindowAndRightsInTheTheme) {
    StartTour();
    Choose(kEntryPages[1].name);
    // The message is sent once, and only if the theme changes.
    const int expected = zr_ui_theme::Manager::instance()->getTheme() == GetParam().theme ? 0 : 1;
    Bind(core::kMsgThemeChanged, [this](unsigned int, auto, auto) { ++themeMessages; });

    Select("WorkbenchTheme", int(GetParam().theme));

    EXPECT_EQ(themeMessages, expected);
    EXPECT_TRUE(WaitInRealTime([this] { return HasThemeColor(); }));
    Picture((std::string("theme-") + GetParam().name).c_str());
    LogIn(kMember, {1, 2, 3, 4, 5});
    OpenTab(kTabWhy);
    EXPECT_TRUE(WaitInRealTime([this] { return ListedRights() > 0; }));
    Picture((std::string("rights-theme-") + GetParam().name).c_str());
}

INSTANTIATE_TEST_SUITE_P(Looks, TourThemeTest,
                         Values(Look{"light", zr_ui_theme::Manager::kThemeLight},
                                Look{"dark_blue", zr_ui_theme::Manager::kThemeDarkBlue},
                                Look{"black", zr_ui_theme::Manager::kThemeBlack}),
                         [](const auto& look) { return look.param.name; });

TEST_F(TourTest, ForcesAllEntriesOpen) {
    StartTour();
    LogIn(kNoneOpen, {});
    Choose(kEntryPages[1].name);

    Select("WorkbenchOverride", int(EnEntryOverride::Open));
    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries().size() == kEntryPages.size(); }));
    Click(Child<QAbstractButton>("AIChatEntry2"));
    Picture("forced-open");

    Select("WorkbenchOverride", int(EnEntryOverride::None));
    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries().empty(); }));
}

TEST_F(TourTest, ShowsTheBottomPopupBesideTheNavigation) {
    StartTour();
    const auto* navigation = Child<QWidget>("Navigation");
    const auto isBeside = [&] {
        return IsCardSeen() && Card()->x() > navigation->geometry().right() &&
               Card()->x() < navigation->geometry().right() + 20 && Card()->geometry().bottom() < window->height() &&
               Card()->geometry().top() > window->height() / 2;
    };
    ASSERT_TRUE(WaitInRealTime(isBeside));
    EXPECT_TRUE(WaitInRealTime([this] { return ColoursAt(*Card()) > 200; }));
    Picture("popup");
    const int left = Card()->x();

    Click(Child<QWidget>("NavigationToggle"));
    EXPECT_TRUE(WaitInRealTime([&] { return isBeside() && Card()->x() < left; }));
    Picture("popup-collapsed");

    Click(Child<QWidget>("NavigationToggle"));
    EXPECT_TRUE(WaitInRealTime([&] { return isBeside() && Card()->x() == left; }));
    Choose("market");
    EXPECT_FALSE(IsCardSeen());
}

TEST_F(TourTest, ShowsBannersOnTwoPages) {
    StartTour();
    for (const auto& [page, position] : {std::pair{"market", 7}, std::pair{"alerts", 9}}) {
        Choose(page);
        ASSERT_TRUE(WaitForBanner(position)) << page;
        EXPECT_TRUE(WaitInRealTime([&, place = position] { return ColoursAt(*Banner(place)) > 200; })) << page;
        Picture((std::string("banner-") + page).c_str());
    }

    OpenTab(kTabTraffic);
    Child<QTabWidget>("TrafficTabs")->setCurrentIndex(1);
    const QAbstractItemModel& calls = *Child<QTableView>("HttpTable")->model();
    const auto pictures = [&calls] {
        return calls.match(calls.index(0, 2), Qt::DisplayRole, QStringLiteral("/pictures/"), 1, Qt::MatchStartsWith);
    };
    ASSERT_TRUE(WaitInRealTime([&] { return !pictures().isEmpty(); }));
    Child<QTableView>("HttpTable")->selectRow(pictures()[0].row());
    Picture("ads-pictures");
}

TEST_F(TourTest, ShowsTheStateOfAnAdAndTheReasonOfARefusal) {
    StartTour();
    ASSERT_TRUE(WaitInRealTime([this] { return IsCardSeen(); }));
    OpenTab(kTabWhy);
    Picture("ads-workbench");

    OpenServer("PushPageScroll", "PushesChoice", "PushAdNew");
    // The second of two pushes requests ads too early.
    for (int push = 0; push < 2; ++push) {
        Child<QLabel>("PushAdNewOutcome")->clear();
        Click(Child<QPushButton>("PushAdNewSend"));
        ASSERT_TRUE(WaitInRealTime([this] { return !Child<QLabel>("PushAdNewOutcome")->text().isEmpty(); }));
    }
    Picture("ads-push");
    OpenTab(kTabWhy);

    OpenTab(kTabWhy);
    EXPECT_TRUE(WaitInRealTime([this] { return WorkbenchSays("\u00B7 pause between requests"); }));
    Picture("ads-refused");
}

TEST_F(TourTest, OpensThePanelOfThePopupInItsOwnWindow) {
    StartTour();
    OpenTab(kTabWhy);

    Click(Child<QPushButton>("AdPanelOpen"));
    auto* panel = Child<QWidget>("AdPanelWindow");
    ASSERT_NE(panel, nullptr);
    ASSERT_TRUE(WaitInRealTime([&] { return panel->isActiveWindow(); }));
    Click(panel->findChild<QWidget*>(QStringLiteral("UpdateText")));
    Picture("ads-panel", panel);

    panel->close();
    EXPECT_TRUE(WaitInRealTime([this] { return window->isActiveWindow(); }));
}

TEST_F(TourTest, ListsTheTrafficOfALoginAndDecodesTheReply) {
    StartTour();

    OpenTab(kTabTraffic);
    SelectRow("TrafficTable", 1, "Reply", 2, "20982");
    EXPECT_THAT(Child<QPlainTextEdit>("TrafficDetail")->toPlainText().toStdString(), HasSubstr("scene: "));
    Picture("traffic");

    OpenTab(kTabStore);
    auto* store = Child<QTableView>("StoreTable");
    ASSERT_TRUE(WaitInRealTime([&] { return store->model()->rowCount() > 0; }));
    store->selectRow(store->model()->rowCount() - 1);
    Picture("store");
}

TEST_F(TourTest, EditsTheScenesOfAUserOnTheServer) {
    StartTour();
    OpenLoaded("UserPageScroll", "UserRequestsChoice", "UserAIChat", "UserAIChat.entries");

    Child<QPlainTextEdit>("UserAIChat.entries")->setPlainText(QStringLiteral(R"([{"scene":3,"allOpen":true}])"));
    Picture("scenes-unsaved");
    Click(Child<QPushButton>("UserAIChatSend"));
    ASSERT_TRUE(WaitForText("UserAIChatOutcome", "Saved"));

    LogIn(kAllOpen, {3});
    Picture("scenes-edited");
}

TEST_F(TourTest, LogsInAMemberFromTheUserMenu) {
    StartTour();
    auto* button = Child<QToolButton>("UserMenuButton");
    auto* menu = Child<QMenu>("UserMenu");
    const auto press = [menu](int key, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(menu, &event);
    };

    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    ASSERT_TRUE(WaitInRealTime([menu] { return menu->isVisible(); }));
    Picture("users", menu);
    for (const QChar letter : QStringLiteral("Monthly")) {
        press(0, letter);
    }
    Picture("users-narrowed", menu);
    press(Qt::Key_Return, QStringLiteral("\r"));

    EXPECT_TRUE(WaitInRealTime([this] { return client->UserId() == kMember; }));
    EXPECT_TRUE(WaitForText("UserFact_vipNewerSystem", "the server reports member"));
    OpenTab(kTabWhy);
    EXPECT_TRUE(WaitInRealTime([this] { return ListedRights() > 0; }));
    Child<QLineEdit>("WhySearch")->setText(QStringLiteral("right held"));
    Child<QTableView>("WhyTable")->selectRow(0);
    Picture("rights");
}

TEST_F(TourTest, RefreshesTheRightsOfAMemberAfterAPush) {
    StartTour();
    LogIn(kMember, {1, 2, 3, 4, 5});
    OpenServer("PushPageScroll", "PushesChoice", "PushRights");
    Child<QLineEdit>("PushRights.premiumChange.delaySeconds")->setText(QStringLiteral("1"));

    Click(Child<QPushButton>("PushRightsSend"));

    const auto* tracker = window->findChild<CTracker*>();
    EXPECT_TRUE(WaitInRealTime([&] { return !tracker->State().rights.pushes.empty(); }));
    Picture("rights-push");
    OpenTab(kTabWhy);
    Picture("rights-waiting");
    EXPECT_TRUE(WaitForWhy("Rights", "push \u00B7 good"));
    Picture("rights-refreshed");
}

TEST_F(TourTest, FailsARequestByAFaultAndMovesTheServersClock) {
    StartTour();
    ASSERT_NO_FATAL_FAILURE(SetFault("ReplyFault.error", "7"));
    Picture("faults");
    OpenServer("ClockPageScroll");
    Click(Child<QPushButton>("Clock+1 h"));
    EXPECT_TRUE(WaitForText("ClockOutcome", "The clock is set"));
    EXPECT_EQ(Child<QLineEdit>("Clock.offsetMs")->text(), QStringLiteral("3600000"));
    Picture("clock");

    client->Login(kAllOpen);

    OpenTab(kTabTraffic);
    SelectRow("TrafficTable", 1, "Failed", 5, "7");
    // The fault was for one reply.
    OpenServer("FaultPageScroll");
    EXPECT_TRUE(WaitInRealTime(
        [this] { return Child<QPlainTextEdit>("ReplyFaults.value")->toPlainText() == QLatin1String("{}"); }));
}

TEST_F(TourTest, OpensALinkOfTheNewsAndListsIt) {
    StartTour();
    Choose("news");
    OpenTab(kTabUrls);
    auto* pages = Child<QStackedWidget>("Pages");
    const int before = pages->currentIndex();
    const auto links =
        pages->currentWidget()->findChildren<QPushButton*>(QRegularExpression(QStringLiteral("^NewsLink_")));
    ASSERT_FALSE(links.isEmpty());

    Click(links.first());

    EXPECT_TRUE(WaitInRealTime([this] { return Child<QTableView>("UrlTable")->model()->rowCount() > 0; }));
    EXPECT_TRUE(WaitInRealTime([&] { return pages->currentIndex() != before; }));
    Picture("links");
}

TEST_F(TourTest, ExportsWhatWasRecordedWithoutNamingAUser) {
    StartTour();
    const QString path = folder.filePath(QStringLiteral("workbench.json"));
    Child<QLineEdit>("ExportPath")->setText(path);
    ASSERT_TRUE(WaitInRealTime([this] { return IsWorkbenchSettled(); }));

    Click(Child<QPushButton>("ExportSave"));

    QFile file(path);
    ASSERT_TRUE(WaitInRealTime([&] { return file.open(QIODevice::ReadOnly); }));
    const QString json = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(json.contains(QStringLiteral("user-1")));
    for (const ServerUser& user : client->Users()) {
        // A longer number can contain the id.
        const QRegularExpression id(QStringLiteral("(?<![0-9])%1(?![0-9])").arg(user.id));
        EXPECT_FALSE(json.contains(id) || json.contains(user.name)) << user.name.toStdString();
    }
}

TEST_F(TourTest, ReconnectsToARestartedServer) {
    StartTour();
    const qint64 process = client->Server().ProcessId();
    messages.clear();

    ASSERT_EQ(kill(pid_t(process), SIGKILL), 0);
    EXPECT_TRUE(WaitInRealTime([this] { return !window->StatusLine().IsGood(); }));
    Picture("server-lost");

    EXPECT_TRUE(WaitInRealTime([&] {
        return window->StatusLine().IsGood() && CountOf(10650) > 0 && client->Server().ProcessId() != process;
    }));
    EXPECT_EQ(client->UserId(), kAllOpen);
    EXPECT_EQ(OpenEntries(), std::set<int>({1, 2, 3, 4, 5}));
    Picture("reconnected");
}

TEST_F(TourTest, FiltersTheLogBySourceAndText) {
    StartTour();
    OpenTab(kTabLog);

    Select("LogSource", QStringLiteral("Module"));
    Child<QLineEdit>("LogFilter")->setText(QStringLiteral("entryScene"));

    auto* table = Child<QTableView>("LogTable");
    const QAbstractItemModel& lines = *table->model();
    ASSERT_TRUE(WaitInRealTime([&] { return lines.rowCount() > 0; }));
    for (int row = 0; row < lines.rowCount(); ++row) {
        EXPECT_THAT(lines.index(row, 3).data().toString().toStdString(), HasSubstr("entryScene"));
    }
    table->setCurrentIndex(lines.index(lines.rowCount() - 1, 0));
    EXPECT_FALSE(Child<QPlainTextEdit>("LogDetail")->toPlainText().isEmpty());
    Picture("log-filtered");
}

}  // namespace
