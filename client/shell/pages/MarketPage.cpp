#include "pages/MarketPage.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "AdBannerSlot.h"
#include "SampleMarket.h"
#include "pages/SampleTable.h"

CMarketPage::CMarketPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                         const CAds& ads, QWidget* parent)
    : CPage(page, entries, parent) {
    Body()->addWidget(new CAdBannerSlot(ZRAdPositionMarketBanner, ads, this));
    auto* table = new CSampleTable("SectorsTable",
                                   {{QT_TRANSLATE_NOOP("Pages", "Sector"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Last"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Change %"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Advancing"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Declining"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Turnover"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Leader"), false}},
                                   0, this);
    int advancing = 0;
    int declining = 0;
    double turnover = 0;
    for (const SampleMarket::Sector& sector : market.sectors) {
        advancing += sector.advancing;
        declining += sector.declining;
        turnover += sector.turnover;
        table->AddRow({{QString(), theme::kText, sector.title},
                       {figures::Price(sector.last)},
                       {figures::Percent(sector.last, sector.previous), theme::OfChange(sector.last - sector.previous)},
                       {figures::Whole(sector.advancing), theme::kUp},
                       {figures::Whole(sector.declining), theme::kDown},
                       {figures::Short(sector.turnover), theme::kMuted},
                       {sector.leader, theme::kAccent}});
    }
    AddFigures({{QT_TRANSLATE_NOOP("Pages", "Advancing"), figures::Whole(advancing), theme::kUp},
                {QT_TRANSLATE_NOOP("Pages", "Declining"), figures::Whole(declining), theme::kDown},
                {QT_TRANSLATE_NOOP("Pages", "Turnover"), figures::Short(turnover)}});
    Body()->addWidget(table, 1);
}
