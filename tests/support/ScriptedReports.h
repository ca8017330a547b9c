#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "core/IReports.h"
#include "support/Failing.h"

/// An event as it was reported; a refused one too.
struct ReportedEvent {
    std::string name;
    int code = 0;
    std::string params;  // as JSON in one line, its keys sorted
    CSBrokerId broker = 0;
    bool timed = false;  // by the end of a measurement
};

bool operator==(const ReportedEvent& left, const ReportedEvent& right);
std::ostream& operator<<(std::ostream& stream, const ReportedEvent& event);

/// Reports, kept. A measurement goes by the bare name of its event until a test names it otherwise. An event that no
/// test looked at (Events, Names) fails the test; one without a name is not taken. Callable from any thread.
class CScriptedReports : public IReports {
public:
    std::vector<ReportedEvent> Events();
    std::vector<std::string> Names();

    /// The reports, ends of measurements among them, that `which` names give false.
    void Refuse(Failing which);

    /// From now on a measurement goes by what `name` gives for its event. It is called as the measurement starts.
    void NameTimers(std::function<std::string(const std::string& event)> name);

    /// From now on no measurement can be started.
    void GiveNoTimers();

    /// Names of the events whose measurement was started, in order.
    std::vector<std::string> Started() const;

    /// Counts as looking, and empties the record.
    void Forget();

    /// Fails the test for each event that nobody looked at.
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
