#include "workbench/server/RightsRequest.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include "PremiumRights.h"
#include "workbench/server/RequestForm.h"

CRightsRequest::CRightsRequest(QWidget* parent)
    : QWidget(parent),
      m_pRights(new QLineEdit(this)),
      m_pServerPush(new QCheckBox(QStringLiteral("As after a push"), this)),
      m_pOutcome(NewOutcomeLine(QStringLiteral("AskOutcome"), this)) {
    setObjectName(QStringLiteral("RightsRequest"));
    m_pRights->setObjectName(QStringLiteral("AskRights"));
    m_pRights->setAccessibleName(QStringLiteral("Rights"));
    m_pRights->setPlaceholderText(QStringLiteral("Numbers of rights, as 1 5 1000"));
    m_pServerPush->setObjectName(QStringLiteral("AskServerPush"));
    auto* list = new QPushButton(QStringLiteral("Ask for these"), this);
    list->setObjectName(QStringLiteral("AskList"));
    auto* all = new QPushButton(QStringLiteral("Ask for all"), this);
    all->setObjectName(QStringLiteral("AskAll"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(list);
    buttons->addWidget(all);
    buttons->addStretch(1);
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addRow(QStringLiteral("Rights"), m_pRights);
    layout->addRow(m_pServerPush);
    layout->addRow(buttons);
    layout->addRow(m_pOutcome);
    connect(list, &QPushButton::clicked, this, &CRightsRequest::AskList);
    connect(all, &QPushButton::clicked, this, &CRightsRequest::AskAll);
}

void CRightsRequest::AskAll() {
    ShowSession(CPremiumRights::AskAll(m_pServerPush->isChecked()));
}

// An empty list is sent too, because the module forwards it unchanged.
void CRightsRequest::AskList() {
    static const QRegularExpression gap(QStringLiteral("[\\s,;]+"));
    QVector<int> rights;
    const QStringList words = m_pRights->text().split(gap, Qt::SkipEmptyParts);
    for (const QString& word : words) {
        bool isNumber = false;
        rights << word.toInt(&isNumber);
        if (!isNumber) {
            ShowOutcome(m_pOutcome, QStringLiteral("No number of a right: %1").arg(word), false);
            return;
        }
    }
    ShowSession(CPremiumRights::AskList(rights, m_pServerPush->isChecked()));
}

void CRightsRequest::ShowSession(unsigned long session) {
    ShowOutcome(m_pOutcome,
                session == 0 ? QStringLiteral("Nobody was asked: the module is not there or has not started")
                             : QStringLiteral("Asked with session %1").arg(session),
                session != 0);
}
