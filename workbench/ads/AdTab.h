#pragma once

#include <QWidget>

#include "workbench/ControlClient.h"

class CAdSwitches;
class QLabel;
class QTabWidget;

/// The tab for ads: pushes and overrides. `server` must outlive it.
class CAdTab : public QWidget {
public:
    explicit CAdTab(IControlClient& server, QWidget* parent = nullptr);

    CAdSwitches& Switches() { return *m_pSwitches; }

private:
    void ShowOverridden();

    QTabWidget* m_pTabs;
    CAdSwitches* m_pSwitches;
    QLabel* m_pOverridden;
};
