#include "workbench/rights/PushPanel.h"

#include <json/writer.h>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

#include "Theme.h"
#include "workbench/ServerWords.h"
#include "workbench/rights/NumberList.h"

namespace {

enum EnNeedAll { kLeftOutOfPush, kNeedAllYes, kNeedAllNo };

template <class Widget>
Widget* New(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QLabel* NewTitle(texts::EnText text, const char* role, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setProperty("role", QString::fromLatin1(role));
    texts::Keep(label, text);
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
    texts::Keep(this, [this] { ShowTexts(); });
}

void CPushPanel::AddRows(QGridLayout* grid) {
    auto* sendPremium = New<QPushButton>("PushPremium", this);
    auto* sendVip = New<QPushButton>("PushVip", this);
    texts::Keep(sendPremium, texts::kPushSend);
    texts::Keep(sendVip, texts::kPushSend);
    for (int choice = kLeftOutOfPush; choice <= kNeedAllNo; ++choice) {
        m_pNeedAll->addItem(QString());
    }
    m_pDelay->setText(QStringLiteral("5"));
    m_pNeedAll->setCurrentIndex(kNeedAllYes);
    m_pWindow->setText(QStringLiteral("5"));
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    grid->addWidget(NewTitle(texts::kPushPremium, "strong", this), 0, 0, 1, 5);
    grid->addWidget(NewTitle(texts::kPushDelay, "muted", this), 1, 0);
    grid->addWidget(m_pDelay, 1, 1);
    grid->addWidget(NewTitle(texts::kPushAll, "muted", this), 1, 2);
    grid->addWidget(m_pNeedAll, 1, 3, 1, 2);
    grid->addWidget(NewTitle(texts::kPushList, "muted", this), 2, 0);
    grid->addWidget(m_pRights, 2, 1, 1, 3);
    grid->addWidget(sendPremium, 2, 4);
    grid->addWidget(NewTitle(texts::kPushVip, "strong", this), 3, 0, 1, 5);
    grid->addWidget(NewTitle(texts::kPushWindow, "muted", this), 4, 0);
    grid->addWidget(m_pWindow, 4, 1, 1, 3);
    grid->addWidget(sendVip, 4, 4);
    grid->addWidget(m_pMessage, 5, 0, 1, 5);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(6, 1);
    connect(sendPremium, &QPushButton::clicked, this, &CPushPanel::SendPremium);
    connect(sendVip, &QPushButton::clicked, this, &CPushPanel::SendVip);
}

// The hint comes only as text where a field is empty, which is when it counts.
void CPushPanel::ShowTexts() {
    m_pNeedAll->setItemText(kLeftOutOfPush, texts::Tr(texts::kLeftOut));
    m_pNeedAll->setItemText(kNeedAllYes, texts::Tr(texts::kYes));
    m_pNeedAll->setItemText(kNeedAllNo, texts::Tr(texts::kNo));
    for (QLineEdit* field : {m_pDelay, m_pRights, m_pWindow}) {
        field->setPlaceholderText(texts::Tr(texts::kLeftOut));
    }
}

// False, with words for the user, for what is no number; an empty field adds nothing.
bool CPushPanel::AddNumber(Json::Value& push, const char* member, const QLineEdit& field) {
    const QString text = field.text().trimmed();
    if (text.isEmpty()) {
        return true;
    }
    bool isNumber = false;
    push[member] = Json::UInt(text.toUInt(&isNumber));
    if (!isNumber) {
        Say(texts::Tr(texts::kSecondsWrong).arg(text), false);
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
        Say(texts::Tr(texts::kRightsWrong).arg(rights.wrongWord), false);
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
                         Say(WordsOf(answer), false);
                         return;
                     }
                     Say(texts::Tr(texts::kPushSent).arg(answer.body["sent"].asInt()), true);
                 });
}

void CPushPanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
