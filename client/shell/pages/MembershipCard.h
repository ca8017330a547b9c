#pragma once

#include <QFrame>
#include <vector>

class CElidedLabel;
class CPremiumRights;
class ISessionControl;
class QGridLayout;
class QLabel;

/// The user's membership: name, edition, VIP status, the states of all rights by number, and some rights with their
/// icons and tags. Its link leads to the membership centre, the target of tags and masks. The arguments must outlive
/// it.
class CMembershipCard : public QFrame {
    Q_OBJECT

public:
    CMembershipCard(const ISessionControl& session, const CPremiumRights& rights, QWidget* parent);

private:
    QWidget* NewHead();
    QGridLayout* NewStatus();
    QGridLayout* NewRights();
    void Show();
    void ShowStatus();
    void ShowRights();

    const ISessionControl& m_session;
    const CPremiumRights& m_rights;
    CElidedLabel* m_pName;
    std::vector<QLabel*> m_status;
    std::vector<CElidedLabel*> m_titles;  // of the rights
    std::vector<QLabel*> m_states;
};
