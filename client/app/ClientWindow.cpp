#include "ClientWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>

#include "Composition.h"
#include "Navigation.h"
#include "core/environment.h"
#include "core/login_status_data.h"
#include "core/uniform_resource_slot.h"
#include "workbench/Workbench.h"
#include "workbench/server/ServerPage.h"

CClientWindow::CClientWindow(CComposition& composition) : CMainWindow(composition), m_composition(composition) {
    composition.SetMainFrame({[this] { return this; }, [this] { return kTabPages[size_t(Tab())].tab; },
                              [this] { return HasFocus(); }, [this] { return Navigation().IsCollapsed(); }});
    composition.SetPageHandler([this](const QUrl& url) { return OpenPage(url); });
    connect(&composition, &CComposition::ModulesReady, this, &CClientWindow::NotifyTab);
    connect(&composition, &CComposition::ModulesReady, &m_chatAppearance, &CAIChatAppearance::Offer);
}

CClientWindow::~CClientWindow() {
    m_composition.ClearMainFrame();
    m_composition.SetPageHandler(nullptr);
}

// A window of a web page may stay open, so that the last window is another one.
void CClientWindow::closeEvent(QCloseEvent* event) {
    CMainWindow::closeEvent(event);
    QCoreApplication::quit();
}

bool CClientWindow::HasFocus() const {
    return m_focusAnswer == EnFocusAnswer::AsItIs ? isActiveWindow() : m_focusAnswer == EnFocusAnswer::Always;
}

void CClientWindow::OnTabChanged(int index) {
    if (m_pWorkbench) {
        m_pWorkbench->Server().ShowTab(index);
    }
    NotifyTab();
}

void CClientWindow::NotifyTab() {
    m_composition.NotifyTabChanged(kTabPages[size_t(Tab())].tab);
}

QWidget* CClientWindow::NewDockContent(QWidget* parent) {
    m_pWorkbench = new CWorkbench(m_composition, Entries(), Rights(), m_composition.Control(), parent);
    ConnectSources();
    ConnectSession();
    ConnectOverrides();
    return m_pWorkbench;
}

// Connects before it reads the recorded entries, so that none is lost. The models drop duplicates by their numbers. A
// line is written after the event that caused it, but a request is recorded after its line.
void CClientWindow::ConnectSources() {
    connect(&m_composition.Log(), &ILogSource::Written, m_pWorkbench, &CWorkbench::TakeLine, Qt::QueuedConnection);
    connect(&m_composition.Trace(), &ITraceSource::Recorded, m_pWorkbench, &CWorkbench::Take, Qt::QueuedConnection);
    std::deque<LogEntry> lines = m_composition.Log().Kept();
    for (const TraceEvent& event : m_composition.Trace().Kept()) {
        const auto* command = std::get_if<CommandTrace>(&event.what);
        const qint64 afterMs = event.timeMs + (command && command->kind == CommandTrace::EnKind::Sent ? 1 : 0);
        for (; !lines.empty() && lines.front().time.toMSecsSinceEpoch() < afterMs; lines.pop_front()) {
            m_pWorkbench->TakeLine(lines.front());
        }
        m_pWorkbench->Take(event);
    }
    for (const LogEntry& entry : lines) {
        m_pWorkbench->TakeLine(entry);
    }
}

void CClientWindow::ConnectSession() {
    connect(&m_composition, &CComposition::SessionRenewed, this, &CClientWindow::UpdateAliases);
    connect(&m_composition, &CComposition::ServerReady, m_pWorkbench, &CWorkbench::ForgetServer);
    connect(&m_composition, &CComposition::UsersChanged, this, &CClientWindow::UpdateAliases);
    connect(&m_composition, &CComposition::UserChanged, this, &CClientWindow::UpdateAliases);
    UpdateAliases();
}

void CClientWindow::ConnectOverrides() {
    CServerPage& overrides = m_pWorkbench->Server();
    overrides.ShowTab(Tab());
    connect(&overrides, &CServerPage::TabWanted, &Navigation(), &CNavigation::Choose);
    connect(&overrides, &CServerPage::FocusWanted, this, [this](EnFocusAnswer answer) { m_focusAnswer = answer; });
    connect(&overrides, &CServerPage::SlotRefusalWanted, this,
            [this](bool refused) { m_composition.AllowSlot(kSlotAdPopup, !refused); });
}

// Each login has its own session id. The ids of former sessions are still in the log and in the trace.
void CClientWindow::UpdateAliases() {
    CRedactor& aliases = m_pWorkbench->Aliases();
    for (const ServerUser& user : m_composition.Users()) {
        aliases.AddSecretNumber(QStringLiteral("user"), user.id);
        aliases.AddSecretText(QStringLiteral("name"), user.name);
    }
    aliases.AddSecretNumber(QStringLiteral("user"), m_composition.UserId());
    aliases.AddSecretNumber(QStringLiteral("session"), core::login_status_data::GetSessionId());
    aliases.AddSecretText(QStringLiteral("device"), QString::fromStdString(core::environment::GetDeviceId()));
    aliases.AddSecretText(QStringLiteral("token"), QString::fromLatin1(m_composition.ServerToken()));
}
