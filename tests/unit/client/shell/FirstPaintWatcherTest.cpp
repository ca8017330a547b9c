#include "FirstPaintWatcher.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QShowEvent>
#include <QWidget>
#include <optional>

#include "support/ScriptedHostTest.h"

using namespace ::testing;
using std::chrono::milliseconds;

namespace {

/// A child widget, which is painted after the window.
class CPart : public QWidget {
public:
    using QWidget::QWidget;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

class FirstPaintWatcherTest : public ScriptedHostTest {
protected:
    void Watch() {
        frame.emplace(window, [this] {
            ++runs;
            paintsBefore = part.paints;
        });
    }

    QWidget window;
    CPart part{&window};
    std::optional<CFirstPaintWatcher> frame;
    int runs = 0;
    int paintsBefore = 0;
};

}  // namespace

TEST_F(FirstPaintWatcherTest, TheTaskRunsOnceWhenTheFrameIsWhole) {
    Watch();

    window.show();
    EXPECT_EQ(runs, 0);
    time.Settle();

    EXPECT_EQ(runs, 1);
    EXPECT_GT(paintsBefore, 0);
}

TEST_F(FirstPaintWatcherTest, LaterFramesRunNothing) {
    Watch();
    window.show();
    time.Settle();

    window.hide();
    window.show();
    window.repaint();
    time.Advance(milliseconds(3 * CFirstPaintWatcher::kTimeoutMs));

    EXPECT_GT(part.paints, 1);
    EXPECT_EQ(runs, 1);
}

TEST_F(FirstPaintWatcherTest, AWindowThatIsShownAndNotPaintedWaitsNoLongerThanThat) {
    Watch();
    QShowEvent shown;
    QCoreApplication::sendEvent(&window, &shown);

    time.Advance(milliseconds(CFirstPaintWatcher::kTimeoutMs - 1));
    EXPECT_EQ(runs, 0);
    time.Advance(milliseconds(1));

    EXPECT_EQ(runs, 1);
    EXPECT_EQ(part.paints, 0);
}

TEST_F(FirstPaintWatcherTest, AWindowThatIsGoneByThenRunsNothing) {
    Watch();
    QShowEvent shown;
    QCoreApplication::sendEvent(&window, &shown);
    QPaintEvent painted(window.rect());
    QCoreApplication::sendEvent(&window, &painted);

    frame.reset();
    time.Advance(milliseconds(2 * CFirstPaintWatcher::kTimeoutMs));

    EXPECT_EQ(runs, 0);
}
