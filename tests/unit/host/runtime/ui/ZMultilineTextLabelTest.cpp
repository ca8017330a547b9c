#include "ui/ZMultilineTextLabel.h"

#include <QTemporaryDir>

#include "KitTest.h"

using namespace ::testing;

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class ZMultilineTextLabelTest : public KitTest {
protected:
    ZMultilineTextLabelTest() {
        label.setLineHeight(16);
        label.resize(200, 64);
    }

    QImage LookAt(const QString& text, Qt::TextFormat format) {
        label.setTextWithFormat(text, format);
        return Look(&label);
    }

    ZMultilineTextLabel label{&window};
};

TEST_F(ZMultilineTextLabelTest, FormatDecidesHowTheTextIsRead) {
    Show();
    const QImage plain = LookAt(S("Words"), Qt::PlainText);
    const QImage markup = LookAt(S("<b>Words</b>"), Qt::PlainText);
    const QImage bold = LookAt(S("<b>Words</b>"), Qt::RichText);
    EXPECT_NE(bold, plain);
    EXPECT_NE(bold, markup);
    EXPECT_EQ(LookAt(S("<b>Words</b>"), Qt::AutoText), bold);
    EXPECT_EQ(LookAt(S("Words"), Qt::AutoText), plain);
    EXPECT_EQ(LookAt(S("Words"), Qt::RichText), plain);

    label.setTextWithFormat(S("<b>Words</b>"), Qt::RichText);
    label.setTextFormat(Qt::PlainText);
    EXPECT_EQ(Look(&label), markup);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.text(), S("<b>Words</b>"));
}

TEST_F(ZMultilineTextLabelTest, TheDefaultsAreAutomaticAndVerticallyCentred) {
    EXPECT_EQ(label.textFormat(), Qt::AutoText);
    Show();
    const QImage look = LookAt(S("H"), Qt::AutoText);
    EXPECT_EQ(Near(look.copy(0, 0, 200, 24), Color("text")), 0);
    EXPECT_GT(Near(look.copy(0, 24, 20, 16), Color("text")), 3);
    EXPECT_EQ(Near(look.copy(0, 40, 200, 24), Color("text")), 0);
}

TEST_F(ZMultilineTextLabelTest, ElidableTextHasAsManyLinesAsFitAndEndsInDots) {
    label.setElidable(true);
    label.setMaximumHeight(32);
    label.resize(100, 32);
    Show();
    const QImage dotted = LookAt(S("HHHHHH HHHHHH HHHHHH HHHHHH HHHHHH HHHHHH"), Qt::PlainText);
    EXPECT_EQ(label.toolTip(), label.text());
    const QString whole = label.text();
    label.setElidable(false);
    const QImage cut = Look(&label);

    EXPECT_NE(cut, dotted);
    EXPECT_EQ(cut.copy(0, 0, 100, 16), dotted.copy(0, 0, 100, 16));
    EXPECT_EQ(label.toolTip(), whole);
}

TEST_F(ZMultilineTextLabelTest, DotsFollowTheLastWholeLetterThatFits) {
    label.setElidable(true);
    label.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    Show();
    label.resize(100, 16);
    const QImage dotted = LookAt(QString(100, QLatin1Char('H')), Qt::PlainText);
    bool found = false;
    for (int letters = 1; letters < 40 && !found; ++letters) {
        label.setElidable(false);
        found = LookAt(QString(letters, QLatin1Char('H')) + QChar(0x2026), Qt::PlainText) == dotted;
        if (found) {
            EXPECT_GT(letters, 5);
        }
    }
    EXPECT_TRUE(found);
}

TEST_F(ZMultilineTextLabelTest, RichTextEndsInDotsToo) {
    label.setElidable(true);
    label.resize(100, 32);
    Show();
    LookAt(S("HHHHHH HHHHHH HHHHHH <b>HHHHHH HHHHHH HHHHHH</b>"), Qt::RichText);
    EXPECT_EQ(label.toolTip(), S("HHHHHH HHHHHH HHHHHH HHHHHH HHHHHH HHHHHH"));
}

TEST_F(ZMultilineTextLabelTest, MarginsReduceTheRoomForTheText) {
    label.setTextWithFormat(S("HHH HHH"), Qt::PlainText);
    const QSize bare = label.sizeHint();
    label.setMargins(QMargins(30, 1, 5, 2));
    EXPECT_EQ(label.sizeHint(), bare + QSize(35, 3));
    label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Show();
    EXPECT_EQ(Count(Look(&label).copy(0, 0, 30, 64), Qt::white), 30 * 64);
    EXPECT_GT(Near(Look(&label).copy(30, 1, 30, 16), Color("text")), 3);
}

TEST_F(ZMultilineTextLabelTest, WordsAreKeptWholeUnlessOneIsWiderThanTheLabel) {
    label.setTextWithFormat(S("HHHH HHHH"), Qt::PlainText);
    const int word = label.sizeHint().width() * 3 / 4;
    EXPECT_EQ(label.heightForWidth(word), 32);
    label.setTextWithFormat(S("HHHHHHHHHHHHHHHHHHHH"), Qt::PlainText);
    EXPECT_GE(label.heightForWidth(word), 48);
    label.setWrapMode(QTextOption::NoWrap);
    EXPECT_EQ(label.heightForWidth(word), 16);
}

TEST_F(ZMultilineTextLabelTest, UnwrappedTextEndsInDotsOnItsLine) {
    label.setWrapMode(QTextOption::NoWrap);
    label.setElidable(true);
    label.resize(60, 64);
    Show();
    LookAt(S("HHHH HHHH HHHH HHHH"), Qt::PlainText);
    EXPECT_EQ(Near(Look(&label).copy(0, 41, 60, 23), Color("text")), 0);
    EXPECT_EQ(Near(Look(&label).copy(0, 0, 60, 24), Color("text")), 0);
    EXPECT_EQ(label.toolTip(), label.text());
}

TEST_F(ZMultilineTextLabelTest, RichTextLoadsNoPicture) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(S("red.png"));
    QImage red(20, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(path));
    Show();

    for (const QString& source : {path, QUrl::fromLocalFile(path).toString()}) {
        const QImage look = LookAt(S("Text <img src=\"%1\">").arg(source), Qt::RichText);
        EXPECT_EQ(Count(look, Qt::red), 0);
        EXPECT_EQ(look, LookAt(S("Text"), Qt::PlainText));
    }
    const QImage styled = LookAt(
        S("<body background=\"%1\"><p style=\"background-image:url(%1)\">Text</p></body>").arg(path), Qt::RichText);
    EXPECT_EQ(Count(styled, Qt::red), 0);
}

TEST_F(ZMultilineTextLabelTest, LinkLooksLikeTextAndLeavesThePressToTheParent) {
    Show();
    const QImage link = LookAt(S("<a href=\"https://x.test/\">Words</a>"), Qt::RichText);
    EXPECT_EQ(link, LookAt(S("Words"), Qt::PlainText));
    label.setTextWithFormat(S("<a href=\"https://x.test/\">Words and more words</a>"), Qt::RichText);

    Press(&label);

    EXPECT_EQ(window.presses, 1);
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(label.hasFocus());
}

TEST_F(ZMultilineTextLabelTest, ColourAndUnderlineOfTheMarkupAreKept) {
    Show();
    EXPECT_GT(Near(LookAt(S("<font color=\"#ff0000\">HHHH</font>"), Qt::RichText), Qt::red), 10);
    EXPECT_NE(LookAt(S("<u>HHHH</u>"), Qt::RichText), LookAt(S("HHHH"), Qt::PlainText));
    EXPECT_NE(LookAt(S("<i>HHHH</i>"), Qt::RichText), LookAt(S("HHHH"), Qt::PlainText));
    EXPECT_NE(LookAt(S("<s>HHHH</s>"), Qt::RichText), LookAt(S("HHHH"), Qt::PlainText));
}

TEST_F(ZMultilineTextLabelTest, BlocksOfTheMarkupBecomeLines) {
    label.setTextWithFormat(S("<h1>One</h1><p>Two</p><table><tr><td>Three</td></tr></table>"), Qt::RichText);
    EXPECT_EQ(label.accessibleName().split(QLatin1Char('\n')).first(), S("One"));
    EXPECT_LE(label.heightForWidth(200), 16 * 6);
    EXPECT_EQ(label.heightForWidth(200) % 16, 0);
}

TEST_F(ZMultilineTextLabelTest, ToolTipOfTheCallerStays) {
    label.setToolTip(S("Mine"));
    label.setElidable(true);
    label.resize(40, 16);
    Show();
    LookAt(S("HHHH HHHH HHHH HHHH"), Qt::PlainText);
    EXPECT_EQ(label.toolTip(), S("Mine"));
}

TEST_F(ZMultilineTextLabelTest, MarkupInATextIsNotReadByTheToolTip) {
    label.setElidable(true);
    label.resize(40, 16);
    Show();
    LookAt(S("a <b>text</b> & more of it"), Qt::PlainText);
    EXPECT_EQ(label.toolTip(), S("<p>a &lt;b&gt;text&lt;/b&gt; &amp; more of it</p>"));
    LookAt(S("short & plain HHHHH"), Qt::PlainText);
    EXPECT_EQ(label.toolTip(), S("short & plain HHHHH"));
}

}  // namespace
