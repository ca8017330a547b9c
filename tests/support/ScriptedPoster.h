#pragma once

#include <mutex>
#include <vector>

#include "core/MainThreadPoster.h"
#include "support/VirtualTime.h"

/// The poster of the client in virtual time, with a record of all posts.
class CScriptedPoster : public IPoster {
public:
    explicit CScriptedPoster(CVirtualTime& time);

    /// Delays of all posts in milliseconds, in posting order. 0 is a post without delay.
    std::vector<int64_t> Delays() const;

    void Forget();

    /// For the other scripted services, whose posts are not recorded.
    IPoster& Unrecorded() { return m_poster; }

    void Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) override;

private:
    CMainThreadPoster m_poster;
    mutable std::mutex m_mutex;
    std::vector<int64_t> m_delays;
};
