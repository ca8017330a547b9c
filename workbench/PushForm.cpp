#include "workbench/PushForm.h"

#include <QLineEdit>

#include "Theme.h"
#include "framework/JsonText.h"
#include "workbench/PanelWidgets.h"
#include "workbench/ServerText.h"

CPushForm::CPushForm(IControlClient& server, const char* message, QWidget* parent)
    : QWidget(parent), m_server(server), m_pMessage(panel::New<QLabel>(message, this)) {
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
}

bool CPushForm::AddNumber(Json::Value& push, const char* member, const QLineEdit& field) {
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

void CPushForm::Send(const char* member, const Json::Value& push) {
    Json::Value wish(Json::objectValue);
    wish[member] = push;
    m_server.Ask("POST", QStringLiteral("/v1/push"), QByteArray::fromStdString(host::OneLine(wish)), this,
                 [this](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Say(ErrorText(answer), false);
                         return;
                     }
                     Say(QStringLiteral("Sent to connections: %1").arg(answer.body["sent"].asInt()), true);
                 });
}

void CPushForm::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
