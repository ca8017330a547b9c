#include "KitTest.h"
#include "ui/ZLabel.h"
#include "ui/ZText.h"
#include "ui/ZToast.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

class ZTextTest : public KitTest {
protected:
    void Show() {
        text.resize(text.sizeHint());
        KitTest::Show();
    }

    ZText text{QStringLiteral("A line of words"), &window};
};

TEST_F(ZTextTest, IsPaintedInTheColourOfItsStyle) {
    Show();
    const std::pair<ZText::ZrStyle, const char*> rows[] = {
        {ZText::kBody, "text"}, {ZText::kTitle, "heading"}, {ZText::kSmall, "muted"}, {ZText::kAccent, "accent"}};
    for (const auto& [style, color] : rows) {
        text.setZrStyle(style);
        text.resize(text.sizeHint());
        EXPECT_GT(Near(Look(&text), Color(color)), 20) << color;
    }
    text.setEnabled(false);
    EXPECT_GT(Near(Look(&text), Color("disabled")), 20);
}

TEST_F(ZTextTest, ATitleIsLargerThanABodyAndThatThanASmallText) {
    const int body = text.sizeHint().height();
    text.setZrStyle(ZText::kTitle);
    EXPECT_GT(text.sizeHint().height(), body);
    text.setZrStyle(ZText::kSmall);
    EXPECT_LT(text.sizeHint().height(), body);
}

TEST_F(ZTextTest, IsPlainWhateverItContains) {
    text.setText(QStringLiteral("<b>&amp;</b> &x"));
    const int width = text.sizeHint().width();
    text.setText(QStringLiteral("&"));

    EXPECT_GT(width, 8 * text.sizeHint().width());
    EXPECT_GT(text.sizeHint().width(), 0);
}

TEST_F(ZTextTest, EndsInDotsOnlyWhereItMayAndHasNoRoom) {
    Show();
    text.setDottable(true);
    EXPECT_FALSE(text.isDotted());

    text.resize(text.sizeHint().width() - 1, text.height());
    EXPECT_TRUE(text.isDotted());
    const QImage dotted = Look(&text);

    text.setDottable(false);
    EXPECT_FALSE(text.isDotted());
    EXPECT_NE(Look(&text), dotted);
    text.setDottable(true);
    text.setWordWrap(true);
    EXPECT_FALSE(text.isDotted());
}

TEST_F(ZTextTest, ATextThatMayEndInDotsGivesWay) {
    EXPECT_EQ(text.minimumSizeHint(), text.sizeHint());
    text.setDottable(true);
    EXPECT_LT(text.minimumSizeHint().width(), 20);
}

TEST_F(ZTextTest, LineAsksForAtMost240PixelsAndEndsInDotsBeyond) {
    text.setText(QString(10000, QLatin1Char('w')));
    EXPECT_EQ(text.sizeHint().width(), 240);
    EXPECT_EQ(text.minimumSizeHint().width(), 240);
    Show();
    EXPECT_TRUE(text.isDotted());
    EXPECT_EQ(text.toolTip(), QStringLiteral("<p>%1</p>").arg(text.text()));

    text.setText(QStringLiteral("A line of words"));
    EXPECT_FALSE(text.isDotted());
    EXPECT_EQ(text.toolTip(), QString());
}

TEST_F(ZTextTest, WrappedTextAsksForAtMost240PixelsAndBreaksAWiderWord) {
    text.setWordWrap(true);
    text.setText(QString(100, QLatin1Char('w')));
    EXPECT_EQ(text.sizeHint().width(), 240);
    EXPECT_EQ(text.minimumSizeHint().width(), 240);
    EXPECT_EQ(text.sizeHint().height(), text.heightForWidth(240));
    const int high = text.heightForWidth(240);
    text.setText(QStringLiteral("w"));
    EXPECT_GE(high, 3 * text.heightForWidth(240));
    EXPECT_LT(text.minimumSizeHint().width(), 20);
}

TEST_F(ZTextTest, CutTextIsWholeInItsToolTip) {
    Show();
    EXPECT_EQ(text.toolTip(), QString());
    text.resize(30, text.height());
    EXPECT_EQ(text.toolTip(), text.text());
    text.setWordWrap(true);
    EXPECT_EQ(text.toolTip(), text.text());
    text.resize(400, text.height());
    EXPECT_EQ(text.toolTip(), QString());
}

TEST_F(ZTextTest, WrappedTextIsAsHighAsItsWidthMakesIt) {
    const int line = text.sizeHint().height();
    EXPECT_FALSE(text.hasHeightForWidth());
    EXPECT_EQ(text.heightForWidth(50), -1);

    text.setWordWrap(true);

    EXPECT_TRUE(text.hasHeightForWidth());
    EXPECT_TRUE(text.sizePolicy().hasHeightForWidth());
    EXPECT_LE(text.heightForWidth(1000), line);
    EXPECT_GE(text.heightForWidth(50), 2 * line - 2);
}

TEST_F(ZTextTest, KeepsTheLinesOfAWrappedTextApart) {
    text.setWordWrap(true);
    text.setText(QStringLiteral("one"));
    const int line = text.heightForWidth(300);
    text.setText(QStringLiteral("one\ntwo\nthree"));

    EXPECT_GT(text.heightForWidth(300), 2 * line + line / 2);
    EXPECT_GT(text.sizeHint().height(), 2 * line + line / 2);
}

TEST_F(ZTextTest, TellsItsTextToWhoCannotSee) {
    EXPECT_EQ(text.text(), QStringLiteral("A line of words"));
    EXPECT_EQ(text.accessibleName(), QStringLiteral("A line of words"));
}

TEST_F(ZTextTest, LeavesPressesToTheParentAndTakesNoFocus) {
    Show();

    Press(&text);
    Tab();

    EXPECT_EQ(window.presses, 1);
    EXPECT_FALSE(text.hasFocus());
}

TEST_F(ZTextTest, FollowsTheTheme) {
    Show();
    SetTheme(Manager::kThemeDarkBlue);
    EXPECT_GT(Count(Look(&text), host::CThemePalette::Of(Manager::kThemeDarkBlue).Color("text")), 20);
}

class ZLabelTest : public KitTest {
protected:
    ZLabel label{QStringLiteral("Offline"), &window};
};

TEST_F(ZLabelTest, HasTheColourOfWhatItSaysAndABreathOfItBelow) {
    const std::pair<ZLabel::ZrStyle, const char*> rows[] = {{ZLabel::kWarning, "warning"},
                                                            {ZLabel::kFailure, "down"},
                                                            {ZLabel::kSuccess, "up"},
                                                            {ZLabel::kAccent, "accent"},
                                                            {ZLabel::kNeutral, "muted"}};
    label.resize(label.sizeHint());
    Show();
    for (const auto& [style, color] : rows) {
        label.setZrStyle(style);
        label.setZrBgStyle(ZLabel::kBgNone);
        EXPECT_GT(Near(Look(&label), Color(color)), 10) << color;
        EXPECT_EQ(Look(&label).pixelColor(3, 3), QColor(Qt::white));
        label.setZrBgStyle(ZLabel::kBgTinted);
        const QColor tint = Look(&label).pixelColor(3, 3);
        EXPECT_NE(tint, QColor(Qt::white)) << color;
        EXPECT_GT(tint.lightness(), 200) << color;
    }
}

TEST_F(ZLabelTest, IsAsLargeAsItsTextAndItsMargins) {
    label.setCustomMargin(QMargins(0, 0, 0, 0));
    const QSize bare = label.sizeHint();
    label.setCustomMargin(QMargins(9, 1, 3, 2));

    EXPECT_EQ(label.sizeHint(), bare + QSize(12, 3));
    EXPECT_EQ(label.minimumSizeHint(), label.sizeHint());
    label.setText(QStringLiteral("Offline since noon"));
    EXPECT_GT(label.sizeHint().width(), bare.width() + 12);
    EXPECT_EQ(label.text(), QStringLiteral("Offline since noon"));
}

TEST_F(ZLabelTest, LineAsksForAtMost240PixelsAndEndsInDots) {
    label.setText(QString(10000, QLatin1Char('w')));
    EXPECT_EQ(label.sizeHint().width(), 240);
    label.resize(label.sizeHint());
    Show();
    EXPECT_FALSE(label.toolTip().isEmpty());
    EXPECT_EQ(Near(Look(&label).copy(232, 0, 8, label.height()), Color("muted")), 0);

    label.setText(QStringLiteral("Offline"));
    EXPECT_LT(label.sizeHint().width(), 100);
    EXPECT_EQ(label.toolTip(), QString());
}

TEST_F(ZLabelTest, LeavesPressesToTheParent) {
    label.resize(label.sizeHint());
    Show();

    Press(&label);

    EXPECT_EQ(window.presses, 1);
}

class ZToastTest : public KitTest {
protected:
    void Show(const QString& text, int durationMs = 3000) {
        ZToast::ToastInfo info;
        info.text = text;
        info.durationMs = durationMs;
        toast->showToast(info);
    }

    QPointer<ZToast> toast = new ZToast(&window);
};

TEST_F(ZToastTest, IsNotSeenBeforeItIsShown) {
    KitTest::Show();
    EXPECT_FALSE(toast->isVisible());
}

TEST_F(ZToastTest, LiesOverItsParentInTheMiddleAndGoesByItself) {
    QWidget page(&window);
    page.resize(window.size());
    KitTest::Show();

    Show(QStringLiteral("Activated"));

    ASSERT_TRUE(toast->isVisible());
    EXPECT_EQ(window.childAt(window.width() / 2, 55), &page);  // it takes no presses
    EXPECT_EQ(window.children().last(), toast);
    EXPECT_NEAR(toast->geometry().center().x(), window.rect().center().x(), 1);
    time.Advance(std::chrono::milliseconds(2999));
    EXPECT_TRUE(toast && toast->isVisible());
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_FALSE(toast);
}

TEST_F(ZToastTest, ShowsWhatItSaysInTheColourOfItsStyle) {
    KitTest::Show();
    const std::pair<ZToast::ZrStyle, const char*> rows[] = {
        {ZToast::kSuccess, "up"}, {ZToast::kInfo, "accent"}, {ZToast::kWarning, "warning"}, {ZToast::kFailure, "down"}};
    for (const auto& [style, color] : rows) {
        ZToast::ToastInfo info;
        info.style = style;
        info.text = QStringLiteral("Done");
        toast->showToast(info);
        EXPECT_EQ(Look(toast).pixelColor(20, toast->height() / 2), Color(color)) << color;
        EXPECT_GT(Count(Look(toast), Color("text")), 10);
    }
}

TEST_F(ZToastTest, AnotherWordStandsForItsWholeTime) {
    KitTest::Show();
    Show(QStringLiteral("One"));
    time.Advance(std::chrono::milliseconds(2000));
    const int width = toast->width();

    Show(QStringLiteral("Another, and a longer one"));

    EXPECT_GT(toast->width(), width);
    time.Advance(std::chrono::milliseconds(2999));
    EXPECT_TRUE(toast);
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_FALSE(toast);
}

TEST_F(ZToastTest, StaysInTheMiddleOfAParentThatGrowsAndWrapsInASmallOne) {
    KitTest::Show();
    Show(QStringLiteral("Your membership stands ready to be used from today on"));
    window.resize(800, 300);
    time.Settle();
    const int height = toast->height();
    EXPECT_NEAR(toast->geometry().center().x(), 400, 1);

    window.resize(200, 300);
    time.Settle();

    EXPECT_LE(toast->width(), 200);
    EXPECT_GT(toast->height(), height);
}

TEST_F(ZToastTest, TakesNoPressesAndNoFocus) {
    KitTest::Show();
    Show(QStringLiteral("Activated"));

    Press(toast);
    Tab();

    EXPECT_EQ(window.presses, 1);
    EXPECT_FALSE(toast->hasFocus());
}

TEST_F(ZToastTest, GoesWithItsParent) {
    auto* page = new QWidget(&window);
    QPointer<ZToast> other = new ZToast(page);
    other->showToast({});

    delete page;
    time.Advance(std::chrono::seconds(10));

    EXPECT_FALSE(other);
}

TEST_F(ZToastTest, WithoutAParentItIsNeverSeenAndGoesAllTheSame) {
    QPointer<ZToast> other = new ZToast(nullptr);

    other->showToast({});

    EXPECT_FALSE(other->isVisible());
    time.Advance(std::chrono::seconds(3));
    EXPECT_FALSE(other);
}

}  // namespace
