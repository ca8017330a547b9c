#pragma once

#include <QWidget>

#include "workbench/ControlClient.h"

class CAdBoard;
class CAdSwitches;
class QLabel;
class QSplitter;
class QTabWidget;

/// All that concerns ads: how the slots stand, and below it what a tester sends and overrides. `board` and `server`
/// must outlive it.
class CAdTab : public QWidget {
public:
    CAdTab(const CAdBoard& board, IControlClient& server, QWidget* parent = nullptr);

    CAdSwitches& Switches() { return *m_pSwitches; }

private:
    void ShowOverridden();

    QSplitter* m_pSplitter;
    QTabWidget* m_pTabs;
    CAdSwitches* m_pSwitches;
    QLabel* m_pOverridden;
};
