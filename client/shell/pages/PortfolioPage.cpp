#include "pages/PortfolioPage.h"

#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/SampleTable.h"

CPortfolioPage::CPortfolioPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                               QWidget* parent)
    : CPage(page, entries, parent) {
    auto* table = new CSampleTable("PositionsTable",
                                   {{texts::kSymbol, false},
                                    {texts::kName, false},
                                    {texts::kQuantity, true},
                                    {texts::kAverageCost, true},
                                    {texts::kLastPrice, true},
                                    {texts::kMarketValue, true},
                                    {texts::kProfitLoss, true}},
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

    AddFigures({{texts::kTotalValue, figures::Price(held + market.cash)},
                {texts::kDayResult, figures::Signed(day), theme::OfChange(day)},
                {texts::kCash, figures::Price(market.cash)}});
    Body()->addWidget(table, 1);
}
