// The screen at the first frame and afterwards.
#include <QAbstractProxyModel>
#include <QLabel>
#include <QScreen>
#include <QTableView>
#include <QTableWidget>
#include <QToolButton>

#include "ClientFixture.h"
#include "StatusLine.h"
#include "core/urlhandler.h"
#include "workbench/Workbench.h"

using namespace ::testing;

namespace {

class StartTest : public ClientTest {
protected:
    /// `look` is called with the client at its first frame.
    void StartAndLook(const std::function<void()>& look) {
        Make();
        bool seen = false;
        QObject::connect(window, &CMainWindow::Appeared, &watcher, [&] {
            seen = true;
            look();
        });
        Show();
        EXPECT_TRUE(seen);
    }

    std::set<std::string> PageNames() const {
        std::set<std::string> names;
        for (const auto* page : window->findChildren<QWidget*>()) {
            if (page->objectName().startsWith(QStringLiteral("Page_"))) {
                EXPECT_TRUE(names.insert(page->objectName().toStdString()).second);
            }
        }
        return names;
    }

    static int DifferentPixels(const QImage& one, const QImage& other) {
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                count += one.pixel(x, y) == other.pixel(x, y) ? 0 : 1;
            }
        }
        return count;
    }

    bool IsShown(const char* name) const {
        const auto* widget = window->findChild<QWidget*>(QString::fromLatin1(name));
        return widget && widget->isVisible();
    }

    void Choose(const char* page) {
        window->findChild<QToolButton*>(QStringLiteral("NavigationTab_") + QString::fromLatin1(page))->click();
    }
};

TEST_F(StartTest, TheFirstFrameIsAWindowThatCanBeUsed) {
    StartAndLook([this] {
        for (const char* part : {"TitleBar", "ProductName", "UserMenuButton", "Navigation", "NavigationTab_quotes",
                                 "Page_watchlist", "AIChatEntry1", "StatusLine"}) {
            EXPECT_TRUE(IsShown(part)) << part;
        }
        const auto* table = window->findChild<QTableWidget*>(QStringLiteral("WatchlistTable"));
        EXPECT_GT(table->rowCount(), 0);
        EXPECT_NE(window->findChild<QToolButton*>(QStringLiteral("UserMenuButton"))->menu(), nullptr);
        EXPECT_EQ(window->StatusLine().Text(), QStringLiteral("Starting the server"));
        // the screen itself, because a widget can render more than is visible
        const QImage screen =
            window->screen()->grabWindow(window->winId()).toImage().convertToFormat(QImage::Format_RGB32);
        const QImage whole = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
        ASSERT_EQ(screen.size(), whole.size());
        // The window may become active between the two pictures: one control shows the focus then.
        EXPECT_LT(DifferentPixels(screen, whole), screen.width() * screen.height() / 500);
    });
}

TEST_F(StartTest, TheFirstFrameDoesWithoutTheWorkbenchAndTheOtherPages) {
    StartAndLook([this] {
        EXPECT_EQ(window->findChild<CWorkbench*>(), nullptr);
        EXPECT_THAT(PageNames(), ElementsAre("Page_watchlist"));
    });

    EXPECT_NE(window->findChild<CWorkbench*>(), nullptr);
    EXPECT_THAT(PageNames(), SizeIs(8));
}

class StartInLanguageTest : public StartTest, public WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Languages, StartInLanguageTest, Values(0, 1, 2, 5, 7),
                         [](const auto& language) { return "Language" + std::to_string(language.param); });

// The first frame reserves the workbench's place, and no translation needs more.
TEST_P(StartInLanguageTest, ThePageStaysWhereItIsWhenTheWorkbenchComes) {
    options.language = GetParam();
    QRect before;
    const auto place = [this] { return window->findChild<QWidget*>(QStringLiteral("Pages"))->geometry(); };

    StartAndLook([&] { before = place(); });

    ASSERT_TRUE(WaitInRealTime([this] { return IsShown("WorkbenchTabs"); }));
    window->grab();  // completes the pending layout
    EXPECT_EQ(place(), before);
}

TEST_P(StartInLanguageTest, TheNavigationHasRoomForTheNamesOfItsTabs) {
    options.language = GetParam();
    Start();

    int tabs = 0;
    for (const auto* tab : Child<QWidget>("Navigation")->findChildren<QToolButton*>()) {
        if (tab->objectName().startsWith(QStringLiteral("NavigationTab_"))) {
            ++tabs;
            EXPECT_LE(tab->sizeHint().width(), tab->width()) << tab->text().toStdString();
        }
    }
    EXPECT_EQ(tabs, 8);
}

TEST_F(StartTest, TheWorkbenchMissesNothingThatHappenedBeforeItWasMade) {
    using namespace core::urlhandler;
    Make();
    core::__CMessageDispatch("[Test]").Send(4711, nullptr, true);
    DispatchUrl(QStringLiteral("file:///etc/hosts"), kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
    const size_t lines = client->Log().Kept().size();
    const size_t seen = client->Trace().Kept().size();
    ASSERT_GT(lines, 0u);
    ASSERT_GT(seen, 1u);

    Show();

    ASSERT_TRUE(WaitInRealTime([this] { return IsWorkbenchSettled(); }));
    const auto* rows = qobject_cast<QAbstractProxyModel*>(Child<QTableView>("LogTable")->model());
    const auto& log = static_cast<const CEventModel&>(*rows->sourceModel());
    std::multiset<std::string> shown;
    for (int row = 0; row < log.rowCount(); ++row) {
        shown.insert(log.At(row).cells[2].toStdString());
    }
    const auto kept = client->Log().Kept();
    for (size_t index = 0; index < lines; ++index) {
        EXPECT_EQ(shown.count(kept[index].record.text.toStdString()), 1u) << kept[index].record.text.toStdString();
    }
    const auto rowsWith = [this](const char* table, int column, const char* text) {
        const QAbstractItemModel* model = window->findChild<QTableView*>(QString::fromLatin1(table))->model();
        return model->match(model->index(0, column), Qt::DisplayRole, QString::fromLatin1(text), -1, Qt::MatchContains)
            .size();
    };
    EXPECT_EQ(rowsWith("TrafficTable", 2, "4711"), 1);
    EXPECT_EQ(rowsWith("UrlTable", 3, "its scheme is not allowed"), 1);
}

TEST_F(StartTest, APageIsMadeOnceAndAtTheLatestWhenItIsChosen) {
    Make();

    Choose("news");
    EXPECT_THAT(PageNames(), ElementsAre("Page_news", "Page_watchlist"));
    Choose("watchlist");
    Choose("news");
    EXPECT_THAT(PageNames(), ElementsAre("Page_news", "Page_watchlist"));

    Show();

    EXPECT_THAT(PageNames(), SizeIs(8));
    EXPECT_TRUE(IsShown("Page_news"));
    EXPECT_FALSE(IsShown("Page_watchlist"));
}

TEST_F(StartTest, APageThatIsMadeLateIsInTheLanguageOfTheMoment) {
    Make();
    client->SetLanguage(7);

    Choose("news");

    const auto* page = window->findChild<QWidget*>(QStringLiteral("Page_news"));
    ASSERT_NE(page, nullptr);
    std::set<std::string> texts;
    for (const auto* label : page->findChildren<QLabel*>()) {
        texts.insert(label->text().toStdString());
    }
    EXPECT_THAT(texts, Contains("Actualités"));
}

}  // namespace
