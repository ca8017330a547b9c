#pragma once

#include "core/report.h"

/// An event to be reported.
struct ReportEvent {
    std::string name;
    int code = 0;
    Json::Value params;
    CSBrokerId broker = 0;
};

/// The port behind core::report. Any thread.
class IReports {
public:
    virtual ~IReports() = default;
    virtual bool Report(const ReportEvent& event) = 0;
    virtual std::shared_ptr<std::string> TimerStart(const std::string& event) = 0;

    /// `event.name` is the text returned by TimerStart.
    virtual bool TimerEnd(const ReportEvent& event) = 0;
};
