#pragma once

#include <QObject>
#include <functional>

class QWidget;

/// Calls a function once, when a window has painted its first complete frame. A window that is shown without being
/// painted, for example minimised, has it called after kTimeoutMs. The watcher must not outlive the window. Main
/// thread.
class CFirstPaintWatcher : public QObject {
public:
    static constexpr int kTimeoutMs = 1'000;

    CFirstPaintWatcher(QWidget& window, std::function<void()> painted);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Run();

    std::function<void()> m_fnPainted;
};
