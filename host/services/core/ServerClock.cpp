#include "core/ServerClock.h"

#include <chrono>

namespace {

int64_t LocalTimeMillis() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

int64_t CServerClock::ServerTimeMillis() const {
    return LocalTimeMillis() + m_nOffset;
}

void CServerClock::SetServerTimeMillis(int64_t serverTime) {
    if (serverTime > 0) {
        m_nOffset = serverTime - LocalTimeMillis();
    }
}
