#pragma once

#include <QObject>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

#include "core/IPoster.h"
#include "framework/export.h"

/// The poster on the event loop of its own thread: one queue by due time, then by order of posting.
class ZRHOST_API CMainThreadPoster : public QObject, public IPoster {
public:
    /// Milliseconds of a monotonic clock. Any thread.
    using Clock = std::function<int64_t()>;

    explicit CMainThreadPoster(Clock clock = SteadyMillis);
    ~CMainThreadPoster() override;

    void Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) override;

    static int64_t SteadyMillis();

protected:
    bool event(QEvent* event) override;

private:
    struct Task {
        QPointer<QObject> context;
        std::function<void()> run;
    };
    using Due = std::pair<int64_t, uint64_t>;  // due time, number of the post

    void Wake();
    void RunOne();
    void ArmTimer(int64_t now);

    const Clock m_fnClock;
    std::mutex m_mutex;
    std::map<Due, Task> m_tasks;
    uint64_t m_nPosted = 0;
    bool m_bWakePosted = false;
    int m_nTimerId = 0;
};
