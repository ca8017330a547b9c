#include "pages/Page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

#include "AIChatEntryButton.h"
#include "Translation.h"

CPage::CPage(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent)
    : QWidget(parent), m_pEntry(page.scene == kNoEntryScene ? nullptr : new CAIChatEntryButton(page, entries, this)) {
    setObjectName(QStringLiteral("Page_") + QString::fromLatin1(page.name));
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(NewTranslatedLabel("title", page.title, this));
    words->addWidget(NewTranslatedLabel("muted", page.subtitle, this));
    auto* head = new QHBoxLayout;
    head->setSpacing(12);
    head->addLayout(words);
    head->addStretch(1);
    head->addWidget(NewTranslatedLabel("badge", QT_TRANSLATE_NOOP("Pages", "Sample data"), this), 0, Qt::AlignVCenter);
    if (m_pEntry) {
        head->addWidget(m_pEntry, 0, Qt::AlignVCenter);
    }
    m_pBody = new QVBoxLayout(this);
    m_pBody->setContentsMargins(20, 16, 20, 16);
    m_pBody->setSpacing(14);
    m_pBody->addLayout(head);
}

void CPage::AddFigures(const std::vector<Figure>& figures) {
    auto* cards = new QHBoxLayout;
    cards->setSpacing(12);
    for (const Figure& figure : figures) {
        QFrame* card = NewCard(this);
        QLabel* value = NewLabel("figure", figure.value, card);
        SetColor(value, figure.color);
        card->layout()->addWidget(NewTranslatedLabel("muted", figure.title, card));
        card->layout()->addWidget(value);
        cards->addWidget(card, 1);
    }
    m_pBody->addLayout(cards);
}

QFrame* CPage::NewCard(QWidget* parent) {
    auto* card = new QFrame(parent);
    card->setProperty("role", QStringLiteral("card"));
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(5);
    return card;
}

QLabel* CPage::NewLabel(const char* role, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    label->setProperty("role", QString::fromLatin1(role));
    return label;
}

QLabel* CPage::NewTranslatedLabel(const char* role, const QByteArray& source, QWidget* parent) {
    QLabel* label = NewLabel(role, QString(), parent);
    translation::OnLanguageChange(label,
                                  [label, source] { label->setText(translation::PageText(source.constData())); });
    return label;
}

QHBoxLayout* CPage::NewHeading(QLabel* heading, const std::vector<QWidget*>& marks) {
    auto* layout = new QHBoxLayout;
    layout->setSpacing(8);
    layout->addWidget(heading);
    for (QWidget* mark : marks) {
        layout->addWidget(mark, 0, Qt::AlignVCenter);
    }
    layout->addStretch(1);
    return layout;
}

void CPage::SetColor(QLabel* label, theme::ColorName color) {
    theme::OnThemeChange(
        label, [label, color] { label->setStyleSheet(QStringLiteral("color: %1;").arg(QColor(color).name())); });
}
