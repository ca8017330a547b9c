#pragma once

#include <QWidget>

#include "workbench/ControlClient.h"

class CAdTracker;
class CAdSwitches;
class QLabel;
class QSplitter;
class QTabWidget;

/// The tab for ads: the states of the slots, and below them pushes and overrides. `board` and `server` must outlive it.
class CAdTab : public QWidget {
public:
    CAdTab(const CAdTracker& board, IControlClient& server, QWidget* parent = nullptr);

    CAdSwitches& Switches() { return *m_pSwitches; }

private:
    void ShowOverridden();

    QSplitter* m_pSplitter;
    QTabWidget* m_pTabs;
    CAdSwitches* m_pSwitches;
    QLabel* m_pOverridden;
};
