#include "pages/ResearchPage.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Links.h"
#include "SampleMarket.h"
#include "Theme.h"

namespace {

struct RatingLook {
    texts::EnText word;
    theme::ColorName color;
};

RatingLook LookOf(SampleMarket::EnRating rating) {
    switch (rating) {
        case SampleMarket::EnRating::Buy:
            return {texts::kRatingBuy, theme::kUp};
        case SampleMarket::EnRating::Reduce:
            return {texts::kRatingReduce, theme::kDown};
        case SampleMarket::EnRating::Hold:
            break;
    }
    return {texts::kRatingHold, theme::kWarning};
}

}  // namespace

CResearchPage::CResearchPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                             QWidget* parent)
    : CPage(page, entries, parent) {
    for (const SampleMarket::Note& note : market.notes) {
        QFrame* card = NewCard(this);
        auto* layout = qobject_cast<QVBoxLayout*>(card->layout());
        layout->setContentsMargins(18, 16, 18, 16);
        layout->setSpacing(8);
        const RatingLook look = LookOf(note.rating);
        QLabel* rating = NewLabel("strong", look.word, card);
        SetColor(rating, look.color);
        QLabel* target = NewLabel("muted", QString(), card);
        texts::Keep(target, [target, price = figures::Price(note.target)] {
            target->setText(texts::Tr(texts::kTargetPrice).arg(price));
        });
        auto* head = new QHBoxLayout;
        head->setSpacing(14);
        head->addWidget(NewLabel("symbol", note.symbol, card));
        head->addWidget(rating);
        head->addWidget(target);
        head->addStretch(1);
        head->addWidget(NewLabel("muted", QStringLiteral("%1   %2").arg(note.analyst, note.date), card));
        QLabel* summary = NewLabel("body", texts::EnText(note.summaryId), card);
        summary->setWordWrap(true);
        layout->addLayout(head);
        layout->addWidget(NewLabel("section", texts::EnText(note.titleId), card));
        layout->addWidget(summary);
        layout->addWidget(links::NewLink(QStringLiteral("ResearchLink_") + note.symbol, texts::kOpenQuotes,
                                         QStringLiteral("zrclient://page/quotes"), card),
                          0, Qt::AlignLeft);
        Body()->addWidget(card);
    }
    Body()->addStretch(1);
}
