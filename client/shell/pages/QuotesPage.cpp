#include "pages/QuotesPage.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "VipSlot.h"
#include "pages/FigureGrid.h"
#include "pages/PriceChart.h"
#include "pages/SampleTable.h"

namespace {

constexpr const char* kPageId = "quotes";
constexpr EnPremiumAccess kChartRight = EnPremiumAccess_kline_Pattern;
constexpr EnPremiumAccess kBookRight = EnPremiumAccess_us_total_view_lv2;

}  // namespace

CQuotesPage::CQuotesPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                         const CPremiumRights& rights, QWidget* parent)
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

    Body()->addWidget(NewChart(quote, rights), 1);

    QFrame* figuresCard = NewCard(this);
    figuresCard->layout()->addWidget(
        NewTranslatedLabel("muted", QT_TRANSLATE_NOOP("Pages", "Key figures"), figuresCard));
    figuresCard->layout()->addWidget(
        new CFigureGrid("KeyFigures",
                        {{QT_TRANSLATE_NOOP("Pages", "Open"), figures::Price(quote.open)},
                         {QT_TRANSLATE_NOOP("Pages", "High"), figures::Price(quote.high)},
                         {QT_TRANSLATE_NOOP("Pages", "Low"), figures::Price(quote.low)},
                         {QT_TRANSLATE_NOOP("Pages", "Previous close"), figures::Price(instrument.previous)},
                         {QT_TRANSLATE_NOOP("Pages", "Volume"), figures::Short(double(instrument.volume))},
                         {QT_TRANSLATE_NOOP("Pages", "Turnover"), figures::Short(quote.turnover)},
                         {QT_TRANSLATE_NOOP("Pages", "Market cap"), figures::Short(quote.marketCap)}},
                        figuresCard));
    Body()->addWidget(figuresCard);
    AddBook(quote, rights);
}

QWidget* CQuotesPage::NewChart(const SampleMarket::Quote& quote, const CPremiumRights& rights) {
    QFrame* card = NewCard(this);
    auto* layout = qobject_cast<QVBoxLayout*>(card->layout());
    layout->addLayout(
        NewHeading(NewTranslatedLabel("muted", QT_TRANSLATE_NOOP("Pages", "Today"), card),
                   {new CVipSlot({EnVipKind::Icon, kChartRight, ZRVipUIDataMain, kPageId}, rights, card),
                    new CVipSlot({EnVipKind::TagGrade, kChartRight, ZRVipUIDataMain, kPageId}, rights, card)}));
    auto* banner = new CVipSlot({EnVipKind::Banner, kChartRight, ZRVipUIDataMain, kPageId}, rights, card);
    banner->setObjectName(QStringLiteral("ChartBanner"));
    layout->addWidget(banner);
    layout->addWidget(new CPriceChart(quote.today, quote.instrument.previous, card), 1);
    return card;
}

void CQuotesPage::AddBook(const SampleMarket::Quote& quote, const CPremiumRights& rights) {
    auto* card = new QWidget(this);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* book = new CSampleTable("OrderBookTable",
                                  {{QT_TRANSLATE_NOOP("Pages", "Bid size"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Bid"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Ask"), true},
                                   {QT_TRANSLATE_NOOP("Pages", "Ask size"), true}},
                                  0, card);
    for (const SampleMarket::BookLevel& level : quote.book) {
        book->AddRow({{figures::Whole(double(level.bidSize)), theme::kMuted},
                      {figures::Price(level.bid), theme::kUp},
                      {figures::Price(level.ask), theme::kDown},
                      {figures::Whole(double(level.askSize)), theme::kMuted}});
    }
    book->StretchAll();
    book->FitRows();
    // Created before the banner, so that at a change the mask comes first and the banner is not shown meanwhile.
    auto* mask = new CVipSlot({EnVipKind::MaskLocked, kBookRight, ZRVipUIDataMain, kPageId}, rights, card, book);
    auto* banner = new CVipSlot({EnVipKind::Banner, kBookRight, ZRVipUIDataMain, kPageId}, rights, card);
    banner->setObjectName(QStringLiteral("OrderBookBanner"));
    layout->addLayout(
        NewHeading(NewTranslatedLabel("section", QT_TRANSLATE_NOOP("Pages", "Order book"), card),
                   {new CVipSlot({EnVipKind::Icon, kBookRight, ZRVipUIDataMain, kPageId}, rights, card),
                    new CVipSlot({EnVipKind::TagName, kBookRight, ZRVipUIDataMain, kPageId}, rights, card)}));
    layout->addWidget(banner);
    layout->addWidget(book);
    mask->setObjectName(QStringLiteral("OrderBookMask"));
    mask->OnFilledChange([book, banner](bool masked) {
        book->Conceal(masked);
        banner->SetWanted(!masked);  // the mask has the same text and button
    });
    Body()->addWidget(card);
}
