#include "pages/QuotesPage.h"

#include <QAccessible>
#include <QTableWidget>

#include "AIChatEntries.h"
#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "SampleMarket.h"
#include "TabPages.h"
#include "VipSlot.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr int kBook = EnPremiumAccess_us_total_view_lv2;
constexpr int kChart = EnPremiumAccess_kline_Pattern;

class QuotesPageTest : public ScriptedHostTest {
protected:
    QuotesPageTest() {
        page = std::make_unique<CQuotesPage>(kEntryPages[1], entries, market, rights);
        page->resize(700, 800);
        page->show();
        time.Settle();
    }

    void Refresh() {
        rights.Refresh();
        time.Settle();
    }

    QTableWidget* Book() const { return page->findChild<QTableWidget*>(QStringLiteral("OrderBookTable")); }
    CVipSlot* Slot(const char* name) const { return page->findChild<CVipSlot*>(QString::fromLatin1(name)); }

    /// The texts that a screen reader finds.
    std::string Spoken() const {
        QString words;
        QAccessibleInterface* table = QAccessible::queryAccessibleInterface(Book());
        for (int child = 0; child < table->childCount(); ++child) {
            if (table->child(child)->role() != QAccessible::Cell) {
                continue;
            }
            words += table->child(child)->text(QAccessible::Name) + QLatin1Char(' ');
        }
        return words.toStdString();
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAIChatEntries entries;
    CPremiumRights rights;
    const SampleMarket market = SampleMarket::Load();
    std::unique_ptr<CQuotesPage> page;
};

}  // namespace

TEST_F(QuotesPageTest, OrderBookHasNoFiguresBehindItsMask) {
    const std::string figure = figures::Price(market.quote.book[0].bid).toStdString();
    EXPECT_THAT(Spoken(), HasSubstr(figure));

    service->masks = {kBook};
    Refresh();

    EXPECT_TRUE(Slot("OrderBookMask")->isVisible());
    EXPECT_EQ(Slot("OrderBookMask")->geometry(), Book()->geometry());
    EXPECT_FALSE(Book()->isEnabled());
    for (int row = 0; row < Book()->rowCount(); ++row) {
        for (int column = 0; column < Book()->columnCount(); ++column) {
            EXPECT_EQ(Book()->item(row, column)->text(), figures::Concealed());
        }
    }
    EXPECT_THAT(Spoken(), Not(ContainsRegex("[0-9]")));

    service->masks.clear();
    Refresh();

    EXPECT_THAT(Spoken(), HasSubstr(figure));
    EXPECT_TRUE(Book()->isEnabled());
}

TEST_F(QuotesPageTest, LanguageChangeShowsNoFiguresBehindTheMask) {
    service->masks = {kBook};
    Refresh();

    bus.HostSend(20100);

    EXPECT_THAT(Spoken(), Not(ContainsRegex("[0-9]")));
}

TEST_F(QuotesPageTest, MaskIsNotWithinWhatItCovers) {
    service->masks = {kBook};
    Refresh();

    EXPECT_FALSE(Book()->isAncestorOf(Slot("OrderBookMask")));
    EXPECT_EQ(Book()->parentWidget(), Slot("OrderBookMask")->parentWidget());
}

TEST_F(QuotesPageTest, BookHasItsBannerOnlyWithoutTheMask) {
    service->vipBanners = {kBook};
    Refresh();
    EXPECT_TRUE(Slot("OrderBookBanner")->isVisible());

    service->masks = {kBook};
    Refresh();

    EXPECT_FALSE(Slot("OrderBookBanner")->isVisible());
}

TEST_F(QuotesPageTest, ChartHasTheBannerOfItsRight) {
    service->vipBanners = {kChart};
    Refresh();

    EXPECT_TRUE(Slot("ChartBanner")->isVisible());
    EXPECT_FALSE(Slot("OrderBookBanner")->isVisible());
}

TEST_F(QuotesPageTest, HeadingsHaveTheMarksOfTheirRights) {
    service->icons = service->tags = {kBook, kChart};
    Refresh();

    std::multiset<int> marked;
    for (const auto& created : service->vipCreated) {
        marked.insert(static_cast<CFakeVipWidget*>(created.widget.data())->right);
    }
    EXPECT_THAT(marked, UnorderedElementsAre(kBook, kBook, kChart, kChart));
}
