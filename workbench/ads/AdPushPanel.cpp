#include "workbench/ads/AdPushPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVariant>

#include "workbench/PanelWidgets.h"
#include "workbench/diagnosis/AdRequest.h"

namespace {

/// A push in the server's control API.
struct AdPush {
    const char* member;
    const char* name;
    const char* ids;  // the member with its list of ads; null if there is none
    const char* idsTitle;
};

constexpr AdPush kPushes[] = {
    {"adChange", "Change of ads, 20145", "offlineAdIds", "Taken offline"},
    {"adCheck", "Ads to check, 20170", "adIds", "Ad ids"},
    {"adNew", "New ads, 20171", nullptr, "Ad ids"},
};

}  // namespace

CAdPushPanel::CAdPushPanel(IControlClient& server, QWidget* parent)
    : CPushForm(server, "AdPushMessage", parent),
      m_pPush(panel::New<QComboBox>("AdPush", this)),
      m_pType(panel::New<QLineEdit>("AdPushType", this)),
      m_pPosition(panel::New<QLineEdit>("AdPushPosition", this)),
      m_pDelay(panel::New<QLineEdit>("AdPushDelay", this)),
      m_pIdsTitle(panel::New<QLabel>("AdPushIdsTitle", this)),
      m_pIds(panel::New<QLineEdit>("AdPushIds", this)) {
    auto* grid = panel::NewGrid("AdPushPanel", this);
    AddRows(grid);
    ShowTexts();
}

void CAdPushPanel::AddRows(QGridLayout* grid) {
    auto* send = panel::New<QPushButton>("AdPushSend", this);
    send->setText(QStringLiteral("Send"));
    for (size_t push = 0; push < std::size(kPushes); ++push) {
        m_pPush->addItem(QString());
    }
    m_pType->setText(QString::number(kBottomPopup.type));
    m_pPosition->setText(QString::number(kBottomPopup.position));
    m_pDelay->setText(QStringLiteral("0"));
    m_pIdsTitle->setProperty("role", QStringLiteral("muted"));
    grid->addWidget(panel::NewTitle(QStringLiteral("Push"), this), 0, 0);
    grid->addWidget(m_pPush, 0, 1, 1, 5);
    grid->addWidget(panel::NewTitle(QStringLiteral("Type"), this), 1, 0);
    grid->addWidget(m_pType, 1, 1);
    grid->addWidget(panel::NewTitle(QStringLiteral("Position"), this), 1, 2);
    grid->addWidget(m_pPosition, 1, 3);
    grid->addWidget(panel::NewTitle(QStringLiteral("Delay, s"), this), 1, 4);
    grid->addWidget(m_pDelay, 1, 5);
    grid->addWidget(m_pIdsTitle, 2, 0);
    grid->addWidget(m_pIds, 2, 1, 1, 4);
    grid->addWidget(send, 2, 5);
    grid->addWidget(Message(), 3, 0, 1, 6);
    for (const int column : {1, 3, 5}) {
        grid->setColumnStretch(column, 1);
    }
    grid->setRowStretch(4, 1);
    connect(m_pPush, qOverload<int>(&QComboBox::currentIndexChanged), this, &CAdPushPanel::ShowIds);
    connect(send, &QPushButton::clicked, this, &CAdPushPanel::Send);
}

void CAdPushPanel::ShowTexts() {
    for (int push = 0; push < m_pPush->count(); ++push) {
        m_pPush->setItemText(push, QString::fromUtf8(kPushes[push].name));
    }
    for (QLineEdit* field : {m_pType, m_pPosition, m_pDelay}) {
        field->setPlaceholderText(QStringLiteral("left out"));
    }
    ShowIds();
}

// The typed ids are kept for the pushes that have ids.
void CAdPushPanel::ShowIds() {
    const AdPush& push = kPushes[m_pPush->currentIndex()];
    m_pIdsTitle->setText(QString::fromUtf8(push.idsTitle));
    m_pIdsTitle->setEnabled(push.ids);
    m_pIds->setEnabled(push.ids);
    m_pIds->setPlaceholderText(push.ids ? QStringLiteral("left out") : QString());
}

void CAdPushPanel::Send() {
    const AdPush& form = kPushes[m_pPush->currentIndex()];
    Json::Value push(Json::objectValue);
    if (!AddNumber(push, "adType", *m_pType) || !AddNumber(push, "adPosition", *m_pPosition) ||
        !AddNumber(push, "delay", *m_pDelay)) {
        return;
    }
    if (form.ids) {
        static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
        const QStringList ids = m_pIds->text().split(separators, Qt::SkipEmptyParts);
        for (const QString& id : ids) {
            push[form.ids].append(id.toStdString());
        }
    }
    CPushForm::Send(form.member, push);
}
