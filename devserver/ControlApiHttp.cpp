// What testers see and change of ads, and of what clients do over HTTP.
#include "ControlApi.h"
#include "Hex.h"
#include "JsonNode.h"

namespace devserver {
namespace {

// A slot stands two levels below a scenario's root, and here at the root.
constexpr unsigned kAdsDepth = 16;

ControlAnswer NoSuchNumber() {
    return Refusal(400, "after: must be a whole number");
}

std::string PathOf(const std::vector<std::string>& wildcards) {
    return "/" + wildcards[0] + "/" + wildcards[1];
}

Json::Value Write(const ReceivedRequest& request) {
    Json::Value json;
    json["n"] = Json::UInt64(request.number);
    json["method"] = request.method;
    json["path"] = IsUtf8(request.path) ? request.path : ToHex(request.path);
    json["headers"] = Json::Value(Json::objectValue);
    for (const auto& [name, value] : request.headers) {
        if (IsUtf8(name) && IsUtf8(value)) {
            Json::Value& header = json["headers"][name];
            header = header.isNull() ? value : header.asString() + ", " + value;
        }
    }
    if (IsUtf8(request.body)) {
        json["body"] = request.body;
    } else {
        json["bodyHex"] = ToHex(request.body);
    }
    json["status"] = request.status;
    return json;
}

}  // namespace

ControlAnswer CControlApi::PutAds(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    auto ads = ReadJson(request.body, kAdsDepth, ReadAds, errors);
    if (!ads) {
        return Refusal(errors);
    }
    m_state.scenario.SetAds(std::move(*ads));
    return {};
}

ControlAnswer CControlApi::DeleteAds(const ControlRequest&, const Wildcards&) {
    m_state.scenario.SetAds({});
    return {};
}

ControlAnswer CControlApi::GetHttp(const ControlRequest& request, const Wildcards&) {
    const auto after = ReadAfter(request);
    if (!after) {
        return NoSuchNumber();
    }
    ControlAnswer answer;
    answer.body["http"] = Json::Value(Json::arrayValue);
    for (const ReceivedRequest& received : m_state.requests.Entries()) {
        if (received.number > *after) {
            answer.body["http"].append(Write(received));
        }
    }
    return answer;
}

ControlAnswer CControlApi::GetReports(const ControlRequest& request, const Wildcards&) {
    const auto after = ReadAfter(request);
    if (!after) {
        return NoSuchNumber();
    }
    ControlAnswer answer;
    answer.body["reports"] = Json::Value(Json::arrayValue);
    for (const Report& report : m_state.reports.Reports()) {
        if (report.number > *after) {
            Json::Value& json = answer.body["reports"].append(report.event);
            json["n"] = Json::UInt64(report.number);
            json["resends"] = Json::UInt64(m_state.reports.Resends(report.id));
        }
    }
    answer.body["counted"] = Json::UInt64(m_state.reports.Counted());
    answer.body["resends"] = Json::UInt64(m_state.reports.Resends());
    return answer;
}

ControlAnswer CControlApi::DeleteReports(const ControlRequest&, const Wildcards&) {
    m_state.reports.Forget();
    return {};
}

ControlAnswer CControlApi::PutHttpFaults(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    auto faults = HttpFaultsFromText(request.body, errors);
    if (!faults) {
        return Refusal(errors);
    }
    m_state.httpFaults.Set(std::move(*faults));
    return {};
}

ControlAnswer CControlApi::PutHttpFault(const ControlRequest& request, const Wildcards& wildcards) {
    const std::string path = PathOf(wildcards);
    if (!IsServedPath(path)) {
        return Refusal(404, "path: nothing is served on " + path);
    }
    Errors errors;
    auto fault = HttpFaultFromText(request.body, path, errors);
    if (!fault) {
        return Refusal(errors);
    }
    m_state.httpFaults.Set(path, std::move(*fault));
    return {};
}

ControlAnswer CControlApi::DeleteHttpFault(const ControlRequest&, const Wildcards& wildcards) {
    const std::string path = PathOf(wildcards);
    if (!IsServedPath(path)) {
        return Refusal(404, "path: nothing is served on " + path);
    }
    m_state.httpFaults.Remove(path);
    return {};
}

}  // namespace devserver
