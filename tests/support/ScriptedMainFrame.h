#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "modules/ZRTabFrameKey.h"

/// The main window as other modules see it. There is none until the test offers one.
class CScriptedMainFrame {
public:
    CScriptedMainFrame();
    ~CScriptedMainFrame();

    /// Registers a main frame for a window that the test owns. Null for a window that is being closed.
    void Offer(QWidget* window);
    void TakeAway();

    void SetTabKey(int64_t key);
    void SetFocusIn(bool focused);
    void SetNavigationCollapsed(bool collapsed);

    struct State {
        bool offered = false;
        QPointer<QWidget> window;
        int64_t tabKey = 0;
        bool focused = true;
        bool collapsed = false;
    };

private:
    // Shared with the plug-in centre, which may outlive the test.
    const std::shared_ptr<State> m_pState = std::make_shared<State>();
};
