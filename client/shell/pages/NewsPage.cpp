#include "pages/NewsPage.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Links.h"
#include "PremiumStripSlot.h"
#include "SampleMarket.h"

CNewsPage::CNewsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                     const CPremiumRights& rights, QWidget* parent)
    : CPage(page, entries, parent) {
    Body()->addWidget(new CPremiumStripSlot(EnPremiumAccess_AIStockExplain, rights, this));
    for (const SampleMarket::Headline& headline : market.headlines) {
        QFrame* card = NewCard(this);
        auto* layout = qobject_cast<QVBoxLayout*>(card->layout());
        layout->setContentsMargins(18, 14, 18, 14);
        auto* foot = new QHBoxLayout;
        foot->setSpacing(12);
        foot->addWidget(NewLabel("muted", headline.time, card));
        foot->addWidget(NewLabel("muted", headline.source, card));
        foot->addWidget(NewLabel("symbol", headline.symbol, card));
        foot->addStretch(1);
        if (!headline.symbol.isEmpty()) {
            foot->addWidget(links::NewLink(QStringLiteral("NewsLink_") + headline.symbol,
                                           QT_TRANSLATE_NOOP("Pages", "Open the quotes"),
                                           QStringLiteral("zrclient://page/quotes"), card));
        }
        QLabel* title = NewTranslatedLabel("headline", headline.title, card);
        title->setWordWrap(true);
        layout->addWidget(title);
        layout->addLayout(foot);
        Body()->addWidget(card);
    }
    Body()->addStretch(1);
}
