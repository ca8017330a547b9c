#pragma once

#include "core/report.h"

/// An event as somebody reports it.
struct ReportEvent {
    std::string name;
    int code = 0;
    Json::Value params;
    CSBrokerId broker = 0;
};

/// Behind core::report. Callable from any thread.
class IReports {
public:
    virtual ~IReports() = default;
    virtual bool Report(const ReportEvent& event) = 0;
    virtual std::shared_ptr<std::string> TimerStart(const std::string& event) = 0;

    /// `event.name` is the text that TimerStart gave.
    virtual bool TimerEnd(const ReportEvent& event) = 0;
};
