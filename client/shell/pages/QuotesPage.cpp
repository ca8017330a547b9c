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
    chart->layout()->addWidget(NewTranslatedLabel("muted", QT_TRANSLATE_NOOP("Pages", "Today"), chart));
    chart->layout()->addWidget(new CPriceChart(quote.today, instrument.previous, chart));
    Body()->addWidget(chart, 1);

    QFrame* figuresCard = NewCard(this);
    figuresCard->layout()->addWidget(
        NewTranslatedLabel("muted", QT_TRANSLATE_NOOP("Pages", "Key figures"), figuresCard));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(6);
    const std::vector<std::pair<const char*, QString>> shown{
        {QT_TRANSLATE_NOOP("Pages", "Open"), figures::Price(quote.open)},
        {QT_TRANSLATE_NOOP("Pages", "High"), figures::Price(quote.high)},
        {QT_TRANSLATE_NOOP("Pages", "Low"), figures::Price(quote.low)},
        {QT_TRANSLATE_NOOP("Pages", "Previous close"), figures::Price(instrument.previous)},
        {QT_TRANSLATE_NOOP("Pages", "Volume"), figures::Short(double(instrument.volume))},
        {QT_TRANSLATE_NOOP("Pages", "Turnover"), figures::Short(quote.turnover)},
        {QT_TRANSLATE_NOOP("Pages", "Market cap"), figures::Short(quote.marketCap)},
    };
    constexpr int kPairsPerRow = 4;
    for (int index = 0; index < int(shown.size()); ++index) {
        auto* pair = new QVBoxLayout;
        pair->setSpacing(1);
        pair->addWidget(NewTranslatedLabel("muted", shown[size_t(index)].first, figuresCard));
        pair->addWidget(NewLabel("strong", shown[size_t(index)].second, figuresCard));
        grid->addLayout(pair, index / kPairsPerRow, index % kPairsPerRow);
        grid->setColumnStretch(index % kPairsPerRow, 1);
    }
    qobject_cast<QVBoxLayout*>(figuresCard->layout())->addLayout(grid);
    Body()->addWidget(figuresCard);

    auto* book = new CSampleTable("OrderBookTable",
                                  {{QT_TRANSLATE_NOOP("Pages", "Bid size"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Bid"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Ask"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Ask size"), true}},
                                  0, this);
    for (const SampleMarket::BookLevel& level : quote.book) {
        book->AddRow({{figures::Whole(double(level.bidSize)), theme::kMuted},
                      {figures::Price(level.bid), theme::kUp},
                      {figures::Price(level.ask), theme::kDown},
                      {figures::Whole(double(level.askSize)), theme::kMuted}});
    }
    book->StretchAll();
    book->FitRows();
    Body()->addWidget(NewTranslatedLabel("section", QT_TRANSLATE_NOOP("Pages", "Order book"), this));
    Body()->addWidget(book);
}
