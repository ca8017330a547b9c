#pragma once

#include <QFrame>

#include "ServerControl.h"

class CUserMenu;
class QLabel;
class QToolButton;

/// The strip at the window's head: the product's name, the workbench's switch, and who is logged in with
/// the menu to change that.
class CTitleBar : public QFrame {
    Q_OBJECT

public:
    explicit CTitleBar(QWidget* parent = nullptr);

    /// `current` is 0 if nobody is logged in.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);
    /// The product's name as the edition of the moment has it.
    void ShowEdition();
    QToolButton* WorkbenchButton() const { return m_pWorkbench; }

Q_SIGNALS:
    void LoginWanted(quint64 userId);
    void LogoutWanted();

private:
    void ShowTexts();

    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QLabel* m_pProduct;
    QToolButton* m_pWorkbench;
    QToolButton* m_pUser;
    CUserMenu* m_pMenu;
};
