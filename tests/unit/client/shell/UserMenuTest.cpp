#include "UserMenu.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class UserMenuTest : public ScriptedHostTest {
protected:
    UserMenuTest() {
        menu.ShowUsers(users, 10002);
        menu.popup(QPoint(10, 10));
        time.Settle();
    }

    ~UserMenuTest() override { menu.close(); }

    std::vector<std::string> Offered() {
        std::vector<std::string> names;
        for (const QAction* action : menu.actions()) {
            if (action->isVisible() && action->objectName().startsWith(QLatin1String("UserMenuLogin"))) {
                names.push_back(action->text().toStdString());
            }
        }
        return names;
    }

    void Type(const char* text) { QTest::keyClicks(&menu, QString::fromLatin1(text)); }

    const std::vector<ServerUser> users{{10001, QStringLiteral("Ada Free")},
                                        {10002, QStringLiteral("Ben Closed")},
                                        {20003, QStringLiteral("Jade Monthly")},
                                        {20004, QStringLiteral("Kurt MonthlyOff")}};
    CUserMenu menu;
};

}  // namespace

TEST_F(UserMenuTest, WhatIsTypedNarrowsTheUsersAndEnterTakesTheFirst) {
    QSignalSpy wanted(&menu, &CUserMenu::LoginWanted);
    EXPECT_THAT(Offered(), SizeIs(4));

    Type("MONTH");
    EXPECT_THAT(Offered(), ElementsAre("Jade Monthly  20003", "Kurt MonthlyOff  20004"));
    QTest::keyClick(&menu, Qt::Key_Return);

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toULongLong(), 20003u);
}

TEST_F(UserMenuTest, NumbersAndBlanksAreTypedTooAndTakenBack) {
    QSignalSpy wanted(&menu, &CUserMenu::LoginWanted);
    Type("2000");
    EXPECT_THAT(Offered(), SizeIs(2));
    for (int key = 0; key < 4; ++key) {
        QTest::keyClick(&menu, Qt::Key_Backspace);
    }
    EXPECT_THAT(Offered(), SizeIs(4));

    Type("a f");

    EXPECT_THAT(Offered(), ElementsAre("Ada Free  10001"));
    EXPECT_EQ(wanted.count(), 0);
}

TEST_F(UserMenuTest, TheArrowsStillGoThroughTheUsers) {
    QSignalSpy wanted(&menu, &CUserMenu::LoginWanted);
    Type("month");
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);

    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toULongLong(), 20004u);
}

TEST_F(UserMenuTest, NobodyIsLoggedInByAWordThatNobodyHas) {
    QSignalSpy wanted(&menu, &CUserMenu::LoginWanted);
    Type("zz");
    EXPECT_THAT(Offered(), IsEmpty());
    QTest::keyClick(&menu, Qt::Key_Return);

    EXPECT_EQ(wanted.count(), 0);
}

TEST_F(UserMenuTest, EachTimeItOpensAllUsersAreThere) {
    Type("zz");
    menu.close();

    menu.popup(QPoint(10, 10));

    EXPECT_THAT(Offered(), SizeIs(4));
}

TEST_F(UserMenuTest, ShowsWhoIsLoggedInAndLogsOut) {
    QSignalSpy wanted(&menu, &CUserMenu::LogoutWanted);
    auto* logout = menu.findChild<QAction*>(QStringLiteral("UserMenuLogout"));
    EXPECT_TRUE(menu.findChild<QAction*>(QStringLiteral("UserMenuLogin10002"))->isChecked());
    EXPECT_FALSE(menu.findChild<QAction*>(QStringLiteral("UserMenuLogin10001"))->isChecked());
    EXPECT_TRUE(logout->isEnabled());
    logout->trigger();
    EXPECT_EQ(wanted.count(), 1);

    menu.ShowUsers(users, 0);

    EXPECT_FALSE(logout->isEnabled());
    EXPECT_EQ(menu.findChild<QAction*>(QStringLiteral("UserMenuLogin10002"))->isChecked(), false);
}

TEST_F(UserMenuTest, HelpOpensItsPage) {
    links.Set(202019001, "https://help.example/start");
    menu.close();
    menu.popup(QPoint(10, 10));
    auto* help = menu.findChild<QAction*>(QStringLiteral("UserMenuHelp"));
    ASSERT_TRUE(help->isEnabled());

    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, menu.actionGeometry(help).center());

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "https://help.example/start");
}

TEST_F(UserMenuTest, HelpIsDisabledWhileItsLinkIsUnknown) {
    EXPECT_FALSE(menu.findChild<QAction*>(QStringLiteral("UserMenuHelp"))->isEnabled());
}
