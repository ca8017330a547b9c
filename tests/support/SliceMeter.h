#pragma once

#include <QObject>
#include <chrono>

/// The longest stretch that the event loop of the calling thread kept the thread busy, in CPU time of the thread:
/// waiting and what other processes take do not count. What the test itself does between two turns does.
class CSliceMeter : public QObject {
public:
    /// Begins to measure; a thread has an event loop by then.
    CSliceMeter();

    std::chrono::nanoseconds Longest() const { return m_longest; }
    int Count() const { return m_nSlices; }

    /// Fails the test if a slice was longer than 10 ms, and if there was none. Under a sanitizer, which slows
    /// everything, the length is recorded as the test's property and no more.
    void Check() const;

private:
    void EndSlice();

    std::chrono::nanoseconds m_begin{};
    std::chrono::nanoseconds m_longest{};
    int m_nSlices = 0;
};
