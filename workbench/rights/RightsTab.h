#pragma once

#include <QWidget>

class CPremiumRights;
class CRefreshTracker;
class CWireDecoder;

/// The workbench's page for rights and VIP status: their values and their refreshes. All arguments must outlive it.
class CRightsTab : public QWidget {
public:
    CRightsTab(CPremiumRights& rights, const CRefreshTracker& board, const CWireDecoder& decoder,
               QWidget* parent = nullptr);
};
