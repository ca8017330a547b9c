#pragma once

#include <QObject>
#include <functional>

class QWidget;

/// Runs a task once, when a window's first frame is whole: for what that frame does without. A window that is
/// shown and not painted, as a minimised one, has it run after `kAtMostMs` all the same. Main thread; lives as
/// long as the window.
class CFirstFrame : public QObject {
public:
    static constexpr int kAtMostMs = 1'000;

    CFirstFrame(QWidget& window, std::function<void()> then);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Run();

    std::function<void()> m_fnThen;
};
