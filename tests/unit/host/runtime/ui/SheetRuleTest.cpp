#include "KitTest.h"
#include "ui/ZButton.h"
#include "ui/ZLabel.h"
#include "ui/ZMultilineText.h"
#include "ui/ZMultilineTextLabel.h"
#include "ui/ZText.h"

using namespace ::testing;

namespace {

const QColor kRed(0xc0, 0x10, 0x10);
const QColor kGreen(0x10, 0x90, 0x10);

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class SheetRuleTest : public KitTest {
protected:
    ~SheetRuleTest() override { qApp->setStyleSheet(QString()); }

    void Polish(QWidget& widget) { widget.style()->polish(&widget); }

    /// Places the widget away from the pointer.
    void Place(QWidget& widget) {
        widget.setGeometry(20, 20, 220, 40);
        widget.show();
    }
};

TEST_F(SheetRuleTest, RuleOfTheNameSetsSizeWeightAndColourOfEachText) {
    qApp->setStyleSheet(S("#Ruled { font-size: 30px; font-weight: 700; color: #c01010; }"));
    ZText text(S("Words"), &window);
    ZLabel label(S("Words"), &window);
    ZMultilineText lines(&window);
    lines.setText(S("Words"));
    ZMultilineTextLabel rich(&window);
    rich.setTextWithFormat(S("Words"), Qt::PlainText);
    KitTest::Show();
    for (QWidget* widget : std::initializer_list<QWidget*>{&text, &label, &lines, &rich}) {
        Place(*widget);
        const QSize plain = widget->sizeHint();
        EXPECT_EQ(Near(Look(widget), kRed), 0) << widget->metaObject()->className();

        widget->setObjectName(S("Ruled"));
        Polish(*widget);

        EXPECT_GT(widget->sizeHint().height(), plain.height() + 10) << widget->metaObject()->className();
        EXPECT_GT(widget->sizeHint().width(), plain.width() + 20) << widget->metaObject()->className();
        EXPECT_GT(Near(Look(widget), kRed), 100) << widget->metaObject()->className();
        widget->hide();
    }
}

TEST_F(SheetRuleTest, WeightOfTheRuleLeavesTheSizeOfTheKit) {
    qApp->setStyleSheet(S("ZText#Heavy { font-weight: 900; }"));
    ZText text(S("Words"), &window);
    const QSize plain = text.sizeHint();
    text.setObjectName(S("Heavy"));
    Polish(text);

    EXPECT_GT(text.sizeHint().width(), plain.width());
    EXPECT_NEAR(text.sizeHint().height(), plain.height(), 1);
}

TEST_F(SheetRuleTest, RuleOfTheNameIsAheadOfTheStyle) {
    qApp->setStyleSheet(S("ZText#Ruled { color: #c01010; }"));
    ZText text(S("Words"), &window);
    text.setObjectName(S("Ruled"));
    text.setZrStyle(ZText::kAccent);
    Place(text);
    KitTest::Show();
    EXPECT_GT(Near(Look(&text), kRed), 10);
    EXPECT_EQ(Near(Look(&text), Color("accent")), 0);
}

TEST_F(SheetRuleTest, NewNameCountsFromTheNextPolishAlsoForAHiddenChild) {
    qApp->setStyleSheet(S("#Small { font-size: 8px; } #Large { font-size: 40px; }"));
    QWidget page(&window);
    page.hide();
    ZText text(S("A line of words"), &page);
    text.setDottable(true);
    text.resize(text.sizeHint());
    ASSERT_FALSE(text.isDotted());

    text.setObjectName(S("Large"));
    Polish(text);
    EXPECT_TRUE(text.isDotted());
    text.setObjectName(S("Small"));
    Polish(text);
    EXPECT_FALSE(text.isDotted());
    EXPECT_LT(text.sizeHint().width(), text.width());
    text.setObjectName(S("Other"));
    Polish(text);
    EXPECT_EQ(text.sizeHint().width(), text.width());
}

TEST_F(SheetRuleTest, GeneralRuleAndApplicationFontLeaveAWidgetWithoutARuleAlone) {
    ZText text(S("Words"), &window);
    Place(text);
    KitTest::Show();
    const QSize size = text.sizeHint();
    const QImage look = Look(&text);

    text.setObjectName(S("Named"));
    qApp->setStyleSheet(
        S("QWidget { font-size: 30px; color: #c01010; } #Other { font-size: 9px; color: red; }"
          "#Named QLabel { color: red; } QWidget#Named::item { color: red; } /* #Named { color: red; } */"));
    EXPECT_EQ(text.sizeHint(), size);
    EXPECT_EQ(Look(&text), look);

    qApp->setStyleSheet(QString());
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPixelSize(40);
    QApplication::setFont(large);
    EXPECT_EQ(text.sizeHint(), size);
    QApplication::setFont(before);
}

TEST_F(SheetRuleTest, GeneralRuleSetsNothingThatTheRuleOfTheNameLeavesOut) {
    ZText text(S("Words"), &window);
    Place(text);
    KitTest::Show();
    const QSize size = text.sizeHint();
    text.setObjectName(S("Named"));

    qApp->setStyleSheet(S("QWidget { font-size: 30px; } ZText#Named { color: #c01010; }"));

    EXPECT_EQ(text.sizeHint(), size);
    EXPECT_GT(Near(Look(&text), kRed), 10);
}

TEST_F(SheetRuleTest, RuleMayStandInTheSheetOfAParentAndInAListOfSelectors) {
    window.setStyleSheet(S("QLabel, QWidget > ZText#Named, #Third { color: #c01010; }"));
    ZText text(S("Words"), &window);
    text.setObjectName(S("Named"));
    Place(text);
    KitTest::Show();
    EXPECT_GT(Near(Look(&text), kRed), 10);
}

TEST_F(SheetRuleTest, RuleForDisabledTextColoursIt) {
    qApp->setStyleSheet(S("#Named { color: #c01010; } #Named:disabled { color: #109010; }"));
    ZText text(S("Words"), &window);
    text.setObjectName(S("Named"));
    text.setEnabled(false);
    Place(text);
    KitTest::Show();
    EXPECT_GT(Near(Look(&text), kGreen), 10);
}

class RuledButtonTest : public SheetRuleTest {
protected:
    RuledButtonTest() {
        button.setObjectName(S("Ruled"));
        Place(button);
    }

    ZButton button{S("Unlock"), &window};
};

TEST_F(RuledButtonTest, BackgroundBorderAndTextComeFromTheRule) {
    qApp->setStyleSheet(S("ZButton#Ruled { background: #eeeeaa; border: 2px solid #109010; color: #c01010; }"));
    KitTest::Show();

    const QImage look = Look(&button);

    EXPECT_EQ(look.pixelColor(6, 6), QColor(0xee, 0xee, 0xaa));
    EXPECT_EQ(look.pixelColor(100, 1), kGreen);
    EXPECT_EQ(look.pixelColor(100, 3), QColor(0xee, 0xee, 0xaa));
    EXPECT_GT(Near(look, kRed), 10);
    EXPECT_EQ(Count(look, Color("button")), 0);
}

TEST_F(RuledButtonTest, IconHasTheColourOfTheText) {
    qApp->setStyleSheet(S("ZButton#Ruled { color: #c01010; }"));
    button.setText(QString());
    button.setIcon(S("icon_blackvip_16_normal"), QSize(16, 16));
    KitTest::Show();
    EXPECT_GT(Count(Look(&button), kRed), 20);
    EXPECT_EQ(Look(&button).pixelColor(6, 6), Color("button"));
}

TEST_F(RuledButtonTest, EachStateHasItsRule) {
    qApp->setStyleSheet(
        S("#Ruled { background: #ffffee; color: #c01010; } #Ruled:hover { background: #eeffee; color: #109010; }"
          "#Ruled:pressed { background: #eeeeff; color: #1010c0; }"
          "#Ruled:disabled { background: #dddddd; color: #808000; }"));
    KitTest::Show();
    EXPECT_EQ(Look(&button).pixelColor(6, 6), QColor(0xff, 0xff, 0xee));
    EXPECT_GT(Near(Look(&button), kRed), 10);

    Hover(&button);
    EXPECT_EQ(Look(&button).pixelColor(6, 6), QColor(0xee, 0xff, 0xee));
    EXPECT_GT(Near(Look(&button), kGreen), 10);

    Press(&button);
    EXPECT_EQ(Look(&button).pixelColor(6, 6), QColor(0xee, 0xee, 0xff));
    EXPECT_GT(Near(Look(&button), QColor(0x10, 0x10, 0xc0)), 10);
    Release(&button);
    Leave();

    button.setEnabled(false);
    EXPECT_EQ(Look(&button).pixelColor(6, 6), QColor(0xdd, 0xdd, 0xdd));
    EXPECT_GT(Near(Look(&button), QColor(0x80, 0x80, 0x00)), 10);
}

TEST_F(RuledButtonTest, RuleOfAStateAloneLeavesThePlateOfTheOthers) {
    qApp->setStyleSheet(S("#Ruled:hover { background: #eeffee; }"));
    KitTest::Show();
    EXPECT_EQ(Look(&button).pixelColor(6, 6), Color("button"));
}

TEST_F(RuledButtonTest, KeepsTheKitsPlateWithoutARuleOfItsName) {
    qApp->setStyleSheet(S("QWidget { background: #eeeeaa; color: #c01010; } #Other { background: #eeeeaa; }"));
    KitTest::Show();
    EXPECT_EQ(Look(&button).pixelColor(6, 6), Color("button"));
    EXPECT_EQ(Near(Look(&button), kRed), 0);
}

TEST_F(RuledButtonTest, SizeAndWeightComeFromTheRule) {
    const QSize before = button.sizeHint();
    qApp->setStyleSheet(S("#Ruled { font-size: 30px; font-weight: 700; }"));
    EXPECT_GT(button.sizeHint().width(), before.width() + 30);
}

}  // namespace
