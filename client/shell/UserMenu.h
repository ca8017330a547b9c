#pragma once

#include <QPointer>

#include "ISessionControl.h"
#include "ui/ZAction.h"
#include "ui/ZMenu.h"

class QLineEdit;
class QWidgetAction;

/// The menu of users, membership, logout and help. Typed text filters the users by name and number. Enter logs in the
/// first of them.
class CUserMenu : public ZMenu {
    Q_OBJECT

public:
    explicit CUserMenu(QWidget* parent = nullptr);

    /// `current` is 0 if no user is logged in.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);

    /// Creates the module's entries. The one of the VIP membership is created again each time, because it keeps the
    /// language and edition of its creation.
    void RenewEntries();

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
    QPointer<ZAction> m_pPremiumEntry;
    QPointer<ZAction> m_pVipEntry;
};
