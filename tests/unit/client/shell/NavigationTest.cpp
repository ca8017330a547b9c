#include "Navigation.h"

#include <QSignalSpy>
#include <QToolButton>
#include <map>

#include "TabPages.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class NavigationTest : public ScriptedHostTest {
protected:
    NavigationTest() {
        navigation.resize(navigation.width(), 500);
        navigation.show();
        time.Settle();
    }

    QToolButton* Button(const std::string& name) const {
        return navigation.findChild<QToolButton*>(QString::fromStdString(name));
    }

    CNavigation navigation;
};

}  // namespace

TEST_F(NavigationTest, EachKeyThatAdsKnowHasItsTab) {
    std::map<int64_t, std::string> names;
    for (const TabPage& tab : kTabPages) {
        names[tab.tab] = tab.page.name;
    }

    EXPECT_THAT(names, ElementsAre(Pair(20001, "watchlist"), Pair(20002, "quotes"), Pair(20003, "research"),
                                   Pair(20004, "news"), Pair(20005, "portfolio"), Pair(20013, "market"),
                                   Pair(20017, "account"), Pair(20018, "alerts")));
    for (const auto& [key, name] : names) {
        const QToolButton* button = Button("NavigationTab_" + name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_FALSE(button->icon().isNull()) << name;
    }
}

TEST_F(NavigationTest, ATabIsChosenByItsPlace) {
    const QSignalSpy chosen(&navigation, &CNavigation::Chosen);

    for (size_t index = 0; index < kTabPages.size(); ++index) {
        Click(Button(std::string("NavigationTab_") + kTabPages[index].page.name));
        ASSERT_EQ(chosen.count(), int(index) + 1);
        EXPECT_EQ(chosen.back()[0].toInt(), int(index));
    }
}

TEST_F(NavigationTest, ItsButtonStandsOverTheIconsWhenItIsCollapsedAndAtTheirLeftOtherwise) {
    EXPECT_EQ(Button("NavigationToggle")->x(), Button("NavigationTab_quotes")->x());

    Click(Button("NavigationToggle"));
    time.Settle();

    EXPECT_NEAR(Button("NavigationToggle")->geometry().center().x(),
                Button("NavigationTab_quotes")->geometry().center().x(), 1);
}

// Modules place overlays at 160 and 84 pixels, just beside the navigation.
TEST_F(NavigationTest, ItCollapsesToItsIconsAndBackAndSaysSoWhenItIsDone) {
    std::vector<int> widths;
    QObject::connect(&navigation, &CNavigation::CollapsedChanged, &navigation, [&] {
        widths.push_back(navigation.IsCollapsed() ? -navigation.maximumWidth() : navigation.maximumWidth());
    });

    Click(Button("NavigationToggle"));
    EXPECT_EQ(Button("NavigationTab_quotes")->toolButtonStyle(), Qt::ToolButtonIconOnly);
    EXPECT_EQ(Button("NavigationTab_quotes")->toolTip(), QStringLiteral("Quotes"));
    time.Settle();
    Click(Button("NavigationToggle"));

    EXPECT_THAT(widths, ElementsAre(-72, 156));
    EXPECT_EQ(Button("NavigationTab_quotes")->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
}
