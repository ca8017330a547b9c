#include "core/TimeAndRandom.h"

#include <QDateTime>
#include <QRandomGenerator>
#include <ctime>

namespace {

constexpr int64_t kMaxServerTimeMs = 253'402'300'799'999;  // the end of the year 9999

int64_t MillisOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return int64_t(time.tv_sec) * 1'000 + time.tv_nsec / 1'000'000;
}

}  // namespace

int64_t CTimeAndRandom::MillisSinceBoot() {
    return MillisOf(CLOCK_BOOTTIME);
}

int64_t CTimeAndRandom::SuspendedMillis() {
    return MillisOf(CLOCK_BOOTTIME) - MillisOf(CLOCK_MONOTONIC);
}

CTimeAndRandom::CTimeAndRandom() : CTimeAndRandom({QDateTime::currentMSecsSinceEpoch, MillisSinceBoot}) {}

CTimeAndRandom::CTimeAndRandom(Clocks clocks) : m_clocks(std::move(clocks)) {}

int64_t CTimeAndRandom::ServerTimeMs() const {
    return m_bSet ? m_clocks.steady() + m_nOffset : m_clocks.local();
}

uint32_t CTimeAndRandom::RandomNumber() {
    return QRandomGenerator::global()->generate();
}

void CTimeAndRandom::SetServerTimeMs(int64_t serverTime) {
    if (serverTime > 0 && serverTime <= kMaxServerTimeMs) {
        m_nOffset = serverTime - m_clocks.steady();
        m_bSet = true;
    }
}
