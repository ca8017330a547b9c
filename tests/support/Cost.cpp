#include "support/Cost.h"

#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <string>

#include "support/Sanitizers.h"

namespace {

/// Returns the peak of the resident memory.
long PeakBytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        long kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes) {
            return kilobytes * 1024;
        }
    }
    return 0;
}

std::chrono::milliseconds ProcessTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::milliseconds(time.tv_sec * 1000 + time.tv_nsec / 1'000'000);
}

}  // namespace

CCost::CCost() : m_time(ProcessTime()) {
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins anew
    m_nMemory = PeakBytes();
}

void CCost::CheckMemory(long bytes) const {
    const long grown = PeakBytes() - m_nMemory;
    ::testing::Test::RecordProperty("GrownKilobytes", int(grown / 1024));
    EXPECT_GT(m_nMemory, 0);
    if (!kSlowedDown) {
        EXPECT_LE(grown, bytes);
    }
}

void CCost::CheckTime(std::chrono::milliseconds limit) const {
    const auto used = ProcessTime() - m_time;
    ::testing::Test::RecordProperty("UsedMilliseconds", int(used.count()));
    if (!kSlowedDown) {
        EXPECT_LE(used.count(), limit.count());
    }
}
