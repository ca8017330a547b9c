#include "workbench/rights/PushPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

#include "workbench/PanelWidgets.h"
#include "workbench/rights/NumberList.h"

namespace {

enum EnNeedAll { kLeftOutOfPush, kNeedAllYes, kNeedAllNo };

}  // namespace

CPushPanel::CPushPanel(IControlClient& server, QWidget* parent)
    : CPushForm(server, "PushMessage", parent),
      m_pDelay(panel::New<QLineEdit>("PushDelay", this)),
      m_pNeedAll(panel::New<QComboBox>("PushNeedAll", this)),
      m_pRights(panel::New<QLineEdit>("PushRights", this)),
      m_pWindow(panel::New<QLineEdit>("PushWindow", this)) {
    auto* grid = panel::NewGrid("PushPanel", this);
    AddRows(grid);
    ShowTexts();
}

void CPushPanel::AddRows(QGridLayout* grid) {
    auto* sendPremium = panel::New<QPushButton>("PushPremium", this);
    auto* sendVip = panel::New<QPushButton>("PushVip", this);
    sendPremium->setText(QStringLiteral("Send"));
    sendVip->setText(QStringLiteral("Send"));
    for (int choice = kLeftOutOfPush; choice <= kNeedAllNo; ++choice) {
        m_pNeedAll->addItem(QString());
    }
    m_pDelay->setText(QStringLiteral("5"));
    m_pNeedAll->setCurrentIndex(kNeedAllYes);
    m_pWindow->setText(QStringLiteral("5"));
    grid->addWidget(panel::NewTitle(QStringLiteral("Change of rights, 20837"), this, "strong"), 0, 0, 1, 5);
    grid->addWidget(panel::NewTitle(QStringLiteral("Delay, s"), this), 1, 0);
    grid->addWidget(m_pDelay, 1, 1);
    grid->addWidget(panel::NewTitle(QStringLiteral("All rights"), this), 1, 2);
    grid->addWidget(m_pNeedAll, 1, 3, 1, 2);
    grid->addWidget(panel::NewTitle(QStringLiteral("Rights"), this), 2, 0);
    grid->addWidget(m_pRights, 2, 1, 1, 3);
    grid->addWidget(sendPremium, 2, 4);
    grid->addWidget(panel::NewTitle(QStringLiteral("Change of VIP status, 20832"), this, "strong"), 3, 0, 1, 5);
    grid->addWidget(panel::NewTitle(QStringLiteral("Window, s"), this), 4, 0);
    grid->addWidget(m_pWindow, 4, 1, 1, 3);
    grid->addWidget(sendVip, 4, 4);
    grid->addWidget(Message(), 5, 0, 1, 5);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(6, 1);
    connect(sendPremium, &QPushButton::clicked, this, &CPushPanel::SendPremium);
    connect(sendVip, &QPushButton::clicked, this, &CPushPanel::SendVip);
}

// The hint is a placeholder text of the field, visible only while the field is empty.
void CPushPanel::ShowTexts() {
    m_pNeedAll->setItemText(kLeftOutOfPush, QStringLiteral("left out"));
    m_pNeedAll->setItemText(kNeedAllYes, QStringLiteral("yes"));
    m_pNeedAll->setItemText(kNeedAllNo, QStringLiteral("no"));
    for (QLineEdit* field : {m_pDelay, m_pRights, m_pWindow}) {
        field->setPlaceholderText(QStringLiteral("left out"));
    }
}

void CPushPanel::SendPremium() {
    Json::Value push(Json::objectValue);
    if (!AddNumber(push, "delaySeconds", *m_pDelay)) {
        return;
    }
    if (m_pNeedAll->currentIndex() != kLeftOutOfPush) {
        push["needAll"] = m_pNeedAll->currentIndex() == kNeedAllYes;
    }
    const NumberList rights = NumberList::Read(m_pRights->text());
    if (!rights.wrongWord.isEmpty()) {
        Say(QStringLiteral("No number of a right: %1").arg(rights.wrongWord), false);
        return;
    }
    for (const int right : rights.numbers) {
        push["access"].append(right);
    }
    Send("premiumChange", push);
}

void CPushPanel::SendVip() {
    Json::Value push(Json::objectValue);
    if (AddNumber(push, "windowSeconds", *m_pWindow)) {
        Send("vipChange", push);
    }
}
