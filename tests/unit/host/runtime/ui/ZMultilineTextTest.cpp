#include "ui/ZMultilineText.h"

#include "KitTest.h"
#include "ui/ZMultilineTextLabel.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

struct Words {
    const char* name;
    QString text;
};

const Words kHostile[] = {
    {"LongWord", QString(10000, QLatin1Char('w'))},
    {"ManyWords", S("word ").repeated(2000)},
    {"Markup", S("<b>bold</b> & <img src='x.png' width=5000> ").repeated(200)},
    {"LineBreaks", S("one\ntwo\r\nthree\rfour\n\n").repeated(400)},
    {"RightToLeft", S("\u0645\u0631\u062d\u0628\u0627 \u0628\u0643 ").repeated(1000)},
    {"Emoji", S("\U0001F600\U0001F468\u200D\U0001F469\u200D\U0001F467 ").repeated(1000)},
    {"ArgumentMarks", S("%1 %2 %n ").repeated(1000)},
};

std::string WordsName(const TestParamInfo<Words>& info) {
    return info.param.name;
}

/// The rows of the picture that are not white, as pairs of first and last.
std::vector<std::pair<int, int>> InkRows(const QImage& image) {
    std::vector<std::pair<int, int>> rows;
    for (int y = 0; y < image.height(); ++y) {
        bool ink = false;
        for (int x = 0; x < image.width() && !ink; ++x) {
            ink = image.pixelColor(x, y).lightness() < 200;
        }
        if (ink && !rows.empty() && rows.back().second == y - 1) {
            rows.back().second = y;
        } else if (ink) {
            rows.emplace_back(y, y);
        }
    }
    return rows;
}

int InkLeft(const QImage& image) {
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(x, y).lightness() < 200) {
                return x;
            }
        }
    }
    return -1;
}

class ZMultilineTextTest : public KitTest {
protected:
    ZMultilineText text{&window};
};

TEST_F(ZMultilineTextTest, LinesHaveTheGivenDistance) {
    text.setText(S("H\nH\nH"));
    text.setLineHeight(30);
    text.resize(100, 100);
    Show();

    const auto rows = InkRows(Look(&text));

    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[1].first - rows[0].first, 30);
    EXPECT_EQ(rows[2].first - rows[1].first, 30);
    EXPECT_EQ(text.heightForWidth(100), 90);
    EXPECT_EQ(text.sizeHint().height(), 90);
}

TEST_F(ZMultilineTextTest, TextBeyondTheMaximumOfLinesEndsInDots) {
    text.setText(S("HHHH HHHH HHHH HHHH HHHH"));
    text.setLineHeight(20);
    text.setMaximumTextLine(2);
    text.resize(60, 200);
    Show();

    EXPECT_EQ(text.heightForWidth(60), 40);
    const QImage dotted = Look(&text);
    ASSERT_EQ(InkRows(dotted.copy(0, 0, 60, 20)).size(), 1u);
    EXPECT_TRUE(InkRows(dotted.copy(0, 40, 60, 160)).empty());
    EXPECT_EQ(text.toolTip(), text.text());
    // The dots are below the middle of the letters, where the second line has nothing else to the right.
    ZMultilineText same(&window);
    same.setText(S("HHHH\nHHHH\u2026"));
    same.setLineHeight(20);
    same.setGeometry(0, 0, 60, 200);
    same.show();
    text.hide();
    EXPECT_EQ(Look(&same), dotted);
}

TEST_F(ZMultilineTextTest, TextThatFitsItsMaximumHasNoDotsAndNoToolTip) {
    text.setText(S("HHHH HHHH"));
    text.setMaximumTextLine(2);
    text.resize(60, 60);
    Show();
    EXPECT_EQ(text.toolTip(), QString());
    const QImage look = Look(&text);
    text.setMaximumTextLine(0);
    EXPECT_EQ(Look(&text), look);
}

TEST_F(ZMultilineTextTest, LinesAreAligned) {
    text.setText(S("HH"));
    text.setLineHeight(20);
    text.resize(200, 100);
    Show();
    EXPECT_LT(InkLeft(Look(&text)), 5);
    EXPECT_LT(InkRows(Look(&text))[0].second, 20);

    text.setAlignment(Qt::AlignCenter);
    EXPECT_NEAR(InkLeft(Look(&text)), 90, 8);
    EXPECT_NEAR(InkRows(Look(&text))[0].first, 45, 4);

    text.setAlignment(Qt::AlignRight | Qt::AlignBottom);
    EXPECT_GT(InkLeft(Look(&text)), 170);
    EXPECT_GT(InkRows(Look(&text))[0].first, 80);
}

TEST_F(ZMultilineTextTest, TextIsAlwaysPlain) {
    text.setText(S("<b>H</b>"));
    EXPECT_EQ(text.text(), S("<b>H</b>"));
    const int width = text.sizeHint().width();
    text.setText(S("H"));
    EXPECT_GT(width, 3 * text.sizeHint().width());
    EXPECT_EQ(text.accessibleName(), S("H"));
}

TEST_F(ZMultilineTextTest, FollowsThemeAndFontAndTakesNoPress) {
    text.setText(S("HHHHHHHH"));
    text.resize(200, 100);
    Show();
    EXPECT_GT(Near(Look(&text), Color("text")), 10);
    text.setEnabled(false);
    EXPECT_GT(Near(Look(&text), Color("disabled")), 10);
    text.setEnabled(true);
    SetTheme(Manager::kThemeDarkBlue);
    EXPECT_GT(Near(Look(&text), Color("text")), 10);

    Press(&text);
    EXPECT_EQ(window.presses, 1);
}

TEST_F(ZMultilineTextTest, LayoutIsRedoneInEachPaintOnlyWhenAsked) {
    text.setText(S("HHHH HHHH HHHH HHHH"));
    text.resize(60, 200);
    text.setMaximumTextLine(2);
    Show();
    const QString own = text.toolTip();
    ASSERT_FALSE(own.isEmpty());
    text.setToolTip(QString());
    Look(&text);
    EXPECT_EQ(text.toolTip(), QString());
}

class WrappedTextTest : public KitTest {};

TEST_F(WrappedTextTest, PrefersItsWholeLineAndAcceptsLess) {
    const QString words = QStringLiteral("word ").repeated(12).trimmed();
    ZMultilineText text(&window);
    text.setText(words);
    ZMultilineTextLabel label(&window);
    label.setTextWithFormat(words, Qt::PlainText);
    for (const QWidget* widget : std::initializer_list<const QWidget*>{&text, &label}) {
        EXPECT_GT(widget->sizeHint().width(), 240);
        EXPECT_LT(widget->minimumSizeHint().width(), 240);
        EXPECT_LT(widget->sizeHint().height(), widget->heightForWidth(240));
    }
}

class HostileTextTest : public KitTest, public WithParamInterface<Words> {};

TEST_P(HostileTextTest, StaysInsideTheWidgetAndDoesNotWidenIt) {
    ZMultilineText text(&window);
    text.setText(GetParam().text);
    text.setMaximumTextLine(2);
    text.setLineHeight(16);
    ZMultilineTextLabel label(&window);
    label.setTextWithFormat(GetParam().text, Qt::AutoText);
    label.setLineHeight(16);
    label.setElidable(true);
    label.setMaximumHeight(32);
    label.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.setGeometry(20, 20, 200, 60);
    label.setGeometry(20, 100, 200, 32);
    Show();
    for (QWidget* widget : std::initializer_list<QWidget*>{&text, &label}) {
        EXPECT_LE(widget->sizeHint().width(), 960);
        EXPECT_LE(widget->minimumSizeHint().width(), 30);
        EXPECT_FALSE(widget->toolTip().isEmpty());
        EXPECT_FALSE(widget->toolTip().contains(S("<img")));
    }
    EXPECT_EQ(text.sizeHint().height(), 32);
    const QImage all = window.grab().toImage();
    EXPECT_FALSE(InkRows(all.copy(20, 20, 200, 32)).empty());
    EXPECT_FALSE(InkRows(all.copy(20, 100, 200, 32)).empty());
    EXPECT_TRUE(InkRows(all.copy(0, 0, 400, 20)).empty());
    EXPECT_TRUE(InkRows(all.copy(220, 0, 180, 300)).empty());
    EXPECT_TRUE(InkRows(all.copy(0, 54, 400, 46)).empty());
    EXPECT_TRUE(InkRows(all.copy(0, 132, 400, 168)).empty());
}

INSTANTIATE_TEST_SUITE_P(All, HostileTextTest, ValuesIn(kHostile), WordsName);

}  // namespace
