#pragma once

#include <QWidget>
#include <vector>

#include "ISessionControl.h"
#include "workbench/ControlClient.h"

class CClockPanel;
class CFaultTable;
class CPopupOverrides;
class CRequestForms;
class CScenarioEditor;
class QComboBox;
class QLabel;
class QTabWidget;

/// The workbench's page that changes the server: scenario, answers to a user, ads, pushes, faults and clock, and the
/// overrides of the popup. `server` must outlive it.
class CServerPage : public QWidget {
    Q_OBJECT

public:
    explicit CServerPage(IControlClient& server, QWidget* parent = nullptr);

    /// `current` is 0 if no user is logged in. The edited user is kept if possible, and follows a login if its answers
    /// have no unsaved edits.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);

    /// Must be called for a new or restarted server.
    void ForgetServer();

    CPopupOverrides& Overrides() { return *m_pOverrides; }
    const CClockPanel& Clock() const { return *m_pClock; }
    const CFaultTable& Faults() const { return *m_pFaults; }
    const CScenarioEditor& Scenario() const { return *m_pScenario; }

private:
    QWidget* NewUserTab();
    QWidget* NewFaultTab();
    QWidget* NewClockTab();
    void AddTab(QWidget* page, const QString& title);
    void ShowWho();
    void ShowOverridden();

    IControlClient& m_server;
    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QTabWidget* m_pTabs;
    QLabel* m_pOverridden;
    CScenarioEditor* m_pScenario;
    QComboBox* m_pUser;
    QLabel* m_pWho;
    CRequestForms* m_pOfUser;
    CRequestForms* m_pOfServer;
    CFaultTable* m_pFaults;
    CClockPanel* m_pClock;
    CPopupOverrides* m_pOverrides;
};
