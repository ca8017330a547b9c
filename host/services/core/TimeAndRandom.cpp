#include "core/TimeAndRandom.h"

#include <QDateTime>
#include <QRandomGenerator>

namespace {

constexpr int64_t kMaxServerTimeMs = 253'402'300'799'999;  // the end of the year 9999

}  // namespace

int64_t CTimeAndRandom::ServerTimeMs() const {
    return QDateTime::currentMSecsSinceEpoch() + m_nOffset;
}

uint32_t CTimeAndRandom::RandomNumber() {
    return QRandomGenerator::global()->generate();
}

void CTimeAndRandom::SetServerTimeMs(int64_t serverTime) {
    if (serverTime > 0 && serverTime <= kMaxServerTimeMs) {
        m_nOffset = serverTime - QDateTime::currentMSecsSinceEpoch();
    }
}
