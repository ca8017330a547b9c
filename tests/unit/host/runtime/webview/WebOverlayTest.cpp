#include "webview/WebOverlay.h"

#include <QPaintEvent>

#include "WebTest.h"
#include "ui/ThemeControl.h"
#include "ui/ThemePalette.h"
#include "ui/ZButton.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;

namespace {

class WebOverlayTest : public WebTest {
protected:
    QWidget* Overlay() const { return widget.findChild<QWidget*>(QStringLiteral("WebOverlay")); }
    QWidget* Text() const { return widget.findChild<QWidget*>(QStringLiteral("WebOverlayText")); }
    QWidget* AtCentre() const { return widget.childAt(widget.rect().center()); }

    void ShowFailure() {
        Show();
        Load("https://ours.test/");
        web.View().Fail();
        time.Settle();
    }

    /// The button looks like one of that style.
    void ExpectStyle(QAbstractButton& button, ZButton::ZrStyle style) {
        ZButton like(button.parentWidget());
        like.setZrStyle(style);
        like.setText(button.text());
        like.resize(button.size());
        button.clearFocus();
        EXPECT_EQ(button.grab().toImage(), like.grab().toImage()) << button.text().toStdString();
    }
};

TEST_F(WebOverlayTest, PartsAreInTheMiddleWithinTheirMargins) {
    ShowFailure();

    const QRect text = Text()->geometry();
    EXPECT_EQ(text.left(), 32);
    EXPECT_EQ(text.right(), 400 - 32 - 1);
    EXPECT_EQ(Retry()->geometry().topLeft(), QPoint(32, text.bottom() + 1 + 16));
    EXPECT_EQ(Browser()->geometry().topLeft(), Retry()->geometry().topRight() + QPoint(1 + 8, 0));
    EXPECT_LT(Browser()->geometry().right(), 400 - 32 - 1);
    const int below = 500 - 1 - Retry()->geometry().bottom();
    EXPECT_NEAR(text.top(), below, 1);
    EXPECT_GT(below, 32);
}

TEST_F(WebOverlayTest, TextWrapsWhenTheWidgetIsNarrow) {
    ShowFailure();
    const int line = Text()->height();

    widget.resize(150, 500);
    time.Settle();

    EXPECT_GE(Text()->height(), 2 * line);
    EXPECT_LT(Text()->geometry().right(), 150);
}

TEST_F(WebOverlayTest, FirstButtonIsFilled) {
    ShowFailure();
    ExpectStyle(*Retry(), ZButton::kFilled);
    ExpectStyle(*Browser(), ZButton::kPlain);
}

TEST_F(WebOverlayTest, BrowserButtonIsFilledWhenItIsTheOnlyOne) {
    web.SetMissing(true);
    Show();
    Load("https://ours.test/");

    EXPECT_THAT(Buttons(), ElementsAre("Open in browser"));
    ExpectStyle(*Browser(), ZButton::kFilled);
}

TEST_F(WebOverlayTest, MessageCoversThePageInTheColourOfTheWindow) {
    ShowFailure();

    EXPECT_EQ(Overlay()->geometry(), widget.rect());
    EXPECT_TRUE(AtCentre() == Overlay() || Overlay()->isAncestorOf(AtCentre()));
    EXPECT_EQ(Overlay()->grab().toImage().pixelColor(5, 5),
              host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color("window"));
    widget.resize(600, 300);
    EXPECT_EQ(Overlay()->geometry(), widget.rect());
}

TEST_F(WebOverlayTest, IndicationCoversAViewThatIsCreatedBelowIt) {
    widget.SetLoadingStatusVisible(true);
    Show();

    Load("https://ours.test/");

    EXPECT_FALSE(Cover().empty());
    EXPECT_THAT(Buttons(), IsEmpty());
    EXPECT_TRUE(AtCentre() == Overlay() || Overlay()->isAncestorOf(AtCentre()));
}

TEST_F(WebOverlayTest, WholeCoverIsPaintedWhenTheThemeChanges) {
    class CWholePaints : public QObject {
    public:
        int count = 0;

    protected:
        bool eventFilter(QObject* watched, QEvent* event) override {
            const auto* painted = event->type() == QEvent::Paint ? static_cast<QPaintEvent*>(event) : nullptr;
            count += painted && painted->rect() == static_cast<QWidget*>(watched)->rect() ? 1 : 0;
            return false;
        }
    };
    ShowFailure();
    CWholePaints paints;
    Overlay()->installEventFilter(&paints);

    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeBlack);
    time.Settle();

    EXPECT_GE(paints.count, 1);
    bus.Forget();
}

TEST_F(WebOverlayTest, MessageTakesNoFocusFromAWidgetBesideThePage) {
    QWidget window;
    QWidget beside(&window);
    beside.setFocusPolicy(Qt::StrongFocus);
    widget.setParent(&window);
    window.resize(500, 600);
    window.show();
    widget.show();
    beside.setFocus();
    time.Settle();

    Load("https://ours.test/");
    web.View().Fail();
    time.Settle();

    EXPECT_EQ(window.focusWidget(), &beside);
    widget.setParent(nullptr);
}

}  // namespace
