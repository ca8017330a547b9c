#include "channel/Backoff.h"

#include <algorithm>

CBackoff::CBackoff(Delay first, Delay cap) : m_first(first), m_cap(cap), m_current(first) {}

CBackoff::Delay CBackoff::Next(uint32_t random) {
    const Delay half = m_current / 2;
    const auto jitter = Delay((uint64_t(half.count()) * random) >> 32);
    m_current = std::min(m_current * 2, m_cap);
    return half + jitter;
}

void CBackoff::Reset() {
    m_current = m_first;
}
