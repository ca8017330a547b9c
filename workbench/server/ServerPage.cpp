#include "workbench/server/ServerPage.h"

#include <QDateTime>
#include <QVariant>

#include "core/time_date.h"
#include "workbench/Widgets.h"
#include "workbench/server/PopupOverrides.h"
#include "workbench/server/RequestForm.h"
#include "workbench/server/ScenarioEditor.h"

namespace {

constexpr int kUsersInSight = 16;
constexpr int kTabMargin = 8;
constexpr int kTickMs = 500;

}  // namespace

CServerPage::CServerPage(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_pTabs(widgets::New<QTabWidget>("ServerTabs"_q, this)),
      m_pOverridden(widgets::NewLabel("AdOverridden"_q, "overridden", this)),
      m_pScenario(new CScenarioEditor(server)),
      m_pUser(widgets::New<QComboBox>("ServerUser"_q, nullptr, "Edited user"_q)),
      m_pWho(widgets::NewLabel("ServerUserWho"_q, "muted", nullptr)),
      m_pOfUser(new CRequestForms("UserRequests"_q, requests::OfUser(), server)),
      m_pOfServer(new CRequestForms("ServerRequests"_q, requests::OfServer(), server)),
      m_pTime(widgets::NewLabel("ClockTime"_q, "", nullptr)),
      m_pClock(new CRequestForm(requests::Clock(), server)),
      m_pOverrides(new CPopupOverrides) {
    setObjectName("ServerTab"_q);
    m_pTabs->setDocumentMode(true);
    m_pUser->setMaxVisibleItems(kUsersInSight);
    for (const RequestRow& row : requests::SetFaults()) {
        m_faults.push_back(new CRequestForm(row, server));
    }
    auto* faultForms = new CRequestForms("FaultForms"_q, requests::Faults(), server);
    widgets::AddScrollTab(m_pTabs, m_pScenario, "Scenario"_q);
    AddTab("UserPage"_q, "User"_q, {widgets::NewLabel({}, "", nullptr, "Edited user"_q), m_pUser, m_pWho, m_pOfUser});
    AddTab("ServerRequestsPage"_q, "Ads and more"_q, {m_pOfServer});
    AddTab("PushPage"_q, "Pushes"_q, {new CRequestForms("Pushes"_q, requests::Pushes(), server)});
    AddTab("FaultPage"_q, "Faults"_q, {faultForms, m_faults[0], m_faults[1]});
    AddTab("ClockPage"_q, "Clock and popup"_q,
           {widgets::NewLabel({}, "section", nullptr, "Server clock"_q), m_pTime, m_pClock,
            widgets::NewLabel({}, "section", nullptr, "Overrides of the popup"_q), m_pOverrides});
    widgets::Column({m_pOverridden, {m_pTabs, 1}}, this);
    connect(m_pUser, qOverload<int>(&QComboBox::currentIndexChanged), this, &CServerPage::ShowWho);
    for (CRequestForm* faults : m_faults) {
        connect(faultForms, &CRequestForms::Accepted, faults, &CRequestForm::ForgetServer);
    }
    connect(m_pOverrides, &CPopupOverrides::OverridesChanged, this, &CServerPage::ShowOverridden);
    connect(m_pScenario, &CScenarioEditor::Applied, this, &CServerPage::ForgetAnswers);
    // The editor shows what the server runs, unless it has edits of its own.
    for (const CRequestForms* forms : {m_pOfUser, m_pOfServer}) {
        connect(forms, &CRequestForms::Accepted, m_pScenario, &CScenarioEditor::ForgetServer);
    }
    connect(&m_tick, &QTimer::timeout, this, &CServerPage::ShowTime);
    m_tick.start(kTickMs);
    ShowTime();
    ShowOverridden();
    ShowWho();
}

void CServerPage::AddTab(const QString& name, const QString& title, const std::vector<QWidget*>& parts) {
    auto* page = widgets::New<QWidget>(name, nullptr);
    auto* layout = widgets::Column({parts.begin(), parts.end()}, page);
    layout->setContentsMargins(0, kTabMargin, 0, 0);
    layout->addStretch(1);
    widgets::AddScrollTab(m_pTabs, page, title);
}

void CServerPage::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    const bool follows = current != 0 && current != m_nCurrent && !m_pOfUser->IsEdited();
    m_users = users;
    m_nCurrent = current;
    widgets::ShowUsers(m_pUser, users, follows ? QVariant(current) : m_pUser->currentData());
    ShowWho();
}

void CServerPage::ShowWho() {
    const quint64 edited = m_pUser->currentData().toULongLong();
    m_pOfUser->setEnabled(edited != 0);
    if (edited != 0) {
        m_pOfUser->SetUser(QString::number(edited));
    }
    m_pWho->setText(m_nCurrent == 0        ? "Nobody is logged in"_q
                    : edited == m_nCurrent ? "The edited user is logged in"_q
                                           : "Another user is logged in: "_q + widgets::UserText(m_users, m_nCurrent));
}

void CServerPage::ShowOverridden() {
    const QStringList all = m_pOverrides->Overridden();
    m_pOverridden->setVisible(!all.isEmpty());
    m_pOverridden->setText("Overridden: "_q + all.join(" \u00B7 "_q));
}

void CServerPage::ShowTime() {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(core::time_date::GetSvrTimeMillis(), Qt::UTC);
    m_pTime->setText("Server time: "_q + time.toString("yyyy-MM-dd HH:mm:ss 'UTC'"_q));
}

void CServerPage::ForgetAnswers() {
    m_pOfUser->ForgetServer();
    m_pOfServer->ForgetServer();
}

void CServerPage::ForgetServer() {
    m_pScenario->ForgetServer();
    ForgetAnswers();
    m_pClock->ForgetServer();
    for (CRequestForm* faults : m_faults) {
        faults->ForgetServer();
    }
}
