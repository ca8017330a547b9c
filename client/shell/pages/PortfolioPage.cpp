#include "pages/PortfolioPage.h"

#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/SampleTable.h"

CPortfolioPage::CPortfolioPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                               QWidget* parent)
    : CPage(page, entries, parent) {
    auto* table = new CSampleTable("PositionsTable",
                                   {{QT_TRANSLATE_NOOP("Pages", "Symbol"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Name"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Quantity"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Avg. cost"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Last"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Value"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Profit / loss"), true}},
                                   1, this);
    double held = 0;
    double day = 0;
    for (const SampleMarket::Position& position : market.positions) {
        const SampleMarket::Instrument& instrument = position.instrument;
        const double quantity = double(position.quantity);
        const double result = (instrument.last - position.cost) * quantity;
        held += instrument.last * quantity;
        day += (instrument.last - instrument.previous) * quantity;
        table->AddRow({{instrument.symbol, theme::kAccent},
                       {instrument.name},
                       {figures::Whole(quantity)},
                       {figures::Price(position.cost), theme::kMuted},
                       {figures::Price(instrument.last)},
                       {figures::Price(instrument.last * quantity)},
                       {figures::Signed(result), theme::OfChange(result)}});
    }

    AddFigures({{QT_TRANSLATE_NOOP("Pages", "Total value"), figures::Price(held + market.cash)},
                {QT_TRANSLATE_NOOP("Pages", "Day's result"), figures::Signed(day), theme::OfChange(day)},
                {QT_TRANSLATE_NOOP("Pages", "Cash"), figures::Price(market.cash)}});
    Body()->addWidget(table, 1);
}
