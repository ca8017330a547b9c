#include "workbench/rights/AskPanel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

#include "PremiumRights.h"
#include "Theme.h"
#include "workbench/diagnosis/Explanation.h"
#include "workbench/rights/NumberList.h"

CAskPanel::CAskPanel(const CTracker& tracker, QWidget* parent)
    : QWidget(parent),
      m_tracker(tracker),
      m_pRights(new QLineEdit(this)),
      m_pServerPush(new QCheckBox(QStringLiteral("serverPush"), this)),
      m_pOutcome(new QLabel(this)) {
    setObjectName(QStringLiteral("AskPanel"));
    m_pRights->setObjectName(QStringLiteral("AskRights"));
    m_pServerPush->setObjectName(QStringLiteral("AskServerPush"));
    m_pOutcome->setObjectName(QStringLiteral("AskOutcome"));
    m_pOutcome->setTextFormat(Qt::PlainText);
    m_pOutcome->setWordWrap(true);
    auto* all = new QPushButton(this);
    auto* list = new QPushButton(this);
    all->setObjectName(QStringLiteral("AskAll"));
    list->setObjectName(QStringLiteral("AskList"));
    all->setText(QStringLiteral("Ask for all"));
    list->setText(QStringLiteral("Ask for these"));
    m_pRights->setPlaceholderText(QStringLiteral("Numbers of rights, as 1 5 1000"));
    auto* listed = new QHBoxLayout;
    listed->addWidget(m_pRights, 1);
    listed->addWidget(list);
    auto* whole = new QHBoxLayout;
    whole->addWidget(m_pServerPush, 1);
    whole->addWidget(all);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(listed);
    layout->addLayout(whole);
    layout->addWidget(m_pOutcome);
    layout->addStretch(1);
    connect(all, &QPushButton::clicked, this, &CAskPanel::AskAll);
    connect(list, &QPushButton::clicked, this, &CAskPanel::AskList);
    connect(&tracker, &CTracker::Changed, this, &CAskPanel::ShowOutcome);
    ShowOutcome();
}

void CAskPanel::AskAll() {
    Follow(CPremiumRights::AskAll(m_pServerPush->isChecked()));
}

// An empty list is sent too, because the module forwards it unchanged.
void CAskPanel::AskList() {
    const NumberList rights = NumberList::Read(m_pRights->text());
    if (!rights.wrongWord.isEmpty()) {
        m_session.reset();
        Say(QStringLiteral("No number of a right: %1").arg(rights.wrongWord), false);
        return;
    }
    Follow(CPremiumRights::AskList(rights.numbers, m_pServerPush->isChecked()));
}

void CAskPanel::Follow(unsigned long session) {
    m_session = session;
    ShowOutcome();
}

void CAskPanel::ShowOutcome() {
    if (!m_session) {
        return;
    }
    if (*m_session == 0) {
        Say(QStringLiteral("Nobody was asked: the module is not there or has not started"), false);
        return;
    }
    const RefreshState::Request* request = m_tracker.Rights().Find(*m_session);
    Say(QStringLiteral("session %1 \u00B7 ").arg(*m_session) +
            (request ? explanation::OutcomeOf(*request) : QStringLiteral("in flight")),
        !request || !request->red);
}

void CAskPanel::Say(const QString& words, bool good) {
    if (words == m_pOutcome->text()) {
        return;  // the board changes more often than these texts
    }
    m_pOutcome->setText(words);
    m_pOutcome->setProperty("good", good);
    theme::Repolish(m_pOutcome);
}
