#include "ui/ZStdTitleBar.h"

#include <QCursor>
#include <QSignalSpy>
#include <QToolTip>

#include "KitTest.h"
#include "ui/ZIconButton.h"

using namespace ::testing;

namespace {

class CBar : public ZStdTitleBar {
public:
    using ZStdTitleBar::closeButton;
    using ZStdTitleBar::ZStdTitleBar;

    QWidget* createCustomWidget() override {
        ++built;
        custom = new QWidget;
        child = new QWidget(custom);
        child->setGeometry(0, 0, 50, 36);
        return custom;
    }
    bool isDraggable(QWidget* widget) override {
        asked.push_back(widget);
        return draggable && ZStdTitleBar::isDraggable(widget);
    }

    int built = 0;
    bool draggable = true;
    QWidget* custom = nullptr;
    QWidget* child = nullptr;
    std::vector<QWidget*> asked;
};

class ZStdTitleBarTest : public KitTest {
protected:
    ZStdTitleBarTest() {
        bar.setGeometry(0, 0, 400, 36);
        bar.initUi();
    }

    ZIconButton* Button(const char* name) const {
        for (auto* button : bar.findChildren<ZIconButton*>()) {
            if (button->accessibleName() == QString::fromUtf8(name)) {
                return button;
            }
        }
        return nullptr;
    }

    void Drag(const QPoint& from, const QPoint& by, Qt::MouseButton button = Qt::LeftButton) {
        const auto send = [&](QEvent::Type type, const QPoint& at, Qt::MouseButtons buttons) {
            const bool moves = type == QEvent::MouseMove;
            QMouseEvent event(type, bar.mapFromGlobal(at), at, moves ? Qt::NoButton : button, buttons, {});
            QCoreApplication::sendEvent(&bar, &event);
        };
        const QPoint start = bar.mapToGlobal(from);
        send(QEvent::MouseButtonPress, start, button);
        send(QEvent::MouseMove, start + by, button);
        send(QEvent::MouseButtonRelease, start + by, {});
        send(QEvent::MouseMove, start + by * 2, Qt::MiddleButton);
    }

    /// The button looks like one with that icon.
    void ExpectIcon(ZIconButton* button, const char* icon) {
        ZIconButton like(button->parentWidget());
        like.setIconButtonSize(QSize(32, 28));
        like.setIconMargins(8);
        like.setSvgIconName(QString::fromLatin1(icon));
        like.resize(32, 28);
        EXPECT_EQ(button->size(), like.size()) << icon;
        EXPECT_EQ(button->grab().toImage(), like.grab().toImage()) << icon;
        EXPECT_FALSE(QImage(button->grab().toImage()).isNull());
    }

    CBar bar{&window};
};

TEST_F(ZStdTitleBarTest, BarIsBuiltOnceWithItsCustomWidgetAndTheCloseButton) {
    bar.initUi();
    Show();

    EXPECT_EQ(bar.built, 1);
    EXPECT_EQ(bar.custom->parentWidget(), &bar);
    EXPECT_EQ(bar.closeButton(), Button("Close"));
    EXPECT_TRUE(Button("Close")->isVisible());
    EXPECT_FALSE(Button("Minimise")->isVisible());
    EXPECT_FALSE(Button("Maximise")->isVisible());
    EXPECT_LE(bar.custom->geometry().right(), Button("Close")->x());
    EXPECT_EQ(Button("Close")->toolTip(), QStringLiteral("Close"));
}

TEST_F(ZStdTitleBarTest, PartsFillTheBarFromLeftToRight) {
    bar.showMaxBtn(true);
    bar.showMinBtn(true);
    Show();
    EXPECT_EQ(Button("Close")->geometry(), QRect(400 - 4 - 32, 4, 32, 28));
    EXPECT_EQ(Button("Maximise")->geometry(), QRect(400 - 4 - 64, 4, 32, 28));
    EXPECT_EQ(Button("Minimise")->geometry(), QRect(400 - 4 - 96, 4, 32, 28));
    EXPECT_EQ(bar.custom->geometry(), QRect(0, 0, 400 - 4 - 96, 36));
}

TEST_F(ZStdTitleBarTest, ButtonsAreAtTheRightOfABarWithoutContent) {
    ZStdTitleBar plain(&window);
    plain.setGeometry(0, 50, 300, 36);
    plain.initUi();
    Show();
    EXPECT_EQ(plain.findChildren<ZIconButton*>().back()->geometry(), QRect(300 - 4 - 32, 4, 32, 28));
}

TEST_F(ZStdTitleBarTest, ButtonsHaveTheirIconsAndNamesInTheLanguage) {
    const std::pair<unsigned int, const char*> names[] = {
        {900012, "R\u00e9duire"}, {900013, "Agrandir"}, {900014, "Restaurer"}, {900015, "Fermer"}};
    for (const auto& [id, name] : names) {
        language.SetText(id, QString::fromUtf8(name));
    }
    CBar french(&window);
    french.setGeometry(0, 50, 400, 36);
    french.initUi();
    french.showMaxBtn(true);
    french.showMinBtn(true);
    Show();
    const auto buttons = french.findChildren<ZIconButton*>();
    ASSERT_EQ(buttons.size(), 3);
    const auto expect = [&](int at, const char* icon, const char* name) {
        ExpectIcon(buttons[at], icon);
        EXPECT_EQ(buttons[at]->accessibleName(), QString::fromUtf8(name));
        EXPECT_EQ(buttons[at]->toolTip(), QString::fromUtf8(name));
    };
    expect(0, "icon_window_minimise_12", "R\u00e9duire");
    expect(1, "icon_window_maximise_12", "Agrandir");
    expect(2, "icon_close_16", "Fermer");
    window.showMaximized();
    french.syncTitleBarButtonStatus();
    expect(1, "icon_window_restore_12", "Restaurer");
    window.showNormal();
}

TEST_F(ZStdTitleBarTest, ToolTipOfAnyWidgetIsHidden) {
    Show();
    QToolTip::showText(window.mapToGlobal(QPoint(5, 5)), QStringLiteral("tip"), &window);
    ASSERT_TRUE(QToolTip::isVisible());
    bar.hideToolTip();
    time.Advance(std::chrono::seconds(1));
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(ZStdTitleBarTest, WindowIsMovedFromThePointerWhenADerivedBarTakesThePress) {
    Show();
    window.move(60, 70);
    QCursor::setPos(100, 90);
    bar.onLeftBtnDown();
    QMouseEvent move(QEvent::MouseMove, QPoint(), QPoint(110, 120), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&bar, &move);
    EXPECT_EQ(window.pos(), QPoint(70, 100));
}

TEST_F(ZStdTitleBarTest, OperationsDoNothingWhenTheBarIsNotBuilt) {
    CBar unbuilt;
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, QPoint(5, 5), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&unbuilt, &doubleClick);
    unbuilt.showMaxBtn(true);
    unbuilt.showMinBtn(true);
    unbuilt.syncTitleBarButtonStatus();
    EXPECT_FALSE(unbuilt.closeButton());
}

TEST_F(ZStdTitleBarTest, ButtonsMinimiseMaximiseRestoreAndClose) {
    bar.showMaxBtn(true);
    bar.showMinBtn(true);
    Show();
    bar.resize(400, 36);

    Click(Button("Maximise"));
    EXPECT_TRUE(window.isMaximized());
    EXPECT_FALSE(window.isMinimized());
    bar.syncTitleBarButtonStatus();
    EXPECT_FALSE(Button("Maximise"));
    Click(Button("Restore"));
    EXPECT_FALSE(window.isMaximized());
    bar.syncTitleBarButtonStatus();
    EXPECT_TRUE(Button("Maximise"));

    Click(Button("Minimise"));
    EXPECT_TRUE(window.isMinimized());
    window.showNormal();
    Click(Button("Close"));
    EXPECT_FALSE(window.isVisible());
    window.show();
}

TEST_F(ZStdTitleBarTest, ButtonsAreHiddenAgain) {
    bar.showMaxBtn(true);
    bar.showMinBtn(true);
    bar.showMaxBtn(false);
    bar.showMinBtn(false);
    Show();
    EXPECT_FALSE(Button("Minimise")->isVisible());
    EXPECT_FALSE(Button("Maximise")->isVisible());
}

TEST_F(ZStdTitleBarTest, WindowIsMovedWhileTheLeftButtonIsDown) {
    Show();
    window.move(60, 70);
    const QPoint before = window.pos();

    Drag({200, 10}, {30, 20});

    EXPECT_EQ(window.pos(), before + QPoint(30, 20));
}

TEST_F(ZStdTitleBarTest, WindowStaysWhenAnotherButtonOrNoDraggableWidgetIsPressed) {
    Show();
    const QPoint before = window.pos();

    Drag({200, 10}, {30, 20}, Qt::RightButton);
    bar.draggable = false;
    Drag({200, 10}, {30, 20});
    EXPECT_EQ(window.pos(), before);
    EXPECT_THAT(bar.asked, ElementsAre(bar.custom));

    bar.asked.clear();
    Drag({10, 10}, {30, 20});
    EXPECT_THAT(bar.asked, ElementsAre(bar.child));
}

TEST_F(ZStdTitleBarTest, ButtonsAreNotDraggableAndOtherWidgetsAre) {
    EXPECT_FALSE(bar.isDraggable(bar.closeButton()));
    EXPECT_TRUE(bar.isDraggable(bar.custom));
    EXPECT_TRUE(bar.isDraggable(&bar));
}

TEST_F(ZStdTitleBarTest, DoubleClickMaximisesOnlyWhenTheButtonIsOffered) {
    Show();
    const auto doubleClick = [this](Qt::MouseButton button) {
        QTest::mouseDClick(window.windowHandle(), button, {}, QPoint(200, 10));
        time.Settle();
    };
    doubleClick(Qt::LeftButton);
    EXPECT_FALSE(window.isMaximized());

    bar.showMaxBtn(true);
    doubleClick(Qt::RightButton);
    EXPECT_FALSE(window.isMaximized());
    doubleClick(Qt::LeftButton);
    EXPECT_TRUE(window.isMaximized());
    window.showNormal();

    bar.draggable = false;
    bar.asked.clear();
    doubleClick(Qt::LeftButton);
    EXPECT_FALSE(window.isMaximized());
    EXPECT_THAT(bar.asked, Each(bar.custom));
}

TEST_F(ZStdTitleBarTest, MaximisedWindowIsNotMoved) {
    Show();
    window.showMaximized();
    time.Settle();
    const QPoint before = window.pos();

    Drag({200, 10}, {30, 20});

    EXPECT_EQ(window.pos(), before);
    window.showNormal();
}

TEST_F(ZStdTitleBarTest, EventsPassTheFilterOfTheBar) {
    QEvent event(QEvent::Paint);
    EXPECT_FALSE(bar.eventFilter(bar.closeButton(), &event));
}

}  // namespace
