#pragma once

#include <QWidget>

#include "workbench/rights/AnswerPanel.h"

class CPremiumRights;
class CTracker;

/// The workbench's page with the VIP status and the controls for rights. All arguments must outlive it.
class CRightsTab : public QWidget {
public:
    CRightsTab(CPremiumRights& rights, const CTracker& tracker, IControlClient& server, CAnswerPanel::SetFault setFault,
               QWidget* parent = nullptr);
};
