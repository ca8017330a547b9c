#include "core/MainThreadPoster.h"

#include <QCoreApplication>
#include <QTimerEvent>
#include <algorithm>
#include <limits>
#include <optional>

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Poster");

QEvent::Type WakeEvent() {
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

}  // namespace

CMainThreadPoster::CMainThreadPoster(Clock clock) : m_fnClock(std::move(clock)) {}

CMainThreadPoster::~CMainThreadPoster() {
    // Destroying a task may post again, so the tasks leave the queue first.
    std::map<Due, Task> tasks;
    const std::lock_guard<std::mutex> lock(m_mutex);
    tasks.swap(m_tasks);
}

int64_t CMainThreadPoster::SteadyMillis() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void CMainThreadPoster::Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) {
    if (!context) {
        return;
    }
    const int64_t due = m_fnClock() + delay.count();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_tasks.emplace(Due(due, ++m_nPosted), Task{std::move(context), std::move(task)});
    Wake();
}

// Requires the mutex. The event also restarts the timer, which only the thread of the event loop may do.
void CMainThreadPoster::Wake() {
    if (!m_bWakePosted) {
        m_bWakePosted = true;
        QCoreApplication::postEvent(this, new QEvent(WakeEvent()));
    }
}

bool CMainThreadPoster::event(QEvent* event) {
    if (event->type() == WakeEvent() || event->type() == QEvent::Timer) {
        if (event->type() == WakeEvent()) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_bWakePosted = false;
        }
        RunOne();
        return true;
    }
    return QObject::event(event);
}

// One task per event, after the next one is scheduled: a task that opens an event loop delays no other task.
void CMainThreadPoster::RunOne() {
    std::optional<Task> task;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const int64_t now = m_fnClock();
        if (!m_tasks.empty() && m_tasks.begin()->first.first <= now) {
            task = std::move(m_tasks.begin()->second);
            m_tasks.erase(m_tasks.begin());
        }
        ArmTimer(now);
    }
    if (task && task->context) {
        host::CallAndLogExceptions(kLog, "A posted task", task->run);
    }
}

void CMainThreadPoster::ArmTimer(int64_t now) {
    if (m_nTimerId != 0) {
        killTimer(m_nTimerId);
        m_nTimerId = 0;
    }
    if (m_tasks.empty()) {
        return;
    }
    const int64_t wait = m_tasks.begin()->first.first - now;
    if (wait <= 0) {
        Wake();
        return;
    }
    m_nTimerId = startTimer(int(std::min<int64_t>(wait, std::numeric_limits<int>::max())), Qt::PreciseTimer);
}
