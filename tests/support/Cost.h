#pragma once

#include <chrono>

/// Measures what code costs this process, from the construction on. With a sanitizer, which adds to both, nothing is
/// checked.
class CCost {
public:
    CCost();

    /// Fails the test if the resident memory was at any moment more than `bytes` larger than at the beginning.
    void CheckMemory(long bytes) const;

    /// Fails the test if all threads together used more CPU time.
    void CheckTime(std::chrono::milliseconds limit) const;

private:
    long m_nMemory = 0;
    std::chrono::milliseconds m_time{};
};
