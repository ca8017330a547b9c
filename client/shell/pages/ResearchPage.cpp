#include "pages/ResearchPage.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "Links.h"
#include "SampleMarket.h"
#include "Theme.h"
#include "Translation.h"
#include "VipSlot.h"
#include "pages/FigureGrid.h"

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

using EnRating = SampleMarket::EnRating;

constexpr const char* kPageId = "research";
constexpr int kMaskHeight = 64;

struct Analysis {
    EnVipKind mask;
    EnPremiumAccess right;
    const char* title;
    const char* name;
};

QString Count(const SampleMarket& market, EnRating rating) {
    return QString::number(std::count_if(market.notes.begin(), market.notes.end(),
                                         [rating](const SampleMarket::Note& note) { return note.rating == rating; }));
}

// The figures of a right behind its mask.
QWidget* NewAnalysis(const Analysis& analysis, std::vector<CFigureGrid::Figure> figures, const CPremiumRights& rights,
                     QWidget* page) {
    const auto newSlot = [&](EnVipKind kind, QWidget* parent, QWidget* covered = nullptr) {
        return new CVipSlot({kind, analysis.right, ZRVipUIDataMain, kPageId}, rights, parent, covered);
    };
    QFrame* card = CPage::NewCard(page);
    auto* layout = qobject_cast<QVBoxLayout*>(card->layout());
    // An exclusive mask takes the mouse alone. The keyboard has this link.
    QPushButton* about = links::NewLink(QString::fromLatin1(analysis.name) + QStringLiteral("About"),
                                        QT_TRANSLATE_NOOP("Pages", "About this right"), analysis.right, card);
    QHBoxLayout* heading = CPage::NewHeading(CPage::NewTranslatedLabel("section", analysis.title, card),
                                             {newSlot(EnVipKind::Icon, card), newSlot(EnVipKind::TagGrade, card)});
    heading->addWidget(about);
    layout->addLayout(heading);
    auto* grid = new CFigureGrid(analysis.name, std::move(figures), card);
    grid->setMinimumHeight(kMaskHeight);
    layout->addWidget(grid);
    CVipSlot* mask = newSlot(analysis.mask, card, grid);
    mask->setObjectName(QString::fromLatin1(analysis.name) + QStringLiteral("Mask"));
    mask->OnFilledChange([grid, about, exclusive = analysis.mask == EnVipKind::MaskExclusive](bool masked) {
        grid->Conceal(masked);
        about->setVisible(masked && exclusive);
    });
    return card;
}

}  // namespace

CResearchPage::CResearchPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                             const CPremiumRights& rights, QWidget* parent)
    : CPage(page, entries, parent) {
    const SampleMarket::Quote& quote = market.quote;
    auto* cards = new QHBoxLayout;
    cards->setSpacing(12);
    cards->addWidget(NewAnalysis({EnVipKind::MaskExclusive, EnPremiumAccess_AnalystRatings,
                                  QT_TRANSLATE_NOOP("Pages", "Analyst consensus"), "AnalystConsensus"},
                                 {{QT_TRANSLATE_NOOP("Pages", "Buy"), Count(market, EnRating::Buy)},
                                  {QT_TRANSLATE_NOOP("Pages", "Hold"), Count(market, EnRating::Hold)},
                                  {QT_TRANSLATE_NOOP("Pages", "Reduce"), Count(market, EnRating::Reduce)}},
                                 rights, this),
                     1);
    cards->addWidget(NewAnalysis({EnVipKind::MaskCompact, EnPremiumAccess_short_selling_analysis,
                                  QT_TRANSLATE_NOOP("Pages", "Short selling"), "ShortSelling"},
                                 {{QT_TRANSLATE_NOOP("Pages", "Sold short"), figures::Short(double(quote.shortVolume))},
                                  {QT_TRANSLATE_NOOP("Pages", "Days to cover"), figures::Price(quote.daysToCover)},
                                  {QT_TRANSLATE_NOOP("Pages", "Borrow fee %"), figures::Price(quote.borrowFee)}},
                                 rights, this),
                     1);
    Body()->addLayout(cards);
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
