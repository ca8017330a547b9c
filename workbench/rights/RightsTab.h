#pragma once

#include <QWidget>

#include "workbench/rights/AnswerPanel.h"

class CPremiumRights;
class CRefreshTracker;
class CWireDecoder;

/// The workbench's page for rights and VIP status: their values, their refreshes, and controls for both. All arguments
/// must outlive it.
class CRightsTab : public QWidget {
public:
    CRightsTab(CPremiumRights& rights, const CRefreshTracker& board, const CWireDecoder& decoder,
               IControlClient& server, CAnswerPanel::SetFault setFault, QWidget* parent = nullptr);
};
