#include "ui/ThemeChoice.h"

#include "support/ScriptedHostTest.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;

namespace {

class ThemeChoiceTest : public ScriptedHostTest {
protected:
    static int Theme() { return zr_ui_theme::Manager::instance()->getTheme(); }

    CThemeChoice choice{store};
};

}  // namespace

TEST_F(ThemeChoiceTest, WithoutAChoiceTheHostsThemeStays) {
    choice.Begin(0);

    EXPECT_EQ(Theme(), 2);
}

TEST_F(ThemeChoiceTest, AChosenThemeIsWornAndKeptForTheNextStart) {
    choice.Choose(3);

    EXPECT_EQ(Theme(), 3);
    EXPECT_EQ(store.Int64("Host_Theme"), 3);
}

TEST_F(ThemeChoiceTest, TheNextStartBeginsInTheKeptTheme) {
    store.SetInt64("Host_Theme", 1);

    choice.Begin(0);

    EXPECT_EQ(Theme(), 1);
}

TEST_F(ThemeChoiceTest, AWantedThemeGoesBeforeTheKeptOneAndIsNotKept) {
    store.SetInt64("Host_Theme", 1);

    choice.Begin(3);

    EXPECT_EQ(Theme(), 3);
    EXPECT_EQ(store.Int64("Host_Theme"), 1);
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(ThemeChoiceTest, AKeptNumberThatIsNoThemeIsPassedOver) {
    store.SetInt64("Host_Theme", (int64_t(1) << 32) + 1);

    choice.Begin(0);

    EXPECT_EQ(Theme(), 2);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("There is no theme 4294967297")));
}

TEST_F(ThemeChoiceTest, ANumberThatIsNoThemeIsNotKept) {
    choice.Choose(4);

    EXPECT_EQ(Theme(), 2);
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("There is no theme 4")));
}

TEST_F(ThemeChoiceTest, AThemeThatCantBeKeptIsWornUntilTheEnd) {
    store.RefuseSaves(Failing::Always());

    choice.Choose(1);

    EXPECT_EQ(Theme(), 1);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("The theme 1 could not be kept")));
    store.Forget();
}
