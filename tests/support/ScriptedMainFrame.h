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

    /// From now on there is a main frame, of a window that the test owns; null: it is going.
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
    // Shared with what the plug-in centre holds, which may outlive the test.
    const std::shared_ptr<State> m_pState = std::make_shared<State>();
};
