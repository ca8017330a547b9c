#pragma once

#include <QWidget>
#include <vector>

class CPremiumRights;
class QLabel;

/// Shows the VIP status live. `rights` must outlive it.
class CVipPanel : public QWidget {
public:
    explicit CVipPanel(const CPremiumRights& rights, QWidget* parent = nullptr);

private:
    void Show();

    const CPremiumRights& m_rights;
    std::vector<QLabel*> m_values;
};
