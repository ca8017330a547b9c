#include "ui/ZDialogBase.h"

#include <QKeyEvent>
#include <QScreen>

#include "KitTest.h"

using namespace ::testing;

namespace {

class ZDialogBaseTest : public KitTest {
protected:
    // Frames of windows differ between platforms.
    ZDialogBaseTest() {
        dialog.setWindowFlag(Qt::FramelessWindowHint);
        dialog.resize(200, 100);
    }

    void ShowDialog() {
        dialog.show();
        time.Settle();
    }

    ZDialogBase dialog;
};

TEST_F(ZDialogBaseTest, DialogIsAHiddenWindowWhenItIsNew) {
    ZDialogBase child(&window);
    EXPECT_TRUE(child.isWindow());
    EXPECT_EQ(child.parentWidget(), &window);
    EXPECT_TRUE(child.isHidden());
}

TEST_F(ZDialogBaseTest, TopMostChangesNothingElseWhenTheWindowIsVisible) {
    dialog.setWindowOpacity(0.001);
    ShowDialog();
    dialog.move(31, 41);
    QWindow* const handle = dialog.windowHandle();
    const Qt::WindowFlags flags = dialog.windowFlags();
    const Qt::WindowFlags nativeFlags = handle->flags();

    dialog.setTopMost(true);
    EXPECT_TRUE(dialog.isTopMost());
    EXPECT_TRUE(handle->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.windowHandle(), handle);
    EXPECT_EQ(dialog.pos(), QPoint(31, 41));
    EXPECT_EQ(handle->opacity(), 0.001);

    dialog.setKeepTop(false);
    EXPECT_FALSE(dialog.isTopMost());
    EXPECT_EQ(dialog.windowFlags(), flags);
    EXPECT_EQ(handle->flags(), nativeFlags);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(ZDialogBaseTest, TopMostAppliesToANativeWindowThatIsCreatedLater) {
    dialog.setTopMost(true);
    EXPECT_TRUE(dialog.isHidden());
    ShowDialog();
    EXPECT_TRUE(dialog.windowHandle()->flags() & Qt::WindowStaysOnTopHint);
}

TEST_F(ZDialogBaseTest, OpacityIsExactBeforeAndAfterTheNativeWindowIsCreated) {
    EXPECT_EQ(dialog.exactWindowOpacity(), 1.0);
    dialog.setWindowOpacity(0.001);
    EXPECT_EQ(dialog.exactWindowOpacity(), 0.001);
    ShowDialog();
    EXPECT_EQ(dialog.windowHandle()->opacity(), 0.001);

    dialog.setWindowOpacity(1.0);
    EXPECT_EQ(dialog.windowHandle()->opacity(), 1.0);
    dialog.setWindowOpacity(0.002);
    EXPECT_EQ(dialog.windowHandle()->opacity(), 0.002);
    EXPECT_EQ(dialog.windowOpacity(), 0.0);
    dialog.hide();
    ShowDialog();
    EXPECT_EQ(dialog.windowHandle()->opacity(), 0.002);
}

TEST_F(ZDialogBaseTest, OpacityIsLimitedToItsRange) {
    dialog.setWindowOpacity(-1);
    EXPECT_EQ(dialog.exactWindowOpacity(), 0.0);
    dialog.setWindowOpacity(2);
    EXPECT_EQ(dialog.exactWindowOpacity(), 1.0);
}

TEST_F(ZDialogBaseTest, DialogIsCentredOverTheWindowOfTheOtherWidget) {
    window.setGeometry(100, 100, 400, 300);
    Show();
    dialog.showCenter(&holder, QSize(-1, -1));

    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.size(), QSize(200, 100));
    EXPECT_EQ(dialog.geometry().center(), window.frameGeometry().center());
}

TEST_F(ZDialogBaseTest, DialogTakesTheSizeWhenThatIsValid) {
    dialog.showCenter(nullptr, QSize(300, 200));

    EXPECT_EQ(dialog.size(), QSize(300, 200));
    EXPECT_EQ(dialog.geometry().center(), dialog.screen()->availableGeometry().center());
}

TEST_F(ZDialogBaseTest, DialogStaysOnTheScreenWhenTheOtherWindowIsAtItsEdge) {
    const QRect screen = dialog.screen()->availableGeometry();
    for (const QPoint& corner : {screen.topLeft(), screen.bottomRight() - QPoint(20, 20)}) {
        window.setGeometry(QRect(corner, QSize(20, 20)));
        Show();
        dialog.showCenter(&window, QSize(-1, -1));
        EXPECT_TRUE(screen.contains(dialog.geometry())) << corner.x();
        dialog.hide();
    }
    dialog.showCenter(nullptr, screen.size() * 2);
    EXPECT_EQ(dialog.pos(), screen.topLeft());
}

TEST_F(ZDialogBaseTest, ShowLeavesTheDialogWhereItIs) {
    dialog.move(31, 41);
    ShowDialog();
    EXPECT_EQ(dialog.pos(), QPoint(31, 41));
}

TEST_F(ZDialogBaseTest, EscapeClosesTheDialogAndOtherKeysDoNot) {
    ShowDialog();
    QTest::keyClick(&dialog, Qt::Key_A);
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ZDialogBaseTest, OtherKeysAreLeftToTheParent) {
    for (const auto& [key, taken] : {std::pair(Qt::Key_A, false), std::pair(Qt::Key_Escape, true)}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&dialog, &event);
        EXPECT_EQ(event.isAccepted(), taken) << key;
    }
}

TEST_F(ZDialogBaseTest, NativeWindowIsCreatedForAVisibleWindowOnly) {
    dialog.hide();
    EXPECT_FALSE(dialog.windowHandle());
    Show();
    dialog.setParent(&window);
    ShowDialog();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.windowHandle());
    dialog.setParent(nullptr);
}

TEST_F(ZDialogBaseTest, TitleIsThatOfTheWindow) {
    dialog.setWindowTitleText(QStringLiteral("Title"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Title"));
}

}  // namespace
