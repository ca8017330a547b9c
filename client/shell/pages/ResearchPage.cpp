#include "pages/ResearchPage.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Links.h"
#include "SampleMarket.h"
#include "Theme.h"
#include "Translation.h"

namespace {

struct RatingLook {
    const char* word;
    theme::ColorName color;
};

RatingLook LookOf(SampleMarket::EnRating rating) {
    switch (rating) {
        case SampleMarket::EnRating::Buy:
            return {QT_TRANSLATE_NOOP("Pages", "Buy"), theme::kUp};
        case SampleMarket::EnRating::Reduce:
            return {QT_TRANSLATE_NOOP("Pages", "Reduce"), theme::kDown};
        case SampleMarket::EnRating::Hold:
            break;
    }
    return {QT_TRANSLATE_NOOP("Pages", "Hold"), theme::kWarning};
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
        QLabel* rating = NewTranslatedLabel("strong", look.word, card);
        SetColor(rating, look.color);
        QLabel* target = NewLabel("muted", QString(), card);
        translation::OnLanguageChange(target, [target, price = figures::Price(note.target)] {
            target->setText(translation::PageText(QT_TRANSLATE_NOOP("Pages", "Target %1")).arg(price));
        });
        auto* head = new QHBoxLayout;
        head->setSpacing(14);
        head->addWidget(NewLabel("symbol", note.symbol, card));
        head->addWidget(rating);
        head->addWidget(target);
        head->addStretch(1);
        head->addWidget(NewLabel("muted", QStringLiteral("%1   %2").arg(note.analyst, note.date), card));
        QLabel* summary = NewTranslatedLabel("body", note.summary, card);
        summary->setWordWrap(true);
        layout->addLayout(head);
        layout->addWidget(NewTranslatedLabel("section", note.title, card));
        layout->addWidget(summary);
        layout->addWidget(
            links::NewLink(QStringLiteral("ResearchLink_") + note.symbol, QT_TRANSLATE_NOOP("Pages", "Open the quotes"),
                           QStringLiteral("zrclient://page/quotes"), card),
            0, Qt::AlignLeft);
        Body()->addWidget(card);
    }
    Body()->addStretch(1);
}
