#include "workbench/server/ServerPage.h"

#include <QDateTime>
#include <QFormLayout>
#include <QVariant>

#include "TabPages.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "core/time_date.h"
#include "workbench/server/RequestForm.h"
#include "workbench/server/ScenarioEditor.h"

namespace {

constexpr int kTabMargin = 8;
constexpr int kTickMs = 500;

}  // namespace

CServerPage::CServerPage(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_pTabs(widgets::New<QTabWidget>("ServerTabs"_q, this)),
      m_pOverridden(widgets::NewLabel("AdOverridden"_q, "overridden", this)),
      m_pUser(widgets::New<QComboBox>("ServerUser"_q, nullptr, "Edited user"_q)),
      m_pWho(widgets::NewLabel("ServerUserWho"_q, "muted", nullptr)),
      m_pOfUser(new CRequestForms("UserRequests"_q, requests::OfUser(), server)),
      m_pTime(widgets::NewLabel("ClockTime"_q, "", nullptr)) {
    setObjectName("ServerTab"_q);
    m_pTabs->setDocumentMode(true);
    auto* faultForms = new CRequestForms("FaultForms"_q, requests::Faults(), server);
    std::vector<QWidget*> faults{faultForms};
    for (const RequestRow& row : requests::SetFaults()) {
        auto* form = new CRequestForm(row, server);
        faults.push_back(form);
        connect(faultForms, &CRequestForms::Accepted, form, &CRequestForm::ForgetServer);
    }
    widgets::AddScrollTab(m_pTabs, new CScenarioEditor(server), "Scenario"_q);
    AddTab("UserPage"_q, "User"_q, {widgets::NewLabel({}, "", nullptr, "Edited user"_q), m_pUser, m_pWho, m_pOfUser});
    AddTab("ServerRequestsPage"_q, "Ads and more"_q,
           {new CRequestForms("ServerRequests"_q, requests::OfServer(), server)});
    AddTab("PushPage"_q, "Pushes"_q, {new CRequestForms("Pushes"_q, requests::Pushes(), server)});
    AddTab("FaultPage"_q, "Faults"_q, faults);
    AddTab("ClockPage"_q, "Clock and popup"_q,
           {widgets::NewLabel({}, "section", nullptr, "Server clock"_q), m_pTime,
            new CRequestForm(requests::Clock(), server),
            widgets::NewLabel({}, "section", nullptr, "Overrides of the popup"_q), NewOverrides()});
    widgets::Column({m_pOverridden, {m_pTabs, 1}}, this);
    connect(m_pUser, qOverload<int>(&QComboBox::currentIndexChanged), this, &CServerPage::ShowWho);
    connect(&m_tick, &QTimer::timeout, this, &CServerPage::ShowTime);
    m_tick.start(kTickMs);
    ShowTime();
    ShowOverridden();
    ShowWho();
}

void CServerPage::AddTab(const QString& name, const QString& title, const std::vector<QWidget*>& parts) {
    auto* page = widgets::New<QWidget>(name, nullptr);
    auto* layout = widgets::Column({parts.begin(), parts.end()}, page);
    layout->setContentsMargins(0, kTabMargin, kTabMargin, 0);
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
    QStringList all;
    for (const auto& [combo, name] : {std::pair(m_pFocus, "focus "_q), std::pair(m_pSlot, "slot 2 "_q)}) {
        if (combo->currentIndex() != 0) {
            all << name + combo->currentText();
        }
    }
    m_pOverridden->setVisible(!all.isEmpty());
    m_pOverridden->setText("Overridden: "_q + all.join(" \u00B7 "_q));
    Q_EMIT OverridesChanged(all);
}

void CServerPage::ShowTime() {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(core::time_date::GetSvrTimeMillis(), Qt::UTC);
    m_pTime->setText("Server time: "_q + time.toString("yyyy-MM-dd HH:mm:ss 'UTC'"_q));
}

void CServerPage::ForgetServer() {
    const auto forms = findChildren<CRequestForm*>();
    for (CRequestForm* form : forms) {
        form->ForgetServer();
    }
}

QWidget* CServerPage::NewOverrides() {
    auto* page = widgets::New<QWidget>("PopupOverrides"_q, nullptr);
    auto* layout = new QFormLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    widgets::Choices tabs;
    for (const TabPage& tab : kTabPages) {
        tabs.emplace_back(int(tabs.size()), QString::fromUtf8(tab.page.title));
    }
    m_pTab = widgets::NewCombo("AdTab"_q, "Tab"_q, tabs, this,
                               [this](const auto& index) { Q_EMIT TabWanted(index.toInt()); });
    m_pFocus = widgets::NewCombo("AdFocus"_q, "Focus"_q, {{0, "as it is"_q}, {1, "always"_q}, {2, "never"_q}}, this,
                                 [this](const auto& answer) {
                                     Q_EMIT FocusWanted(EnFocusAnswer(answer.toInt()));
                                     ShowOverridden();
                                 });
    m_pSlot = widgets::NewCombo("AdSlotPermission"_q, "Slot 2"_q, {{false, "as it is"_q}, {true, "refused"_q}}, this,
                                [this](const auto& refused) {
                                    Q_EMIT SlotRefusalWanted(refused.toBool());
                                    ShowOverridden();
                                });
    for (QComboBox* combo : {m_pTab, m_pFocus, m_pSlot}) {
        layout->addRow(combo->accessibleName(), combo);
    }
    m_pPopupOutcome = widgets::NewOutcome("PopupOutcome"_q, this);
    layout->addRow(widgets::NewButton("AdLastShownForget"_q, "Forget when the popup was shown"_q, this,
                                      [this] { ForgetLastShown(); }));
    layout->addRow(m_pPopupOutcome);
    return page;
}

void CServerPage::ShowTab(int index) {
    widgets::Select(m_pTab, index);
}

// The module stores one time for each type of interval.
void CServerPage::ForgetLastShown() {
    constexpr int kIntervalTypes = 10;
    QString outcome = "Nothing to forget: no time is stored for this user"_q;
    bool isSaved = true;
    for (int type = 0; type < kIntervalTypes && isSaved; ++type) {
        const quint64 user = core::login_status_data::Login_GetUserID();
        const std::string key = "AdLastShowTimeStampKey_2_42_%1_%2"_q.arg(user).arg(type).toStdString();
        long shown = 0;
        if (core::config_local::AppCfgReadInt64(key, shown) && shown != 0) {
            isSaved = core::config_local::AppCfgSaveInt64(key, 0);
            outcome = isSaved ? "It is forgotten when the popup was last shown to this user"_q
                              : "The store did not take the change"_q;
        }
    }
    widgets::ShowOutcome(m_pPopupOutcome, outcome, isSaved ? widgets::EnOutcome::Good : widgets::EnOutcome::Bad);
}
