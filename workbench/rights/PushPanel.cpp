#include "workbench/rights/PushPanel.h"

#include <json/writer.h>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

#include "Theme.h"
#include "workbench/ServerText.h"
#include "workbench/rights/NumberList.h"

namespace {

enum EnNeedAll { kLeftOutOfPush, kNeedAllYes, kNeedAllNo };

template <class Widget>
Widget* New(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QLabel* NewTitle(const QString& text, const char* role, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setProperty("role", QString::fromLatin1(role));
    label->setText(text);
    return label;
}

}  // namespace

CPushPanel::CPushPanel(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pDelay(New<QLineEdit>("PushDelay", this)),
      m_pNeedAll(New<QComboBox>("PushNeedAll", this)),
      m_pRights(New<QLineEdit>("PushRights", this)),
      m_pWindow(New<QLineEdit>("PushWindow", this)),
      m_pMessage(New<QLabel>("PushMessage", this)) {
    setObjectName(QStringLiteral("PushPanel"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    AddRows(grid);
    ShowTexts();
}

void CPushPanel::AddRows(QGridLayout* grid) {
    auto* sendPremium = New<QPushButton>("PushPremium", this);
    auto* sendVip = New<QPushButton>("PushVip", this);
    sendPremium->setText(QStringLiteral("Send"));
    sendVip->setText(QStringLiteral("Send"));
    for (int choice = kLeftOutOfPush; choice <= kNeedAllNo; ++choice) {
        m_pNeedAll->addItem(QString());
    }
    m_pDelay->setText(QStringLiteral("5"));
    m_pNeedAll->setCurrentIndex(kNeedAllYes);
    m_pWindow->setText(QStringLiteral("5"));
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    grid->addWidget(NewTitle(QStringLiteral("Change of rights, 20837"), "strong", this), 0, 0, 1, 5);
    grid->addWidget(NewTitle(QStringLiteral("Delay, s"), "muted", this), 1, 0);
    grid->addWidget(m_pDelay, 1, 1);
    grid->addWidget(NewTitle(QStringLiteral("All rights"), "muted", this), 1, 2);
    grid->addWidget(m_pNeedAll, 1, 3, 1, 2);
    grid->addWidget(NewTitle(QStringLiteral("Rights"), "muted", this), 2, 0);
    grid->addWidget(m_pRights, 2, 1, 1, 3);
    grid->addWidget(sendPremium, 2, 4);
    grid->addWidget(NewTitle(QStringLiteral("Change of VIP status, 20832"), "strong", this), 3, 0, 1, 5);
    grid->addWidget(NewTitle(QStringLiteral("Window, s"), "muted", this), 4, 0);
    grid->addWidget(m_pWindow, 4, 1, 1, 3);
    grid->addWidget(sendVip, 4, 4);
    grid->addWidget(m_pMessage, 5, 0, 1, 5);
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

// Returns false and shows a message if the text is not a number. An empty field adds nothing.
bool CPushPanel::AddNumber(Json::Value& push, const char* member, const QLineEdit& field) {
    const QString text = field.text().trimmed();
    if (text.isEmpty()) {
        return true;
    }
    bool isNumber = false;
    push[member] = Json::UInt(text.toUInt(&isNumber));
    if (!isNumber) {
        Say(QStringLiteral("No whole number from 0 to 4294967295: %1").arg(text), false);
    }
    return isNumber;
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

void CPushPanel::Send(const char* member, const Json::Value& push) {
    Json::Value wish(Json::objectValue);
    wish[member] = push;
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    m_server.Ask("POST", QStringLiteral("/v1/push"), QByteArray::fromStdString(Json::writeString(builder, wish)), this,
                 [this](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Say(ErrorText(answer), false);
                         return;
                     }
                     Say(QStringLiteral("Sent to connections: %1").arg(answer.body["sent"].asInt()), true);
                 });
}

void CPushPanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
