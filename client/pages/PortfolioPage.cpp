#include "pages/PortfolioPage.h"

#include <QFrame>
#include <QLabel>
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

    auto* cards = new QHBoxLayout;
    cards->setSpacing(12);
    const auto addCard = [&](texts::EnText title, const QString& value, theme::ColorName color) {
        QFrame* card = NewCard(this);
        QLabel* figure = NewLabel("figure", value, card);
        SetColor(figure, color);
        card->layout()->addWidget(NewLabel("muted", title, card));
        card->layout()->addWidget(figure);
        cards->addWidget(card, 1);
    };
    addCard(texts::kTotalValue, figures::Price(held + market.cash), theme::kText);
    addCard(texts::kDayResult, figures::Signed(day), theme::OfChange(day));
    addCard(texts::kCash, figures::Price(market.cash), theme::kText);
    Body()->addLayout(cards);
    Body()->addWidget(table, 1);
}
