#include "KitTest.h"
#include "ui/ZButton.h"
#include "ui/ZFrameLessWnd.h"
#include "ui/ZIconButton.h"
#include "ui/ZLabel.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZText.h"
#include "ui/ZToast.h"

using namespace ::testing;

namespace {

class CPaintCounter : public QObject {
public:
    explicit CPaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    int paints = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

class ThemeOfKitTest : public KitTest {
protected:
    void ExpectPaintedAnew(QWidget* widget) {
        widget->setGeometry(100, 100, 100, 40);
        widget->show();
        time.Settle();
        const CPaintCounter counter(widget);
        time.Settle();
        EXPECT_EQ(counter.paints, 0);

        SetTheme(zr_ui_theme::Manager::kThemeBlack);
        time.Settle();

        EXPECT_EQ(counter.paints, 1);
        SetTheme(zr_ui_theme::Manager::kThemeLight);
        delete widget;
        time.Settle();
    }
};

TEST_F(ThemeOfKitTest, EachWidgetIsPaintedAnewByItselfWhenTheThemeChanges) {
    Show();
    ExpectPaintedAnew(new ZButton(&window));
    ExpectPaintedAnew(new ZFrameLessWnd(&window));
    ExpectPaintedAnew(new ZIconButton(&window));
    ExpectPaintedAnew(new ZLabel(&window));
    ExpectPaintedAnew(new ZRWebImageWidget(&window));
    ExpectPaintedAnew(new ZText(&window));
    ExpectPaintedAnew(new ZToast(&window));
}

}  // namespace
