#pragma once

#include <QTimer>
#include <QWidget>
#include <vector>

#include "ISessionControl.h"
#include "workbench/ControlClient.h"

class CPopupOverrides;
class CRequestForm;
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

private:
    void AddTab(const QString& name, const QString& title, const std::vector<QWidget*>& parts);
    void ForgetAnswers();
    void ShowWho();
    void ShowOverridden();
    void ShowTime();

    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QTimer m_tick;
    QTabWidget* m_pTabs;
    QLabel* m_pOverridden;
    CScenarioEditor* m_pScenario;
    QComboBox* m_pUser;
    QLabel* m_pWho;
    CRequestForms* m_pOfUser;
    CRequestForms* m_pOfServer;
    std::vector<CRequestForm*> m_faults;  // that are set
    QLabel* m_pTime;
    CRequestForm* m_pClock;
    CPopupOverrides* m_pOverrides;
};
