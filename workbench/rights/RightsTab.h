#pragma once

#include <QWidget>

#include "workbench/rights/AnswerPanel.h"

class CPremiumRights;
class CRefreshBoard;
class CWireDecoder;

/// The workbench's page on rights and VIP status: how they stand, how they were refreshed, and what can be done
/// to them. All that it is given must outlive it.
class CRightsTab : public QWidget {
public:
    CRightsTab(const CPremiumRights& rights, const CRefreshBoard& board, const CWireDecoder& decoder,
               IControlClient& server, CAnswerPanel::SetFault setFault, QWidget* parent = nullptr);
};
