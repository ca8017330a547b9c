#include "support/SliceMeter.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <ctime>

#include "support/Sanitizers.h"

namespace {

constexpr std::chrono::milliseconds kLimit(10);

std::chrono::nanoseconds ThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

// Where the loop does its work between the two signals is the platform's affair, so that each of them ends a slice.
CSliceMeter::CSliceMeter() : m_begin(ThreadTime()) {
    const QAbstractEventDispatcher* loop = QAbstractEventDispatcher::instance();
    connect(loop, &QAbstractEventDispatcher::aboutToBlock, this, &CSliceMeter::EndSlice);
    connect(loop, &QAbstractEventDispatcher::awake, this, &CSliceMeter::EndSlice);
}

void CSliceMeter::EndSlice() {
    const auto now = ThreadTime();
    m_longest = std::max(m_longest, now - m_begin);
    m_begin = now;
    ++m_nSlices;
}

void CSliceMeter::Check() const {
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(m_longest).count();
    ::testing::Test::RecordProperty("LongestSliceMicroseconds", int(micros));
    EXPECT_GT(m_nSlices, 0);
    if (!kSlowedDown) {
        EXPECT_LT(micros, std::chrono::microseconds(kLimit).count());
    }
}
