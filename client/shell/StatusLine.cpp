#include "StatusLine.h"

#include <QVariant>

#include "ElidedLabel.h"
#include "Theme.h"

CStatusLine::CStatusLine(QWidget* parent)
    : QStatusBar(parent), m_pDot(new QLabel(this)), m_pText(new CElidedLabel(this)), m_pNote(new CElidedLabel(this)) {
    setObjectName(QStringLiteral("StatusLine"));
    setSizeGripEnabled(false);
    setContentsMargins(14, 0, 14, 0);
    m_pDot->setObjectName(QStringLiteral("StatusDot"));
    m_pDot->setFixedSize(10, 10);
    m_pText->setObjectName(QStringLiteral("StatusText"));
    m_pNote->setObjectName(QStringLiteral("StatusNote"));
    m_pNote->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addWidget(m_pDot);
    addWidget(m_pText, 1);
    addPermanentWidget(m_pNote, 1);
}

void CStatusLine::ShowConnection(const QString& text, bool good) {
    m_bGood = good;
    m_pDot->setProperty("good", good);
    theme::Repolish(m_pDot);
    m_pText->SetWhole(text);
}

QString CStatusLine::Text() const {
    return m_pText->Whole();
}

void CStatusLine::ShowNote(const QString& text) {
    m_pNote->SetWhole(text);
}
