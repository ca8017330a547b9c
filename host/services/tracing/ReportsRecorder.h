#pragma once

#include <QElapsedTimer>
#include <map>
#include <mutex>

#include "core/IReports.h"

class CTraceLog;

/// Records reported events and forwards all calls unchanged. Callable from any thread. The service and the trace log
/// must outlive it.
class CReportsRecorder : public IReports {
public:
    CReportsRecorder(IReports& reports, CTraceLog& traceLog);

    bool Report(const ReportEvent& event) override;
    std::shared_ptr<std::string> TimerStart(const std::string& event) override;
    bool TimerEnd(const ReportEvent& event) override;

private:
    IReports& m_reports;
    CTraceLog& m_traceLog;
    std::mutex m_mutex;
    std::map<std::string, QElapsedTimer> m_running;  // by timer
};
