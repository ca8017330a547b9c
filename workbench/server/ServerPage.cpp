#include "workbench/server/ServerPage.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QVariant>

#include "workbench/TabPages.h"
#include "workbench/server/ClockPanel.h"
#include "workbench/server/FaultTable.h"
#include "workbench/server/PopupOverrides.h"
#include "workbench/server/RequestForms.h"
#include "workbench/server/ScenarioEditor.h"

namespace {

constexpr int kUsersInSight = 16;
constexpr int kTabMargin = 8;

/// A page of the tabs, with its parts below each other.
QWidget* NewPage(const char* name, const std::vector<QWidget*>& parts) {
    auto* page = new QWidget;
    page->setObjectName(QString::fromLatin1(name));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, kTabMargin, 0, 0);
    for (QWidget* part : parts) {
        layout->addWidget(part);
    }
    layout->addStretch(1);
    return page;
}

QLabel* NewTitle(const QString& text) {
    auto* title = new QLabel(text);
    title->setProperty("role", QStringLiteral("section"));
    return title;
}

QLabel* NewPlainLabel(const char* name, const char* role, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setProperty("role", QString::fromLatin1(role));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

}  // namespace

CServerPage::CServerPage(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pTabs(new QTabWidget(this)),
      m_pOverridden(NewPlainLabel("AdOverridden", "overridden", this)),
      m_pScenario(new CScenarioEditor(server)),
      m_pUser(new QComboBox),
      m_pWho(NewPlainLabel("ServerUserWho", "muted", nullptr)),
      m_pOfUser(new CRequestForms("UserRequests", requests::OfUser(), server)),
      m_pOfServer(new CRequestForms("ServerRequests", requests::OfServer(), server)),
      m_pFaults(new CFaultTable(server)),
      m_pClock(new CClockPanel(server)),
      m_pOverrides(new CPopupOverrides) {
    setObjectName(QStringLiteral("ServerTab"));
    m_pTabs->setObjectName(QStringLiteral("ServerTabs"));
    m_pTabs->setDocumentMode(true);
    AddTab(m_pScenario, QStringLiteral("Scenario"));
    AddTab(NewUserTab(), QStringLiteral("User"));
    AddTab(NewPage("ServerRequestsPage", {m_pOfServer}), QStringLiteral("Ads and more"));
    AddTab(NewPage("PushPage", {new CRequestForms("Pushes", requests::Pushes(), server)}), QStringLiteral("Pushes"));
    AddTab(NewFaultTab(), QStringLiteral("Faults"));
    AddTab(NewClockTab(), QStringLiteral("Clock and popup"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pOverridden);
    layout->addWidget(m_pTabs, 1);
    connect(m_pOverrides, &CPopupOverrides::OverridesChanged, this, &CServerPage::ShowOverridden);
    connect(m_pScenario, &CScenarioEditor::Applied, this, [this] {
        m_pOfUser->ForgetServer();
        m_pOfServer->ForgetServer();
    });
    // The editor shows what the server runs, unless it has edits of its own.
    for (const CRequestForms* forms : {m_pOfUser, m_pOfServer}) {
        connect(forms, &CRequestForms::Accepted, m_pScenario, &CScenarioEditor::ForgetServer);
    }
    ShowOverridden();
    ShowWho();
}

void CServerPage::AddTab(QWidget* page, const QString& title) {
    auto* scroll = new QScrollArea(PagesOf(m_pTabs));
    scroll->setObjectName(page->objectName() + QStringLiteral("Scroll"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(page);
    // The background behind the area shows through.
    page->setAutoFillBackground(false);
    scroll->viewport()->setAutoFillBackground(false);
    m_pTabs->addTab(scroll, title);
}

QWidget* CServerPage::NewUserTab() {
    m_pUser->setObjectName(QStringLiteral("ServerUser"));
    m_pUser->setAccessibleName(QStringLiteral("Edited user"));
    m_pUser->setMaxVisibleItems(kUsersInSight);
    auto* who = new QWidget;
    auto* layout = new QFormLayout(who);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addRow(QStringLiteral("Edited user"), m_pUser);
    layout->addRow(m_pWho);
    connect(m_pUser, qOverload<int>(&QComboBox::currentIndexChanged), this, &CServerPage::ShowWho);
    return NewPage("UserPage", {who, m_pOfUser});
}

QWidget* CServerPage::NewFaultTab() {
    auto* forms = new CRequestForms("FaultForms", requests::Faults(), m_server);
    connect(forms, &CRequestForms::Accepted, m_pFaults, &CFaultTable::Refresh);
    return NewPage("FaultPage", {m_pFaults, forms});
}

QWidget* CServerPage::NewClockTab() {
    return NewPage("ClockPage", {NewTitle(QStringLiteral("Server clock")), m_pClock,
                                 NewTitle(QStringLiteral("Overrides of the popup")), m_pOverrides});
}

void CServerPage::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    const bool follows = current != 0 && current != m_nCurrent && !m_pOfUser->IsEdited();
    const QVariant wanted = follows ? QVariant(current) : m_pUser->currentData();
    m_users = users;
    m_nCurrent = current;
    {
        const QSignalBlocker blocker(m_pUser);
        m_pUser->clear();
        for (const ServerUser& user : users) {
            m_pUser->addItem(QStringLiteral("%1  %2").arg(user.name).arg(user.id), user.id);
        }
        m_pUser->setCurrentIndex(users.empty() ? -1 : std::max(0, m_pUser->findData(wanted)));
    }
    ShowWho();
}

void CServerPage::ShowWho() {
    const quint64 edited = m_pUser->currentData().toULongLong();
    m_pOfUser->setEnabled(edited != 0);
    if (edited != 0) {
        for (CRequestForm* form : m_pOfUser->Forms()) {
            form->SetUser(QString::number(edited));
        }
    }
    QString loggedIn = QString::number(m_nCurrent);
    for (const ServerUser& user : m_users) {
        if (user.id == m_nCurrent) {
            loggedIn = QStringLiteral("%1 (%2)").arg(user.name, QString::number(user.id));
        }
    }
    if (m_nCurrent == 0) {
        m_pWho->setText(QStringLiteral("Nobody is logged in"));
    } else if (edited == m_nCurrent) {
        m_pWho->setText(QStringLiteral("The edited user is logged in"));
    } else {
        m_pWho->setText(QStringLiteral("Another user is logged in: %1").arg(loggedIn));
    }
}

void CServerPage::ShowOverridden() {
    const QStringList all = m_pOverrides->Overridden();
    m_pOverridden->setVisible(!all.isEmpty());
    m_pOverridden->setText(QStringLiteral("Overridden: %1").arg(all.join(QStringLiteral(" \u00B7 "))));
}

void CServerPage::ForgetServer() {
    m_pScenario->ForgetServer();
    m_pOfUser->ForgetServer();
    m_pOfServer->ForgetServer();
    m_pClock->ForgetServer();
    if (m_pFaults->isVisible()) {
        m_pFaults->Refresh();
    }
}
