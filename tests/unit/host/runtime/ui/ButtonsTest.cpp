#include <QSignalSpy>

#include "KitTest.h"
#include "ui/ZButton.h"
#include "ui/ZIconButton.h"
#include "ui/ZResource.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

class ZIconButtonTest : public KitTest {
protected:
    ZIconButtonTest() {
        button.setSvgIconName(ZResource::icon_blackvip_16_normal);
        button.setIconButtonSize(QSize(24, 24));
        button.setIconMargins(4);
        button.move(100, 100);
    }

    ZIconButton button{&window};
};

TEST_F(ZIconButtonTest, ShowsItsIconInTheColourOfItsStyle) {
    Show();
    const std::pair<ZIconColorStyle::type, const char*> rows[] = {
        {ZIconColorStyle::normal, "muted"},    {ZIconColorStyle::heading, "heading"},
        {ZIconColorStyle::accent, "accent"},   {ZIconColorStyle::onAccent, "onAccent"},
        {ZIconColorStyle::warning, "warning"},
    };
    for (const auto& [style, color] : rows) {
        button.setIconColorStyle(style);
        EXPECT_EQ(Look(&button).pixelColor(12, 12), Color(color)) << color;
    }
}

TEST_F(ZIconButtonTest, NamesACloseButtonForScreenReadersUnlessItHasAName) {
    ZIconButton close, named, other, french;
    named.setAccessibleName(QStringLiteral("Dismiss"));

    close.setSvgIconName(ZResource::icon_close_16);
    named.setSvgIconName(ZResource::icon_close_16);
    other.setSvgIconName(ZResource::icon_premium_crown_16);
    language.SetText(900015, QStringLiteral("Fermer"));
    french.setSvgIconName(ZResource::icon_close_16);

    EXPECT_EQ(close.accessibleName(), QStringLiteral("Close"));
    EXPECT_EQ(named.accessibleName(), QStringLiteral("Dismiss"));
    EXPECT_EQ(other.accessibleName(), QString());
    EXPECT_EQ(french.accessibleName(), QStringLiteral("Fermer"));
}

TEST_F(ZIconButtonTest, KeepsItsMargins) {
    Show();
    EXPECT_EQ(Count(Look(&button).copy(0, 0, 24, 4), Qt::white), 24 * 4);

    button.setIconMargins(0);

    EXPECT_LT(Count(Look(&button).copy(0, 0, 24, 8), Qt::white), 24 * 8);
}

TEST_F(ZIconButtonTest, HasTheFixedSizeThatItWasGiven) {
    button.setIconButtonSize(QSize(32, 20));

    EXPECT_EQ(button.size(), QSize(32, 20));
    EXPECT_EQ(button.sizeHint(), QSize(32, 20));
    EXPECT_EQ(button.minimumSize(), button.maximumSize());
}

TEST_F(ZIconButtonTest, LiesOnAPlateUnderThePointerAndWhenPressed) {
    Show();
    EXPECT_EQ(Look(&button).pixelColor(2, 12), QColor(Qt::white));

    Hover(&button);
    EXPECT_EQ(Look(&button).pixelColor(2, 12), Color("buttonHover"));
    EXPECT_EQ(Look(&button).pixelColor(12, 12), Color("heading"));

    Press(&button);
    EXPECT_EQ(Look(&button).pixelColor(2, 12), Color("buttonPressed"));

    Release(&button);
    Leave();
    EXPECT_EQ(Look(&button).pixelColor(2, 12), QColor(Qt::white));
}

TEST_F(ZIconButtonTest, HasNoPlateWhereNoneIsWanted) {
    button.setHoverBackground(false);
    Show();

    Hover(&button);

    EXPECT_EQ(Look(&button).pixelColor(2, 12), QColor(Qt::white));
    EXPECT_EQ(Look(&button).pixelColor(12, 12), Color("heading"));
}

TEST_F(ZIconButtonTest, IsWhiteOnADarkDiscOverAPicture) {
    button.setIconColorStyle(ZIconColorStyle::onPicture);
    Show();

    EXPECT_EQ(Look(&button).pixelColor(12, 12), QColor(Qt::white));
    const int calm = Look(&button).pixelColor(2, 12).lightness();
    EXPECT_LT(calm, 180);
    EXPECT_EQ(Look(&button).pixelColor(0, 0), QColor(Qt::white));
    Hover(&button);
    EXPECT_LT(Look(&button).pixelColor(2, 12).lightness(), calm);
}

TEST_F(ZIconButtonTest, DiscStaysTheSameUnderThePointerWhenNoHoverBackgroundIsWanted) {
    button.setIconColorStyle(ZIconColorStyle::onPicture);
    button.setHoverBackground(false);
    Show();
    const QImage calm = Look(&button);
    ASSERT_LT(calm.pixelColor(2, 12).lightness(), 180);

    Hover(&button);
    EXPECT_EQ(Look(&button), calm);
    Press(&button);
    EXPECT_EQ(Look(&button), calm);
    Release(&button);

    button.setEnabled(false);
    EXPECT_GT(Look(&button).pixelColor(2, 12).lightness(), calm.pixelColor(2, 12).lightness());
}

TEST_F(ZIconButtonTest, IsPaleAndDeafWhenDisabled) {
    Show();
    QSignalSpy clicked(&button, &ZIconButton::clicked);
    button.setEnabled(false);

    EXPECT_EQ(Look(&button).pixelColor(12, 12), Color("disabled"));
    Press(&button);
    Release(&button);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ZIconButtonTest, ShowsAnotherIconWhenItIsChecked) {
    button.setCheckable(true);
    button.setCheckedSvgIconName(ZResource::icon_close_16);
    Show();
    const QImage before = Look(&button);

    Click(&button);
    Leave();

    EXPECT_TRUE(button.isChecked());
    EXPECT_NE(Look(&button), before);
}

TEST_F(ZIconButtonTest, IsClickedThroughTheWindowAndTakesNoFocusByThat) {
    Show();
    QSignalSpy clicked(&button, &ZIconButton::clicked);

    Click(&button);

    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(window.presses, 0);
    EXPECT_FALSE(button.hasFocus());
}

TEST_F(ZIconButtonTest, TakesTheFocusByTabShowsARingAndIsPressedByTheKeyboard) {
    Show();
    QSignalSpy clicked(&button, &ZIconButton::clicked);
    EXPECT_EQ(Count(Look(&button), Color("focus")), 0);

    Tab();

    EXPECT_TRUE(button.hasFocus());
    EXPECT_GT(Count(Look(&button), Color("focus")), 20);
    QTest::keyClick(window.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(ZIconButtonTest, LeavesTheRightButtonToTheParent) {
    Show();

    Press(&button, Qt::RightButton);

    EXPECT_EQ(window.presses, 1);
}

TEST_F(ZIconButtonTest, FollowsTheThemeByItself) {
    Show();

    SetTheme(Manager::kThemeBlack);

    EXPECT_EQ(Look(&button).pixelColor(12, 12), host::CThemePalette::Of(Manager::kThemeBlack).Color("muted"));
}

TEST_F(ZIconButtonTest, ANameThatIsNotKnownShowsNothingAndIsLogged) {
    Show();

    button.setSvgIconName(QStringLiteral("icon_no_such"));

    EXPECT_EQ(Count(Look(&button), Qt::white), 24 * 24);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZIconButton: there is no drawing \"icon_no_such\"")));
}

class ZButtonTest : public KitTest {
protected:
    ZButtonTest() { button.move(50, 50); }

    void Show() {
        button.resize(button.sizeHint());
        KitTest::Show();
    }

    ZButton button{QStringLiteral("Open account"), &window};
};

TEST_F(ZButtonTest, HasThePlateOfItsStyleInEachState) {
    struct Row {
        ZButton::ZrStyle style;
        const char* normal;
        const char* hover;
        const char* pressed;
        const char* disabled;
    };
    const Row rows[] = {{ZButton::kPlain, "button", "buttonHover", "buttonPressed", "buttonOff"},
                        {ZButton::kFilled, "accentFill", "accentHover", "accentPressed", "buttonOff"},
                        {ZButton::kText, nullptr, "buttonHover", "buttonPressed", nullptr},
                        {ZButton::ZrStyle(7), "vipFill", "vipFillHover", "vipFillPressed", "buttonOff"},
                        {ZButton::ZrStyle(6), "button", "buttonHover", "buttonPressed", "buttonOff"},
                        {ZButton::ZrStyle(-1), "button", "buttonHover", "buttonPressed", "buttonOff"}};
    Show();
    const auto plate = [this] { return Look(&button).pixelColor(6, 6); };
    const auto wanted = [](const char* name) { return name ? Color(name) : QColor(Qt::white); };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.style);
        button.setZrStyle(row.style);
        EXPECT_EQ(plate(), wanted(row.normal));
        Hover(&button);
        EXPECT_EQ(plate(), wanted(row.hover));
        Press(&button);
        EXPECT_EQ(plate(), wanted(row.pressed));
        Release(&button);
        Leave();
        button.setEnabled(false);
        EXPECT_EQ(plate(), wanted(row.disabled));
        button.setEnabled(true);
    }
}

TEST_F(ZButtonTest, IsAsWideAsTextIconSpacingAndPadding) {
    const int textWidth = button.fontMetrics().size(Qt::TextSingleLine, button.text()).width();
    button.setLeftRightPadding(10);
    EXPECT_EQ(button.sizeHint().width(), textWidth + 20);

    button.setIcon(ZResource::icon_close_16, QSize(16, 16));
    button.setIconTextSpacing(4);
    EXPECT_EQ(button.sizeHint().width(), textWidth + 20 + 16 + 4);

    button.setText(QString());
    EXPECT_EQ(button.sizeHint().width(), 20 + 16);
    button.setIcon(QString(), QSize(16, 16));
    EXPECT_EQ(button.sizeHint().width(), 20);
}

TEST_F(ZButtonTest, AsksForLessHeightWhenItIsOfTheStrip) {
    EXPECT_GE(button.sizeHint().height(), 30);
    button.setZrStyle(ZButton::kStrip);
    EXPECT_EQ(int(ZButton::kStrip), 7);
    EXPECT_EQ(button.sizeHint().height(), 24);
    EXPECT_EQ(button.minimumSizeHint(), button.sizeHint());
}

TEST_F(ZButtonTest, ShowsItsIconBeforeItsText) {
    button.setText(QString());
    button.setLeftRightPadding(10);
    button.setIcon(ZResource::icon_blackvip_16_normal, QSize(16, 16));
    Show();

    EXPECT_EQ(Look(&button).pixelColor(18, button.height() / 2), Color("text"));
}

TEST_F(ZButtonTest, EndsInDotsWhereThereIsNoRoom) {
    Show();
    const QImage whole = Look(&button);
    button.resize(50, button.height());

    const QImage cut = Look(&button);

    // Nothing is painted into the padding at either side.
    EXPECT_EQ(Count(cut.copy(3, 8, 9, 14), Color("button")), 9 * 14);
    EXPECT_EQ(Count(cut.copy(38, 8, 9, 14), Color("button")), 9 * 14);
    EXPECT_NE(whole.copy(0, 0, 50, whole.height()), cut);
}

TEST_F(ZButtonTest, AsksForAtMost240PixelsAndHasItsWholeTextAsToolTipBeyond) {
    button.setText(QString(10000, QLatin1Char('w')));
    EXPECT_EQ(button.sizeHint().width(), 240);
    EXPECT_EQ(button.minimumSizeHint().width(), 240);
    Show();
    Look(&button);
    EXPECT_EQ(button.toolTip(), QStringLiteral("<p>%1</p>").arg(button.text()));

    button.setText(QStringLiteral("<b>Open</b> & close"));
    Look(&button);
    EXPECT_EQ(button.toolTip(), QString());
    button.resize(60, button.height());
    Look(&button);
    EXPECT_EQ(button.toolTip(), QStringLiteral("<p>&lt;b&gt;Open&lt;/b&gt; &amp; close</p>"));
}

TEST_F(ZButtonTest, IsClickedThroughTheWindowAndTakesTheFocusByTabAlone) {
    Show();
    QSignalSpy clicked(&button, &ZButton::clicked);

    Click(&button);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_FALSE(button.hasFocus());
    EXPECT_EQ(Count(Look(&button), Color("focus")), 0);

    Tab();
    EXPECT_TRUE(button.hasFocus());
    EXPECT_GT(Count(Look(&button), Color("focus")), 40);
}

TEST_F(ZButtonTest, AFilledOneShowsItsFocusInEachTheme) {
    button.setZrStyle(ZButton::kFilled);
    Show();
    for (const auto theme : host::CThemeControl::kThemes) {
        SetTheme(theme);
        holder.setFocus();
        const int before = Near(Look(&button), Color("onAccent"));
        Tab();
        EXPECT_GT(Near(Look(&button), Color("onAccent")), before + 80) << theme;
    }
}

TEST_F(ZButtonTest, TakesTheWidthOfItsTextOrOfItsLayout) {
    EXPECT_EQ(button.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    button.setWidthType(ZButton::kWidthOfLayout);
    EXPECT_EQ(button.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    button.setWidthType(ZButton::kWidthOfText);
    EXPECT_EQ(button.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
}

TEST_F(ZButtonTest, FollowsTheTheme) {
    Show();
    SetTheme(Manager::kThemeDarkBlue);

    EXPECT_EQ(Look(&button).pixelColor(6, 6), host::CThemePalette::Of(Manager::kThemeDarkBlue).Color("button"));
}

TEST_F(ZButtonTest, AnIconThatIsNotKnownIsLoggedAndTakesNoRoom) {
    const int before = button.sizeHint().width();

    button.setIcon(QStringLiteral("nothing"), QSize(16, 16));

    EXPECT_EQ(button.sizeHint().width(), before);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZButton: there is no drawing \"nothing\"")));
}

}  // namespace
