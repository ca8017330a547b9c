#include "pages/QuotesPage.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/PriceChart.h"
#include "pages/SampleTable.h"

CQuotesPage::CQuotesPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                         QWidget* parent)
    : CPage(page, entries, parent) {
    const SampleMarket::Quote& quote = market.quote;
    const SampleMarket::Instrument& instrument = quote.instrument;
    const double change = instrument.last - instrument.previous;

    auto* headline = new QHBoxLayout;
    headline->setSpacing(14);
    headline->addWidget(NewLabel("section", instrument.symbol, this), 0, Qt::AlignBottom);
    headline->addWidget(NewLabel("muted", instrument.name, this), 0, Qt::AlignBottom);
    headline->addStretch(1);
    QLabel* last = NewLabel("price", figures::Price(instrument.last), this);
    QLabel* changed = NewLabel(
        "change",
        QStringLiteral("%1   %2").arg(figures::Signed(change), figures::Percent(instrument.last, instrument.previous)),
        this);
    SetColor(last, theme::OfChange(change));
    SetColor(changed, theme::OfChange(change));
    headline->addWidget(last, 0, Qt::AlignBottom);
    headline->addWidget(changed, 0, Qt::AlignBottom);
    Body()->addLayout(headline);

    QFrame* chart = NewCard(this);
    chart->layout()->addWidget(NewLabel("muted", texts::kToday, chart));
    chart->layout()->addWidget(new CPriceChart(quote.today, instrument.previous, chart));
    Body()->addWidget(chart, 1);

    QFrame* figuresCard = NewCard(this);
    figuresCard->layout()->addWidget(NewLabel("muted", texts::kKeyFigures, figuresCard));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(6);
    const std::vector<std::pair<texts::EnText, QString>> shown{
        {texts::kPriceOpen, figures::Price(quote.open)},
        {texts::kPriceHigh, figures::Price(quote.high)},
        {texts::kPriceLow, figures::Price(quote.low)},
        {texts::kPreviousClose, figures::Price(instrument.previous)},
        {texts::kVolume, figures::Short(double(instrument.volume))},
        {texts::kTurnover, figures::Short(quote.turnover)},
        {texts::kMarketCap, figures::Short(quote.marketCap)},
    };
    constexpr int kPairsPerRow = 4;
    for (int index = 0; index < int(shown.size()); ++index) {
        auto* pair = new QVBoxLayout;
        pair->setSpacing(1);
        pair->addWidget(NewLabel("muted", shown[size_t(index)].first, figuresCard));
        pair->addWidget(NewLabel("strong", shown[size_t(index)].second, figuresCard));
        grid->addLayout(pair, index / kPairsPerRow, index % kPairsPerRow);
        grid->setColumnStretch(index % kPairsPerRow, 1);
    }
    qobject_cast<QVBoxLayout*>(figuresCard->layout())->addLayout(grid);
    Body()->addWidget(figuresCard);

    auto* book = new CSampleTable(
        "OrderBookTable", {{texts::kBidSize, true}, {texts::kBid, true}, {texts::kAsk, true}, {texts::kAskSize, true}},
        0, this);
    for (const SampleMarket::BookLevel& level : quote.book) {
        book->AddRow({{figures::Whole(double(level.bidSize)), theme::kMuted},
                      {figures::Price(level.bid), theme::kUp},
                      {figures::Price(level.ask), theme::kDown},
                      {figures::Whole(double(level.askSize)), theme::kMuted}});
    }
    book->StretchAll();
    book->FitRows();
    Body()->addWidget(NewLabel("section", texts::kOrderBook, this));
    Body()->addWidget(book);
}
