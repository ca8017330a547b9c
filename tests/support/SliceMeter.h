#pragma once

#include <QObject>
#include <chrono>

/// Measures the longest turn of the calling thread's event loop, in CPU time of the thread: waiting and other processes
/// do not count. Work of the test between two turns counts.
class CSliceMeter : public QObject {
public:
    /// Begins to measure; a thread has an event loop by then.
    CSliceMeter();

    std::chrono::nanoseconds Longest() const { return m_longest; }
    int Count() const { return m_nSlices; }

    /// Fails the test if a slice was longer than 10 ms, and if there was none. With a sanitizer, which slows
    /// everything, the length is only recorded as the test's property.
    void Check() const;

private:
    void EndSlice();

    std::chrono::nanoseconds m_begin{};
    std::chrono::nanoseconds m_longest{};
    int m_nSlices = 0;
};
