#include "tracing/TraceLog.h"

#include <QDateTime>

CTraceLog::CTraceLog() {
    qRegisterMetaType<TraceEvent>();
}

void CTraceLog::Add(TraceEvent event) {
    event.timeMs = QDateTime::currentMSecsSinceEpoch();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        event.number = ++m_nLast;
        m_kept.push_back(event);
        if (m_kept.size() > kKept) {
            m_kept.pop_front();
        }
    }
    Q_EMIT Recorded(event);
}

std::deque<TraceEvent> CTraceLog::Kept() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_kept;
}
