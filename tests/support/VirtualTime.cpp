#include "support/VirtualTime.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <optional>

#include "support/VirtualEventDispatcher.h"

namespace {

constexpr int kMostRoundsAtOneMoment = 100'000;
constexpr std::chrono::milliseconds kGlance(10);

CVirtualEventDispatcher& Dispatcher() {
    CVirtualEventDispatcher* dispatcher = CVirtualEventDispatcher::Instance();
    if (!dispatcher) {
        qFatal("There is no virtual event dispatcher: the test is not linked with zr_test_main");
    }
    return *dispatcher;
}

}  // namespace

CVirtualTime::CVirtualTime() : m_dispatcher(Dispatcher()), m_nStart(m_dispatcher.Now()) {}

void CVirtualTime::Advance(std::chrono::milliseconds span) {
    const int64_t target = m_dispatcher.Now() + span.count();
    Settle();
    for (auto due = m_dispatcher.NextDue(); due && *due <= target; due = m_dispatcher.NextDue()) {
        m_dispatcher.MoveTo(*due);
        Settle();
        if (::testing::Test::HasFatalFailure()) {
            return;
        }
    }
    m_dispatcher.MoveTo(target);
    Settle();
}

void CVirtualTime::Settle() {
    for (int round = 0; round < kMostRoundsAtOneMoment; ++round) {
        m_dispatcher.processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!m_dispatcher.HasWork()) {
            return;
        }
    }
    // Fatal, so that the moments that are left are not tried one by one.
    FAIL() << "Events or timers without an interval follow each other for ever at " << Now() << " ms";
}

bool CVirtualTime::WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound) {
    const auto end = std::chrono::steady_clock::now() + bound;
    for (;;) {
        Settle();
        if (condition()) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        // Not all that a condition looks at wakes the loop.
        m_dispatcher.WaitForWake(kGlance);
    }
}

int64_t CVirtualTime::Now() const {
    return m_dispatcher.Now() - m_nStart;
}

int64_t CVirtualTime::ServerTime() const {
    return Now() + m_nServerOffset;
}

void CVirtualTime::SetServerTime(int64_t millis) {
    m_nServerOffset = millis - Now();
}

int64_t CVirtualTime::ServerTimeMs() const {
    return ServerTime();
}
