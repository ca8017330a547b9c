#pragma once

#include <mutex>
#include <vector>

#include "core/MainThreadPoster.h"
#include "support/VirtualTime.h"

/// The client's own poster on virtual time, with a record of what was asked of it.
class CScriptedPoster : public IPoster {
public:
    explicit CScriptedPoster(CVirtualTime& time);

    /// The delays of all posts so far, in milliseconds and in posting order; 0 is a post without delay.
    std::vector<int64_t> Delays() const;

    void Forget();

    /// For the other scripted services: their own posts are none of the test's.
    IPoster& Unrecorded() { return m_poster; }

    void Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) override;

private:
    CMainThreadPoster m_poster;
    mutable std::mutex m_mutex;
    std::vector<int64_t> m_delays;
};
