#pragma once

#include <QTimer>
#include <QWidget>
#include <vector>

#include "workbench/ControlClient.h"
#include "workbench/Widgets.h"

class CRequestForms;

/// The main window's answer to a module that requests its focus state.
enum class EnFocusAnswer { AsItIs, Always, Never };

/// The workbench's page that changes the server: scenario, answers to a user, ads, pushes, faults and clock, and the
/// overrides of the popup's display conditions, which last until the client ends. `server` must outlive it.
class CServerPage : public QWidget {
    Q_OBJECT

public:
    explicit CServerPage(IControlClient& server, QWidget* parent = nullptr);

    /// `current` is 0 if no user is logged in. The edited user is kept if possible, and follows a login if its answers
    /// have no unsaved edits.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);

    /// Must be called for a new or restarted server.
    void ForgetServer();

    /// Must be called when the window shows another tab. `index` is its index in kTabPages.
    void ShowTab(int index);

Q_SIGNALS:
    void TabWanted(int index);
    void FocusWanted(EnFocusAnswer answer);
    /// `refused` is true if all requests for the popups' interruption slot must be refused.
    void SlotRefusalWanted(bool refused);
    /// `all` describes the active overrides.
    void OverridesChanged(const QStringList& all);

private:
    QWidget* NewOverrides();
    void ForgetLastShown();
    void AddTab(const QString& name, const QString& title, const std::vector<QWidget*>& parts);
    void ShowWho();
    void ShowOverridden();
    void ShowTime();

    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QTimer m_tick;
    QTabWidget* m_pTabs;
    QLabel* m_pOverridden;
    QComboBox* m_pUser;
    QLabel* m_pWho;
    CRequestForms* m_pOfUser;
    QLabel* m_pTime;
    QComboBox* m_pTab;
    QComboBox* m_pFocus;
    QComboBox* m_pSlot;
    QLabel* m_pPopupOutcome;
};
