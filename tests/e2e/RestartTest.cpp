// The client keeps its choices and its place for the next start, and its window fits into the screen.
#include <QDockWidget>
#include <QScreen>
#include <QScrollArea>
#include <QToolButton>

#include "AdClientFixture.h"
#include "Navigation.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;

namespace {

class RestartTest : public AdClientTest {
protected:
    RestartTest() { options.scenario.clear(); }
    ~RestartTest() override { End(); }

    void Restart() {
        End();
        isComplete = false;
        Start();
    }

    bool IsWithinTheScreen() const { return window->screen()->availableGeometry().contains(window->frameGeometry()); }
};

TEST_F(RestartTest, LanguageThemePageNavigationAndPlaceAreKept) {
    Start();
    client->SetLanguage(7);
    client->SetTheme(3);
    Choose("research");
    ASSERT_TRUE(WaitInRealTime([this] { return Child<QWidget>("Page_research")->isVisible(); }));
    Child<CNavigation>("Navigation")->SetCollapsed(true);
    Click(Child<QToolButton>("WorkbenchToggle"));
    const QRect place(60, 70, 1010, 640);
    window->setGeometry(place);
    ASSERT_TRUE(WaitInRealTime([&] { return window->geometry() == place; }));

    Restart();

    EXPECT_EQ(client->LanguageId(), 7);
    EXPECT_EQ(zr_ui_theme::Manager::instance()->getTheme(), 3);
    EXPECT_TRUE(Child<QWidget>("Page_research")->isVisible());
    EXPECT_TRUE(Child<QToolButton>("NavigationTab_research")->isChecked());
    EXPECT_TRUE(Child<CNavigation>("Navigation")->IsCollapsed());
    EXPECT_FALSE(Child<QDockWidget>("WorkbenchDock")->isVisible());
    EXPECT_FALSE(Child<QToolButton>("WorkbenchToggle")->isChecked());
    EXPECT_TRUE(WaitInRealTime([&] { return window->geometry() == place; }));
}

TEST_F(RestartTest, OptionsWinOverWhatIsKept) {
    Start();
    client->SetLanguage(7);
    client->SetTheme(3);
    options.language = 0;
    options.theme = 1;

    Restart();

    EXPECT_EQ(client->LanguageId(), 0);
    EXPECT_EQ(zr_ui_theme::Manager::instance()->getTheme(), 1);
}

TEST_F(RestartTest, APlaceOnAScreenThatHasGoneIsMovedIntoTheScreen) {
    Start();
    window->setGeometry(window->screen()->geometry().right() + 900, 4000, 5000, 3000);

    Restart();

    EXPECT_TRUE(WaitInRealTime([this] { return IsWithinTheScreen(); }));
}

struct Damage {
    const char* name;
    const char* value;
};

class DamagedWindowTest : public RestartTest, public WithParamInterface<Damage> {};

TEST_P(DamagedWindowTest, LeadsToTheFirstStart) {
    Start();
    End();
    SQLite::Database file(options.dataDir.toStdString() + "/client.sqlite", SQLite::OPEN_READWRITE, 5'000);
    SQLite::Statement update(file, "UPDATE config SET value = ? WHERE key = 'Client_Window'");
    update.bind(1, GetParam().value);
    ASSERT_EQ(update.exec(), 1);

    isComplete = false;
    Start();

    EXPECT_TRUE(Child<QWidget>("Page_watchlist")->isVisible());
    EXPECT_FALSE(Child<CNavigation>("Navigation")->IsCollapsed());
    EXPECT_TRUE(Child<QDockWidget>("WorkbenchDock")->isVisible());
    EXPECT_TRUE(WaitInRealTime([this] { return IsWithinTheScreen(); }));
}

INSTANTIATE_TEST_SUITE_P(Values, DamagedWindowTest,
                         Values(Damage{"empty", ""}, Damage{"no_object", "[7]"},
                                Damage{"no_json", R"({"page":"research","navigationCollapsed":true,"x":2.})"},
                                Damage{"cut", R"({"place":"AdnQ)"},
                                Damage{"other_types", R"({"place":7,"docks":{},"page":[1],"navigationCollapsed":"x"})"},
                                Damage{"strange", R"({"place":"AAAA","docks":"AAAA","page":"nowhere"})"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RestartTest, EachPageIsWholeOrScrolls) {
    Start();
    window->resize(window->minimumSizeHint());

    EXPECT_LE(window->minimumSizeHint().width(), 1280);
    EXPECT_LE(window->minimumSizeHint().height(), 680);
    for (const char* name : {"PageArea", "WorkbenchArea"}) {
        const auto areas = window->findChildren<QScrollArea*>(QString::fromLatin1(name));
        EXPECT_THAT(areas, Not(IsEmpty()));
        for (const auto* area : areas) {
            EXPECT_GE(area->widget()->height(), area->widget()->minimumSizeHint().height());
            EXPECT_GE(area->widget()->width(), area->widget()->minimumSizeHint().width());
        }
    }
}

}  // namespace
