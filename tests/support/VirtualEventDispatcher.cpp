#include "support/VirtualEventDispatcher.h"

#include <qpa/qwindowsysteminterface.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimerEvent>
#include <algorithm>

namespace {

/// The first moment after `now` on the grid of `due` and `interval`.
int64_t NextAfter(int64_t now, int64_t due, int interval) {
    return due > now || interval == 0 ? due : due + ((now - due) / interval + 1) * interval;
}

}  // namespace

CVirtualEventDispatcher::CVirtualEventDispatcher() = default;

CVirtualEventDispatcher::~CVirtualEventDispatcher() = default;

CVirtualEventDispatcher* CVirtualEventDispatcher::Instance() {
    QCoreApplication* application = QCoreApplication::instance();
    return application
               ? dynamic_cast<CVirtualEventDispatcher*>(QAbstractEventDispatcher::instance(application->thread()))
               : nullptr;
}

int64_t CVirtualEventDispatcher::Now() const {
    return m_nNow;
}

void CVirtualEventDispatcher::MoveTo(int64_t moment) {
    m_nNow = std::max<int64_t>(m_nNow, moment);
}

// A timer inside its own event is no reason to move the clock: nothing would come of it.
std::optional<int64_t> CVirtualEventDispatcher::NextDue() const {
    std::optional<int64_t> next;
    for (const auto& [id, timer] : m_timers) {
        if (!timer.firing && (!next || timer.due < *next)) {
            next = timer.due;
        }
    }
    return next;
}

bool CVirtualEventDispatcher::HasWork() const {
    const std::optional<int64_t> due = NextDue();
    if (due && *due <= Now()) {
        return true;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bWoken;
}

bool CVirtualEventDispatcher::WaitForWake(std::chrono::milliseconds bound) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_wake.wait_for(lock, bound, [this] { return m_bWoken; });
}

bool CVirtualEventDispatcher::processEvents(QEventLoop::ProcessEventsFlags flags) {
    m_bInterrupted = false;
    const bool woken = TakeWake();
    Q_EMIT awake();
    const bool input = QWindowSystemInterface::sendWindowSystemEvents(flags);
    QCoreApplication::sendPostedEvents();
    if (m_bInterrupted) {
        return woken || input;
    }
    const Fired fired = flags & QEventLoop::X11ExcludeTimers ? Fired::Nothing : FireDue();
    const bool waits = flags & QEventLoop::WaitForMoreEvents;
    if (waits && !m_bInterrupted && !woken && !input && fired == Fired::IdleTimersOnly) {
        // Time passes also while timers without an interval keep the loop busy, or the rest would never be due.
        MoveTo(Now() + 1);
    }
    if (woken || input || fired != Fired::Nothing || m_bInterrupted || !waits) {
        return woken || input || fired != Fired::Nothing;
    }
    Q_EMIT aboutToBlock();
    const std::optional<int64_t> due = flags & QEventLoop::X11ExcludeTimers ? std::nullopt : NextDue();
    if (due) {
        MoveTo(*due);
        return FireDue() != Fired::Nothing;
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait(lock, [this] { return m_bWoken; });
    return false;
}

bool CVirtualEventDispatcher::TakeWake() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_bWoken, false);
}

// By due time, then by registration; each timer once in a round, so that one without an interval starves nobody.
std::map<int, CVirtualEventDispatcher::Timer>::iterator CVirtualEventDispatcher::FirstDue(uint64_t round) {
    auto first = m_timers.end();
    for (auto it = m_timers.begin(); it != m_timers.end(); ++it) {
        const Timer& timer = it->second;
        if (timer.due > Now() || timer.round >= round) {
            continue;
        }
        if (first == m_timers.end() || std::make_pair(timer.due, timer.registration) <
                                           std::make_pair(first->second.due, first->second.registration)) {
            first = it;
        }
    }
    return first;
}

CVirtualEventDispatcher::Fired CVirtualEventDispatcher::FireDue() {
    const uint64_t round = ++m_nRounds;
    Fired fired = Fired::Nothing;
    for (auto it = FirstDue(round); it != m_timers.end() && !m_bInterrupted; it = FirstDue(round)) {
        Timer& timer = it->second;
        timer.round = round;
        timer.due = timer.interval > 0 ? timer.due + timer.interval : Now();
        if (timer.firing) {
            // Lost, as with an ordinary loop: it does not catch up on what fell into its own event.
            timer.due = NextAfter(Now(), timer.due, timer.interval);
            continue;
        }
        if (timer.interval > 0) {
            fired = Fired::Timers;
        } else if (fired == Fired::Nothing) {
            fired = Fired::IdleTimersOnly;
        }
        Fire(it);
    }
    return fired;
}

// The event may end the timer, and another may get its id. Only the registration distinguishes them.
void CVirtualEventDispatcher::Fire(std::map<int, Timer>::iterator timer) {
    const int id = timer->first;
    const uint64_t registration = timer->second.registration;
    timer->second.firing = true;
    QTimerEvent event(id);
    QCoreApplication::sendEvent(timer->second.object, &event);
    const auto still = m_timers.find(id);
    if (still != m_timers.end() && still->second.registration == registration) {
        still->second.firing = false;
    }
}

bool CVirtualEventDispatcher::hasPendingEvents() {
    return HasWork() || QWindowSystemInterface::windowSystemEventsQueued() > 0;
}

// A socket notifier waits for real time, which no test in virtual time can predict.
void CVirtualEventDispatcher::registerSocketNotifier(QSocketNotifier* notifier) {
    qFatal("A socket (%lld) was opened in a test of virtual time", static_cast<long long>(notifier->socket()));
}

void CVirtualEventDispatcher::unregisterSocketNotifier(QSocketNotifier* /*notifier*/) {}

void CVirtualEventDispatcher::registerTimer(int timerId, int interval, Qt::TimerType timerType, QObject* object) {
    m_timers[timerId] = Timer{object, interval, timerType, Now() + interval, ++m_nRegistrations, m_nRounds, false};
}

bool CVirtualEventDispatcher::unregisterTimer(int timerId) {
    return m_timers.erase(timerId) > 0;
}

bool CVirtualEventDispatcher::unregisterTimers(QObject* object) {
    bool found = false;
    for (auto it = m_timers.begin(); it != m_timers.end();) {
        if (it->second.object == object) {
            it = m_timers.erase(it);
            found = true;
        } else {
            ++it;
        }
    }
    return found;
}

QList<QAbstractEventDispatcher::TimerInfo> CVirtualEventDispatcher::registeredTimers(QObject* object) const {
    QList<TimerInfo> timers;
    for (const auto& [id, timer] : m_timers) {
        if (timer.object == object) {
            timers.append(TimerInfo(id, timer.interval, timer.type));
        }
    }
    return timers;
}

int CVirtualEventDispatcher::remainingTime(int timerId) {
    const auto found = m_timers.find(timerId);
    return found == m_timers.end() ? -1 : int(std::max<int64_t>(found->second.due - Now(), 0));
}

void CVirtualEventDispatcher::wakeUp() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bWoken = true;
    m_wake.notify_all();
}

void CVirtualEventDispatcher::interrupt() {
    m_bInterrupted = true;
    wakeUp();
}

void CVirtualEventDispatcher::flush() {}
