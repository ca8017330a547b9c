#include "ui/ZFrameLessWnd.h"

#include <QMouseEvent>
#include <QPointer>

#include "KitTest.h"
#include "ui/ZIconButton.h"
#include "ui/ZStdTitleBar.h"

using namespace ::testing;

namespace {

class ZFrameLessWndTest : public KitTest {
protected:
    ZFrameLessWndTest() {
        frame.setMinimumSize(150, 120);
        frame.setGeometry(100, 100, 300, 200);
        frame.setTitleBar(bar);
        frame.setContentWidget(content);
    }

    void ShowFrame() {
        frame.show();
        time.Settle();
    }

    void Send(QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, frame.mapFromGlobal(at), at, button, buttons, {});
        QCoreApplication::sendEvent(&frame, &event);
    }

    /// Drags from a point of the window and returns the window's place afterwards.
    QRect Dragged(const QPoint& from, const QPoint& by, Qt::MouseButton button = Qt::LeftButton) {
        const QPoint start = frame.mapToGlobal(from);
        Send(QEvent::MouseButtonPress, start, button, button);
        Send(QEvent::MouseMove, start + by, Qt::NoButton, button);
        Send(QEvent::MouseButtonRelease, start + by, button, {});
        Send(QEvent::MouseMove, start + by * 2, Qt::NoButton, {});
        const QRect place = frame.geometry();
        frame.setGeometry(100, 100, 300, 200);
        return place;
    }

    Qt::CursorShape CursorAt(const QPoint& point) {
        Send(QEvent::MouseMove, frame.mapToGlobal(point), Qt::NoButton, {});
        return frame.cursor().shape();
    }

    ZFrameLessWnd frame;
    ZStdTitleBar* bar = new ZStdTitleBar;
    QWidget* content = new QWidget;
};

TEST_F(ZFrameLessWndTest, TitleBarIsAboveTheContentInsideOfTheEdge) {
    ShowFrame();
    EXPECT_TRUE(frame.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(bar->geometry(), QRect(5, 5, 290, 36));
    EXPECT_EQ(content->geometry(), QRect(5, 41, 290, 154));
}

TEST_F(ZFrameLessWndTest, PartsAreReplacedWhenOthersAreSet) {
    const QPointer<QWidget> oldBar = bar;
    const QPointer<QWidget> oldContent = content;
    frame.setTitleBar(bar);
    frame.setContentWidget(content);
    ASSERT_TRUE(oldBar);
    ASSERT_TRUE(oldContent);

    auto* newContent = new QWidget;
    frame.setContentWidget(newContent);
    auto* newBar = new ZStdTitleBar;
    frame.setTitleBar(newBar);
    EXPECT_FALSE(oldBar);
    EXPECT_FALSE(oldContent);
    ShowFrame();
    EXPECT_LT(newBar->y(), newContent->y());

    frame.setTitleBar(nullptr);
    frame.setContentWidget(nullptr);
    frame.showMaxBtn(true);
    frame.showMinBtn(true);
    EXPECT_TRUE(frame.findChildren<ZStdTitleBar*>().isEmpty());
}

TEST_F(ZFrameLessWndTest, ButtonsOfTheTitleBarAreShownAndHidden) {
    const auto shown = [this] {
        int count = 0;
        for (const auto* button : bar->findChildren<ZIconButton*>()) {
            count += button->isHidden() ? 0 : 1;
        }
        return count;
    };
    EXPECT_EQ(shown(), 1);
    frame.showMaxBtn(true);
    EXPECT_EQ(shown(), 2);
    frame.showMinBtn(true);
    EXPECT_EQ(shown(), 3);
    frame.showMaxBtn(false);
    frame.showMinBtn(false);
    EXPECT_EQ(shown(), 1);
}

TEST_F(ZFrameLessWndTest, EdgesResizeTheWindowByTheTable) {
    struct Row {
        QPoint from;
        QRect place;
    };
    const QPoint by(10, 20);
    const Row rows[] = {
        {{2, 100}, QRect(QPoint(110, 100), QPoint(399, 299))},  {{297, 100}, QRect(QPoint(100, 100), QPoint(409, 299))},
        {{150, 2}, QRect(QPoint(100, 120), QPoint(399, 299))},  {{150, 197}, QRect(QPoint(100, 100), QPoint(399, 319))},
        {{2, 2}, QRect(QPoint(110, 120), QPoint(399, 299))},    {{297, 197}, QRect(QPoint(100, 100), QPoint(409, 319))},
        {{297, 2}, QRect(QPoint(100, 120), QPoint(409, 299))},  {{2, 197}, QRect(QPoint(110, 100), QPoint(399, 319))},
        {{150, 100}, QRect(QPoint(100, 100), QPoint(399, 299))}};
    ShowFrame();
    for (const Row& row : rows) {
        EXPECT_EQ(Dragged(row.from, by), row.place) << row.from.x() << ',' << row.from.y();
    }
    EXPECT_EQ(Dragged({2, 100}, by, Qt::RightButton), QRect(100, 100, 300, 200));
}

TEST_F(ZFrameLessWndTest, WindowKeepsItsMinimumAndItsOppositeEdgeWhenResized) {
    ShowFrame();
    EXPECT_EQ(Dragged({2, 2}, {1000, 1000}), QRect(QPoint(250, 180), QPoint(399, 299)));
    EXPECT_EQ(Dragged({297, 197}, {-1000, -1000}), QRect(100, 100, 150, 120));
}

TEST_F(ZFrameLessWndTest, CursorIsThatOfTheEdge) {
    ShowFrame();
    EXPECT_EQ(CursorAt({4, 100}), Qt::SizeHorCursor);
    EXPECT_EQ(CursorAt({295, 100}), Qt::SizeHorCursor);
    EXPECT_EQ(CursorAt({150, 4}), Qt::SizeVerCursor);
    EXPECT_EQ(CursorAt({150, 195}), Qt::SizeVerCursor);
    EXPECT_EQ(CursorAt({1, 1}), Qt::SizeFDiagCursor);
    EXPECT_EQ(CursorAt({299, 199}), Qt::SizeFDiagCursor);
    EXPECT_EQ(CursorAt({299, 1}), Qt::SizeBDiagCursor);
    EXPECT_EQ(CursorAt({1, 199}), Qt::SizeBDiagCursor);
    EXPECT_EQ(CursorAt({5, 100}), Qt::ArrowCursor);
    EXPECT_EQ(CursorAt({294, 100}), Qt::ArrowCursor);
    EXPECT_EQ(CursorAt({150, 5}), Qt::ArrowCursor);
    EXPECT_EQ(CursorAt({150, 194}), Qt::ArrowCursor);
}

TEST_F(ZFrameLessWndTest, PartsHaveTheirOwnCursorWhenThePointerCameOverAnEdge) {
    ShowFrame();
    ASSERT_EQ(CursorAt({150, 4}), Qt::SizeVerCursor);

    EXPECT_EQ(bar->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(content->cursor().shape(), Qt::ArrowCursor);

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&frame, &leave);
    EXPECT_EQ(frame.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ZFrameLessWndTest, MaximisedWindowHasNoEdgeAndOffersToRestore) {
    frame.showMaxBtn(true);
    ShowFrame();
    frame.showMaximized();
    time.Settle();
    EXPECT_EQ(bar->pos(), QPoint(0, 0));
    EXPECT_EQ(CursorAt({1, 1}), Qt::ArrowCursor);
    const auto buttons = bar->findChildren<ZIconButton*>();
    EXPECT_TRUE(std::any_of(buttons.begin(), buttons.end(),
                            [](const auto* button) { return button->accessibleName() == QLatin1String("Restore"); }));
    frame.showNormal();
    time.Settle();
    EXPECT_EQ(bar->pos(), QPoint(5, 5));
}

TEST_F(ZFrameLessWndTest, WindowOnTheFullScreenHasNoEdge) {
    ShowFrame();
    frame.showFullScreen();
    time.Settle();
    EXPECT_EQ(bar->pos(), QPoint(0, 0));
    EXPECT_EQ(CursorAt({1, 1}), Qt::ArrowCursor);
}

TEST_F(ZFrameLessWndTest, UpdateLayoutPlacesThePartsAtOnce) {
    ShowFrame();
    bar->setFixedHeight(50);
    EXPECT_EQ(content->y(), 41);
    frame.updateLayout();
    EXPECT_EQ(content->y(), 55);
}

TEST_F(ZFrameLessWndTest, WindowIsPaintedInTheColoursOfTheTheme) {
    ShowFrame();
    const auto pixel = [this](int x, int y) { return frame.grab().toImage().pixelColor(x, y); };
    EXPECT_EQ(pixel(2, 100), Color("surface"));
    EXPECT_EQ(pixel(0, 100), Color("border"));
    EXPECT_EQ(pixel(150, 0), Color("border"));
    EXPECT_EQ(pixel(299, 100), Color("border"));
    EXPECT_EQ(pixel(150, 199), Color("border"));
}

}  // namespace
