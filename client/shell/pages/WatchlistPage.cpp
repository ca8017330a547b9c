#include "pages/WatchlistPage.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include "SampleMarket.h"
#include "pages/SampleTable.h"

CWatchlistPage::CWatchlistPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                               QWidget* parent)
    : CPage(page, entries, parent) {
    auto* indices = new QHBoxLayout;
    indices->setSpacing(12);
    for (const SampleMarket::Index& index : market.indices) {
        QFrame* card = NewCard(this);
        card->layout()->addWidget(NewLabel("muted", index.name, card));
        card->layout()->addWidget(NewLabel("figure", figures::Price(index.last), card));
        const double change = index.last - index.previous;
        QLabel* changed = NewLabel(
            "change",
            QStringLiteral("%1   %2").arg(figures::Signed(change), figures::Percent(index.last, index.previous)), card);
        SetColor(changed, theme::OfChange(change));
        card->layout()->addWidget(changed);
        indices->addWidget(card, 1);
    }
    Body()->addLayout(indices);

    auto* table = new CSampleTable("WatchlistTable",
                                   {{QT_TRANSLATE_NOOP("Pages", "Symbol"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Name"), false},
                                    {QT_TRANSLATE_NOOP("Pages", "Last"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Change"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Change %"), true},
                                    {QT_TRANSLATE_NOOP("Pages", "Volume"), true}},
                                   1, this);
    for (const SampleMarket::Instrument& instrument : market.instruments) {
        const double change = instrument.last - instrument.previous;
        const theme::ColorName color = theme::OfChange(change);
        table->AddRow({{instrument.symbol, theme::kAccent},
                       {instrument.name},
                       {figures::Price(instrument.last), color},
                       {figures::Signed(change), color},
                       {figures::Percent(instrument.last, instrument.previous), color},
                       {figures::Whole(double(instrument.volume)), theme::kMuted}});
    }
    Body()->addWidget(table, 1);
}
