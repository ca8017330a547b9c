#include "core/ServerClock.h"

#include <chrono>

namespace {

constexpr int64_t kLatest = 253'402'300'799'999;  // the end of the year 9999

int64_t LocalTimeMillis() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

int64_t CServerClock::ServerTimeMillis() const {
    return LocalTimeMillis() + m_nOffset;
}

void CServerClock::SetServerTimeMillis(int64_t serverTime) {
    if (serverTime > 0 && serverTime <= kLatest) {
        m_nOffset = serverTime - LocalTimeMillis();
    }
}
