#pragma once

#include <QDockWidget>

#include "ServerControl.h"
#include "workbench/LogView.h"

class CAIChatEntries;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;

/// The dock for those who work on the modules: who is logged in, in which language, how the AI chat entries
/// stand and whether they are overridden, and the log. `entries` must outlive it.
class CWorkbench : public QDockWidget {
    Q_OBJECT

public:
    explicit CWorkbench(CAIChatEntries& entries, QWidget* parent = nullptr);

    /// `current` is 0 if nobody is logged in. The choice in the list stays where it can.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);
    void ShowLanguage(int languageId);
    CLogModel& Log() { return m_pLog->Model(); }

Q_SIGNALS:
    void LoginWanted(quint64 userId);
    void LogoutWanted();
    void LanguageWanted(int languageId);
    void ThemeWanted(int number);

private:
    void AddUserRow(QGridLayout* grid);
    void AddLanguageRow(QGridLayout* grid);
    void AddThemeRow(QGridLayout* grid);
    void AddOverrideRow(QGridLayout* grid);
    void ShowUserTexts();
    void ShowTheme();
    void ShowOverride();

    CAIChatEntries& m_entries;
    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QComboBox* m_pUser;
    QLabel* m_pWho;
    QPushButton* m_pLogin;
    QPushButton* m_pLogout;
    QComboBox* m_pLanguage;
    QComboBox* m_pTheme;
    QComboBox* m_pOverride;
    CLogView* m_pLog;
};
