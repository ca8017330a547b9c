#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "core/IReports.h"
#include "support/Failing.h"

/// An event as it was reported, including refused ones.
struct ReportedEvent {
    std::string name;
    int code = 0;
    std::string params;  // JSON in one line, with sorted keys
    CSBrokerId broker = 0;
    bool timed = false;  // reported by a timer
};

bool operator==(const ReportedEvent& left, const ReportedEvent& right);
std::ostream& operator<<(std::ostream& stream, const ReportedEvent& event);

/// Records reports. A timer has the name of its event until a test sets another. An event that no test looked at
/// (Events, Names) fails the test. An event without a name is refused. Any thread.
class CScriptedReports : public IReports {
public:
    std::vector<ReportedEvent> Events();
    std::vector<std::string> Names();

    /// The reports and timer ends that `which` selects return false.
    void Refuse(Failing which);

    /// Names each later timer by the result of `name`, which is called when the timer starts.
    void NameTimers(std::function<std::string(const std::string& event)> name);

    /// No later timer can be started.
    void GiveNoTimers();

    /// Names of the events whose timer was started, in order.
    std::vector<std::string> Started() const;

    /// Marks all events as looked at and clears the record.
    void Forget();

    /// Fails the test for each event that no test looked at.
    void CheckAllLookedAt();

    bool Report(const ReportEvent& event) override;
    std::shared_ptr<std::string> TimerStart(const std::string& event) override;
    bool TimerEnd(const ReportEvent& event) override;

private:
    bool Take(const ReportEvent& event, bool timed);

    mutable std::mutex m_mutex;
    std::vector<ReportedEvent> m_events;
    std::vector<std::string> m_started;
    size_t m_nLookedAt = 0;
    bool m_bTimers = true;
    std::function<std::string(const std::string& event)> m_timerName;
    Failing m_refused = Failing::Never();
};
