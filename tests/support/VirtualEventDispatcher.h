#pragma once

#include <QAbstractEventDispatcher>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

/// An event loop whose clock moves only when it is moved: every timer of the thread obeys. Installed before the
/// application object is made. A loop that waits (QEventLoop::exec, QDialog::exec) and has nothing to do moves the
/// clock itself, to the next timer; without timers it waits to be woken.
class CVirtualEventDispatcher : public QAbstractEventDispatcher {
public:
    CVirtualEventDispatcher();
    ~CVirtualEventDispatcher() override;

    /// The one of the main thread; null where an ordinary event loop runs.
    static CVirtualEventDispatcher* Instance();

    /// Milliseconds since the dispatcher was made. Callable from any thread.
    int64_t Now() const;

    /// Moves the clock forward and fires nothing; a moment in the past is ignored.
    void MoveTo(int64_t moment);

    /// When the next timer is due; empty without one.
    std::optional<int64_t> NextDue() const;

    /// The number of timers that run.
    int TimerCount() const { return int(m_timers.size()); }

    /// Whether something was posted since the last round, or a timer is due.
    bool HasWork() const;

    /// Waits in real time until something is posted. False if `bound` passed without.
    bool WaitForWake(std::chrono::milliseconds bound);

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType timerType, QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override;

private:
    struct Timer {
        QObject* object = nullptr;
        int interval = 0;
        Qt::TimerType type = Qt::PreciseTimer;
        int64_t due = 0;
        uint64_t registration = 0;
        uint64_t round = 0;   // the last round that fired it
        bool firing = false;  // inside its own event, where it does not fire again
    };
    enum class Fired { Nothing, IdleTimersOnly, Timers };

    bool TakeWake();
    std::map<int, Timer>::iterator FirstDue(uint64_t round);
    Fired FireDue();
    void Fire(std::map<int, Timer>::iterator timer);

    std::atomic<int64_t> m_nNow{0};
    std::atomic<bool> m_bInterrupted{false};
    std::map<int, Timer> m_timers;
    uint64_t m_nRegistrations = 0;
    uint64_t m_nRounds = 0;

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_bWoken = false;
};
