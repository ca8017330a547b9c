#include "observe/Observation.h"

#include <QDateTime>

CObservation::CObservation() {
    qRegisterMetaType<Seen>();
}

CObservation::~CObservation() = default;

void CObservation::Add(Seen seen) {
    seen.timeMs = QDateTime::currentMSecsSinceEpoch();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        seen.number = ++m_nLast;
        m_kept.push_back(seen);
        if (m_kept.size() > kKept) {
            m_kept.pop_front();
        }
    }
    Q_EMIT Happened(seen);
}

std::deque<Seen> CObservation::Kept() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_kept;
}
