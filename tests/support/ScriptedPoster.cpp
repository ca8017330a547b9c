#include "support/ScriptedPoster.h"

CScriptedPoster::CScriptedPoster(CVirtualTime& time) : m_poster([&time] { return time.Now(); }) {}

std::vector<int64_t> CScriptedPoster::Delays() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_delays;
}

void CScriptedPoster::Forget() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_delays.clear();
}

void CScriptedPoster::Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_delays.push_back(delay.count());
    }
    m_poster.Post(std::move(context), delay, std::move(task));
}
