#include "workbench/Workbench.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>

#include "AIChatEntries.h"
#include "FakeControlClient.h"
#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"

using namespace ::testing;

namespace {

class WorkbenchTest : public ScriptedHostTest {
protected:
    WorkbenchTest() {
        window.setCentralWidget(workbench);
        window.resize(700, 800);
        window.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return window.findChild<Widget*>(QString::fromLatin1(name));
    }

    const std::vector<ServerUser> users{{10001, QStringLiteral("Ada")}, {10002, QStringLiteral("Ben")}};
    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAIChatEntries entries;
    CPremiumRights rights;
    CFakeControlClient server;
    QMainWindow window;
    CWorkbench* workbench = new CWorkbench(entries, rights, server, &window);
};

}  // namespace

TEST_F(WorkbenchTest, TheChosenUserIsLoggedIn) {
    QSignalSpy wanted(workbench, &CWorkbench::LoginWanted);
    workbench->ShowUsers(users, 0);
    EXPECT_EQ(Child<QLabel>("WorkbenchWho")->text(), QStringLiteral("Nobody is logged in"));
    EXPECT_FALSE(Child<QPushButton>("WorkbenchLogout")->isEnabled());

    Child<QComboBox>("WorkbenchUser")->setCurrentIndex(1);
    Click(Child<QPushButton>("WorkbenchLogin"));

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toULongLong(), 10002u);
}

TEST_F(WorkbenchTest, WithoutUsersNobodyCanBeLoggedIn) {
    EXPECT_FALSE(Child<QPushButton>("WorkbenchLogin")->isEnabled());
}

TEST_F(WorkbenchTest, ShowsWhoIsLoggedInAndLogsOut) {
    QSignalSpy wanted(workbench, &CWorkbench::LogoutWanted);

    workbench->ShowUsers(users, 10002);
    EXPECT_EQ(Child<QLabel>("WorkbenchWho")->text(), QStringLiteral("Logged in: Ben (10002)"));
    EXPECT_EQ(Child<QComboBox>("WorkbenchUser")->currentData().toULongLong(), 10002u);
    Click(Child<QPushButton>("WorkbenchLogout"));

    EXPECT_EQ(wanted.count(), 1);
}

TEST_F(WorkbenchTest, ANewListOfUsersLeavesTheChoice) {
    workbench->ShowUsers(users, 10001);
    Child<QComboBox>("WorkbenchUser")->setCurrentIndex(1);

    workbench->ShowUsers(users, 10001);

    EXPECT_EQ(Child<QComboBox>("WorkbenchUser")->currentData().toULongLong(), 10002u);
}

TEST_F(WorkbenchTest, ALanguageIsAskedForByItsNumberAndShownWithoutAskingAgain) {
    QSignalSpy wanted(workbench, &CWorkbench::LanguageWanted);

    workbench->ShowLanguage(5);
    EXPECT_EQ(Child<QComboBox>("WorkbenchLanguage")->currentText(), QStringLiteral("日本語"));
    EXPECT_EQ(wanted.count(), 0);
    Child<QComboBox>("WorkbenchLanguage")->setCurrentIndex(1);

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toInt(), 0);
}

TEST_F(WorkbenchTest, AThemeIsAskedForByItsNumberAndShownWithoutAskingAgain) {
    QSignalSpy wanted(workbench, &CWorkbench::ThemeWanted);

    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeBlack);
    EXPECT_EQ(Child<QComboBox>("WorkbenchTheme")->currentText(), QStringLiteral("Black"));
    EXPECT_EQ(wanted.count(), 0);
    Child<QComboBox>("WorkbenchTheme")->setCurrentIndex(0);

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toInt(), 1);
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
    QSignalSpy wanted(workbench, &CWorkbench::EditionWanted);

    workbench->ShowEdition(true);
    EXPECT_EQ(Child<QComboBox>("WorkbenchEdition")->currentText(), QStringLiteral("Velora"));
    EXPECT_EQ(wanted.count(), 0);
    Child<QComboBox>("WorkbenchEdition")->setCurrentIndex(0);

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_FALSE(wanted[0][0].toBool());
}

TEST_F(WorkbenchTest, MarketsAreReadAsNumbersAndWrongOnesAreNamed) {
    std::vector<std::vector<int>> wanted;
    QObject::connect(workbench, &CWorkbench::MarketsWanted, &window,
                     [&](const std::vector<int>& markets) { wanted.push_back(markets); });

    Child<QLineEdit>("WorkbenchMarkets")->setText(QStringLiteral("5, 1  2"));
    Click(Child<QPushButton>("WorkbenchMarketsApply"));
    Child<QLineEdit>("WorkbenchMarkets")->setText(QStringLiteral("1 x"));
    Click(Child<QPushButton>("WorkbenchMarketsApply"));

    EXPECT_THAT(wanted, ElementsAre(ElementsAre(5, 1, 2)));
    EXPECT_EQ(Child<QLabel>("WorkbenchMarketsNote")->text(), QStringLiteral("No market numbers: x"));
}
