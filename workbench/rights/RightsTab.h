#pragma once

#include <QWidget>

class CPremiumRights;

/// The workbench's page with the VIP status and the VIP gallery. `rights` must outlive it.
class CRightsTab : public QWidget {
public:
    explicit CRightsTab(CPremiumRights& rights, QWidget* parent = nullptr);
};
