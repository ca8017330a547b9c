#pragma once

#include <QElapsedTimer>
#include <map>
#include <mutex>

#include "core/IReports.h"

class CObservation;

/// Reports that are seen by others too, and not changed. Any thread. Both must outlive it.
class CObservedReports : public IReports {
public:
    CObservedReports(IReports& reports, CObservation& observation);

    bool Report(const ReportEvent& event) override;
    std::shared_ptr<std::string> TimerStart(const std::string& event) override;
    bool TimerEnd(const ReportEvent& event) override;

private:
    IReports& m_reports;
    CObservation& m_observation;
    std::mutex m_mutex;
    std::map<std::string, QElapsedTimer> m_running;  // by the measurement's text
};
