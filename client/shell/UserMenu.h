#pragma once

#include <QMenu>

#include "ServerControl.h"

class QLineEdit;
class QWidgetAction;

/// Who may log in, the logout, and the help. What is typed narrows the users down to those whose name or number
/// holds it, and Enter takes the first of them.
class CUserMenu : public QMenu {
    Q_OBJECT

public:
    explicit CUserMenu(QWidget* parent = nullptr);

    /// `current` is 0 if nobody is logged in.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);

Q_SIGNALS:
    void LoginWanted(quint64 userId);
    void LogoutWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidgetAction* NewFind();
    void Narrow();
    bool IsForFind(const QKeyEvent& event) const;

    QLineEdit* m_pFind;
    QAction* m_pFindAction;
    QAction* m_pUsersEnd;
    QAction* m_pLogout;
    QList<QAction*> m_users;
};
