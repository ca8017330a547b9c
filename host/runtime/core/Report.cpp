#include "core/report.h"

#include "core/IReports.h"
#include "framework/Ports.h"

namespace core {
namespace report {

bool Report(const std::string& event, int code, const Json::Value& params, CSBrokerId broker) {
    const host::PortsLock ports;
    return ports->reports && ports->reports->Report({event, code, params, broker});
}

std::shared_ptr<std::string> ReportTimerStart(const std::string& event) {
    const host::PortsLock ports;
    return ports->reports ? ports->reports->TimerStart(event) : nullptr;
}

bool ReportTimerEnd(const std::string& timer, int code, const Json::Value& params, CSBrokerId broker,
                    long /*reserved*/) {
    const host::PortsLock ports;
    return ports->reports && ports->reports->TimerEnd({timer, code, params, broker});
}

}  // namespace report
}  // namespace core
