#pragma once

#include <QFrame>
#include <QPointer>

#include "ISessionControl.h"

class CUserMenu;
class QHBoxLayout;
class QLabel;
class QToolButton;

/// The title bar with the product's name, the member's entry, the button for the workbench, and the user menu.
class CTitleBar : public QFrame {
    Q_OBJECT

public:
    explicit CTitleBar(QWidget* parent = nullptr);

    /// `current` is 0 if no user is logged in.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);
    /// Shows the product's name of the current edition.
    void ShowEdition();
    /// Creates the VIP entries of title bar and user menu again. They keep the language and edition of their creation,
    /// and a logout does not change them.
    void RenewVipEntries();
    QToolButton* WorkbenchButton() const { return m_pWorkbench; }

Q_SIGNALS:
    void LoginWanted(quint64 userId);
    void LogoutWanted();

private:
    void ShowTexts();

    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QHBoxLayout* m_pLayout;
    QLabel* m_pProduct;
    QPointer<QWidget> m_pVipEntry;
    QToolButton* m_pWorkbench;
    QToolButton* m_pUser;
    CUserMenu* m_pMenu;
};
