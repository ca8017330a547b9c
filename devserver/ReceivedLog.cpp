#include "ReceivedLog.h"

#include <utility>

namespace devserver {

void CReceivedLog::Add(ReceivedFrame frame) {
    frame.number = ++m_nAdded;
    m_nBytes += frame.body.size();
    m_frames.push_back(std::move(frame));
    while (m_frames.size() > kMaxFrames || m_nBytes > kMaxBytes) {
        m_nBytes -= m_frames.front().body.size();
        m_frames.pop_front();
    }
}

}  // namespace devserver
