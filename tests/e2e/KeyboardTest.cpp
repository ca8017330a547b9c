// Keyboard and screen reader: each enabled control of each page can be reached, seen, used and named. Tags, exclusive
// masks and ad pictures take the mouse alone and accept no focus.
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include "AdPanelWindow.h"
#include "PremiumRights.h"
#include "VipClientFixture.h"
#include "VipGallery.h"

using namespace ::testing;

namespace {

constexpr int kMaxStops = 2'000;
constexpr size_t kMinStops = 5;  // two toggles, the user menu, the navigation, and one of the page

class KeyboardTest : public VipClientTest {
protected:
    ~KeyboardTest() override { End(); }

    void Begin(quint64 user) {
        LogIn(user);
        if (Child<QWidget>("WorkbenchDock")->isVisible()) {
            Click(Child<QToolButton>("WorkbenchToggle"));
        }
        ASSERT_TRUE(WaitInRealTime([this] { return window->isActiveWindow(); }));
    }

    static std::string NameOf(const QWidget* widget) {
        return std::string(widget->metaObject()->className()) + " \"" + widget->objectName().toStdString() + '"';
    }

    // Arrow keys move within the navigation, which has one stop.
    static bool HasItsOwnStop(const QWidget* widget) {
        return !widget->objectName().startsWith(QLatin1String("NavigationTab_"));
    }

    static std::set<QWidget*> Controls(const QWidget& top) {
        std::set<QWidget*> controls;
        for (auto* widget : top.findChildren<QWidget*>()) {
            const bool isControl = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                                   qobject_cast<QLineEdit*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
                                   widget->focusPolicy() != Qt::NoFocus;
            const bool isHeader = widget->inherits("QHeaderView") || widget->inherits("QTableCornerButton");
            if (isControl && !isHeader && widget->isVisible() && widget->isEnabled() && widget->window() == &top &&
                HasItsOwnStop(widget)) {
                controls.insert(widget);
            }
        }
        return controls;
    }

    void Press(Qt::Key key) { QTest::keyClick(QApplication::activeWindow()->windowHandle(), key); }

    /// Returns what the focus comes to with Tab, until it comes to the first one again.
    std::vector<QWidget*> Stops() {
        std::vector<QWidget*> stops;
        for (int count = 0; count < kMaxStops; ++count) {
            Press(Qt::Key_Tab);
            QWidget* focus = QApplication::focusWidget();
            if (!focus || std::find(stops.begin(), stops.end(), focus) != stops.end()) {
                break;
            }
            stops.push_back(focus);
        }
        return stops;
    }

    static void CheckNamed(QWidget* widget) {
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(reader, nullptr) << NameOf(widget);
        EXPECT_FALSE(reader->text(QAccessible::Name).trimmed().isEmpty()) << NameOf(widget);
        EXPECT_NE(reader->role(), QAccessible::NoRole) << NameOf(widget);
        // An area that is scrolled by keys has no role but this.
        EXPECT_TRUE(reader->role() != QAccessible::Client || qobject_cast<QScrollArea*>(widget)) << NameOf(widget);
    }

    static QImage Look(QWidget* widget) { return widget->grab().toImage(); }

    void CheckUsable(QWidget* widget) {
        auto* button = qobject_cast<QAbstractButton*>(widget);
        if (!button) {
            return;
        }
        bool pressed = false;
        const auto connection = QObject::connect(button, &QAbstractButton::pressed, [&] { pressed = true; });
        QTimer::singleShot(0, button, [] {
            if (auto* popup = QApplication::activePopupWidget()) {
                popup->close();
            }
        });
        QWindow* handle = widget->window()->windowHandle();
        QTest::keyPress(handle, Qt::Key_Space);
        QObject::disconnect(connection);
        EXPECT_TRUE(pressed) << NameOf(widget);
        // The control stays as it is: a release without the press clicks nothing.
        button->setDown(false);
        QTest::keyRelease(handle, Qt::Key_Space);
    }

    void CheckPage(const char* page) {
        Choose(page);
        ASSERT_TRUE(WaitInRealTime([&] { return Child<QWidget>((std::string("Page_") + page).c_str())->isVisible(); }));
        CheckWindow(*window);
    }

    void CheckWindow(const QWidget& top, size_t minStops = kMinStops) {
        const std::vector<QWidget*> stops = Stops();
        EXPECT_GE(stops.size(), minStops);
        for (QWidget* control : Controls(top)) {
            EXPECT_TRUE(std::find(stops.begin(), stops.end(), control) != stops.end()) << NameOf(control);
        }
        for (QWidget* stop : stops) {
            SCOPED_TRACE(NameOf(stop));
            EXPECT_TRUE(stop->isVisible());
            CheckNamed(stop);
            stop->setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(WaitInRealTime([&] { return stop->hasFocus(); }));
            const QImage focused = Look(stop);
            CheckUsable(stop);
            stop->clearFocus();
            EXPECT_FALSE(Look(stop) == focused) << "the focus is not visible";
        }
    }
};

class KeyboardPagesTest : public KeyboardTest, public WithParamInterface<quint64> {};

TEST_P(KeyboardPagesTest, EachControlIsReachedSeenUsedAndNamed) {
    Begin(GetParam());

    for (const TabPage& page : kTabPages) {
        SCOPED_TRACE(page.page.name);
        CheckPage(page.page.name);
    }
}

/// The workbench at the size of a small screen.
class KeyboardWorkbenchTest : public KeyboardTest {
protected:
    void BeginSmall() {
        LogIn(20001);
        window->resize(1280, 720);
        ASSERT_TRUE(WaitInRealTime([this] { return window->isActiveWindow() && window->height() == 720; }));
        ASSERT_TRUE(WaitInRealTime([this] { return IsWorkbenchSettled(); }));
    }

    QWidget* Workbench() const { return Child<QWidget>("Workbench"); }

    // A label takes the focus for the selection of its text alone, and a view without focus shows states only.
    static bool IsReachable(const QWidget* control) {
        return (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy() &&
               !qobject_cast<QAbstractSpinBox*>(control->parentWidget()) &&
               !qobject_cast<QComboBox*>(control->parentWidget());
    }

    /// Tabs once round the current page of the workbench. A control is scrolled into view when the focus comes to it.
    void CheckRound() {
        Child<QWidget>("ExportPath")->setFocus();
        std::set<QWidget*> stops;
        for (int count = 0; count < kMaxStops; ++count) {
            Press(Qt::Key_Tab);
            QWidget* stop = QApplication::focusWidget();
            if (!stop || !stops.insert(stop).second) {
                break;
            }
            if (Workbench()->isAncestorOf(stop)) {
                SCOPED_TRACE(NameOf(stop));
                CheckNamed(stop);
                EXPECT_FALSE(stop->visibleRegion().isEmpty()) << "it is not scrolled into view";
            }
        }
        for (QWidget* control : Controls(*window)) {
            if (Workbench()->isAncestorOf(control) && IsReachable(control)) {
                EXPECT_EQ(stops.count(control), 1u) << NameOf(control);
            }
        }
    }

    /// Checks each tab, and each tab within it.
    void CheckTabs(QTabWidget* tabs) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            SCOPED_TRACE(tabs->tabText(tab).toStdString());
            tabs->setCurrentIndex(tab);
            auto* inner = qobject_cast<QTabWidget*>(tabs->currentWidget());
            inner = inner ? inner : tabs->currentWidget()->findChild<QTabWidget*>();
            if (inner) {
                CheckTabs(inner);
            } else {
                // A form that reads its values takes no input.
                EXPECT_TRUE(WaitInRealTime([page = tabs->currentWidget()] {
                    const auto fields = page->findChildren<QLineEdit*>();
                    return std::all_of(fields.begin(), fields.end(),
                                       [](const auto* field) { return !field->isVisible() || field->isEnabled(); });
                }));
                CheckRound();
            }
        }
    }
};

TEST_F(KeyboardWorkbenchTest, EachControlOfEachPageIsReachedOnScreenAndNamedAtTheSizeOfASmallScreen) {
    BeginSmall();

    CheckTabs(Child<QTabWidget>("WorkbenchTabs"));
}

INSTANTIATE_TEST_SUITE_P(Users, KeyboardPagesTest, Values(20001, 20003, 20009, 20012),
                         [](const auto& user) { return "user" + std::to_string(user.param); });

TEST_F(KeyboardTest, EachControlOfTheGalleryIsReachedSeenUsedAndNamed) {
    Begin(20012);
    CPremiumRights rights;
    rights.Refresh();
    CVipGallery::Open(window, rights);
    const std::unique_ptr<CVipGallery> gallery(window->findChild<CVipGallery*>());
    ASSERT_TRUE(WaitInRealTime([&] { return gallery->isActiveWindow() && gallery->IsComplete(); }));

    CheckWindow(*gallery);
}

TEST_F(KeyboardTest, EachControlOfThePopupPanelIsReachedSeenUsedAndNamed) {
    Begin(20001);
    CAdPanelWindow::Open(window);
    auto* panel = Child<CAdPanelWindow>("AdPanelWindow");
    ASSERT_TRUE(WaitInRealTime([&] { return panel->isActiveWindow(); }));

    CheckWindow(*panel, 1);
}

TEST_F(KeyboardTest, ArrowsReachEachEntryOfTheUserMenu) {
    Begin(20003);
    auto* menu = Child<QMenu>("UserMenu");
    std::set<QAction*> reached;
    QTimer::singleShot(0, menu, [&] {
        for (int step = 0; step < menu->actions().size(); ++step) {
            QTest::keyClick(menu, Qt::Key_Down);
            reached.insert(menu->activeAction());
        }
        menu->close();
    });
    Child<QToolButton>("UserMenuButton")->setFocus();
    Press(Qt::Key_Space);

    for (QAction* action : menu->actions()) {
        if (action->isSeparator() || action->objectName().isEmpty() || !action->isEnabled() || !action->isVisible()) {
            continue;
        }
        EXPECT_EQ(reached.count(action), 1U) << action->objectName().toStdString();
        EXPECT_FALSE(action->text().isEmpty()) << action->objectName().toStdString();
    }
    EXPECT_THAT(reached, Contains(Child<QAction>("UserMenuVip")));
}

// Tags, exclusive masks and ad pictures take the mouse alone. The first two have their target within reach elsewhere.
class MouseOnlyTest : public KeyboardTest {
protected:
    ~MouseOnlyTest() override { End(); }

    void Begin(quint64 user) {
        KeyboardTest::Begin(user);
        QObject::connect(client, &CComposition::WebOpened, &watcher,
                         [this](const QUrl& url) { opened.push_back(url.path().toStdString()); });
        Choose("research");
    }

    QWidget* VisibleOf(const char* name) const {
        for (auto* widget : window->findChildren<QWidget*>()) {
            if (widget->inherits(name) && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    std::vector<std::string> opened;
};

TEST_F(MouseOnlyTest, MenuReachesTheTargetOfATag) {
    Begin(20009);
    QWidget* tag = VisibleOf("CZRVipTagWidget");
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(tag->focusPolicy(), Qt::NoFocus);

    Click(tag);
    auto* menu = Child<QMenu>("UserMenu");
    // The menu has an event loop of its own.
    QTimer::singleShot(0, menu, [&] {
        for (int step = 0; step < 60 && menu->activeAction() != Child<QAction>("UserMenuVip"); ++step) {
            QTest::keyClick(menu, Qt::Key_Up);
        }
        QTest::keyClick(menu, menu->activeAction() == Child<QAction>("UserMenuVip") ? Qt::Key_Return : Qt::Key_Escape);
    });
    Child<QToolButton>("UserMenuButton")->setFocus();
    Press(Qt::Key_Space);
    WaitInRealTime([&] { return opened.size() == 2; });

    ASSERT_EQ(opened.size(), 2U);
    EXPECT_EQ(opened[1], opened[0]);
}

TEST_F(MouseOnlyTest, LinkOfTheCardReachesTheTargetOfAnExclusiveMask) {
    Begin(20001);
    QWidget* mask = VisibleOf("CZRVipExclusiveMaskWidget");
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->focusPolicy(), Qt::NoFocus);
    auto* about = Child<QPushButton>("AnalystConsensusAbout");

    Click(mask);
    about->setFocus();
    Press(Qt::Key_Space);

    ASSERT_EQ(opened.size(), 2U);
    EXPECT_THAT(opened[0], StartsWith("/link/"));
    EXPECT_EQ(opened[1], opened[0]);
}

TEST_F(MouseOnlyTest, LinkIsThereOnlyWithAnExclusiveMask) {
    Begin(20001);
    EXPECT_TRUE(Child<QPushButton>("AnalystConsensusAbout")->isVisible());
    EXPECT_FALSE(Child<QPushButton>("ShortSellingAbout")->isVisible());

    LogIn(20003);

    EXPECT_TRUE(WaitInRealTime([this] { return !Child<QPushButton>("AnalystConsensusAbout")->isVisible(); }));
}

}  // namespace
