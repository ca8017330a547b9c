#pragma once

#include <QObject>
#include <deque>
#include <mutex>

#include "observe/Seen.h"

/// Where the taps report what went through them. Callable from any thread; the signal comes on the thread of
/// the report.
class CObservation : public QObject {
    Q_OBJECT

public:
    /// So many of the youngest are kept for listeners that come late.
    static constexpr size_t kKept = 1'000;

    CObservation();
    ~CObservation() override;

    template <class What>
    void Report(What what) {
        Add(Seen{0, 0, std::move(what)});
    }

    /// What a listener that comes now has missed. One that connects first and then asks knows by the numbers
    /// what it gets twice.
    std::deque<Seen> Kept() const;

Q_SIGNALS:
    void Happened(const Seen& seen);

private:
    void Add(Seen seen);

    mutable std::mutex m_mutex;
    std::deque<Seen> m_kept;
    uint64_t m_nLast = 0;
};
