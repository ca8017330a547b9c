#include "HttpFaults.h"

#include <algorithm>
#include <array>

#include "AdPaths.h"
#include "Digits.h"

namespace devserver {
namespace {

constexpr int kFound = 302;

bool IsPicture(const std::string& path) {
    return path.rfind(kPicturesPath, 0) == 0;
}

std::string WithCode(const std::string& body, const ResponseFault& fault) {
    Errors errors;
    auto json = ParseJson(body, errors);
    if (!json || !json->isObject()) {
        return body;
    }
    if (fault.has_code()) {
        (*json)["code"] = fault.code();
    }
    if (fault.nodata()) {
        json->removeMember("data");
    }
    return WriteJson(*json);
}

}  // namespace

bool IsServedPath(const std::string& path) {
    const std::array<const char*, 4> paths{kAdSearchPath, kAdCheckPath, kAdExposePath, kReportPath};
    return std::find(paths.begin(), paths.end(), path) != paths.end() ||
           (IsPicture(path) && path.size() > std::string(kPicturesPath).size());
}

std::optional<ResponseFault> ReadResponseFault(const Json::Value& json, const std::string& path, Errors& errors,
                                               const std::string& key) {
    const size_t errorsBefore = errors.size();
    const auto refuseIf = [&](bool isWrong, const std::string& field, const std::string& reason) {
        if (isWrong) {
            errors.push_back((key.empty() || field.empty() ? key + field : key + "." + field) +
                             (key.empty() && field.empty() ? "" : ": ") + reason);
        }
    };
    ResponseFault fault;
    if (ReadMessage(json, fault, errors, key)) {
        CheckEffect(fault, key, errors);
        refuseIf(IsPicture(path) && fault.has_code(), "code", "a picture has none");
        refuseIf(IsPicture(path) && fault.has_nodata(), "noData", "a picture has none");
        refuseIf(fault.has_body() && fault.has_bodyhex(), "", "must hold at most one of body, bodyHex");
        // Other characters could end the header.
        const std::string& location = fault.redirect();
        refuseIf(std::any_of(location.begin(), location.end(), [](char c) { return c <= ' ' || c > '~'; }), "redirect",
                 "must be of visible ASCII characters");
    }
    return errors.size() == errorsBefore ? std::make_optional(fault) : std::nullopt;
}

std::optional<CHttpFaults::Table> ReadResponseFaults(const std::string& text, Errors& errors) {
    using Entry = std::optional<CHttpFaults::Table::value_type>;
    return ReadFaultTable<CHttpFaults>(text, errors, [&errors](const std::string& path, const Json::Value& json) {
        if (!IsServedPath(path)) {
            errors.push_back(path + ": the key must be a path that the server answers on");
            return Entry();
        }
        const auto fault = ReadResponseFault(json, path, errors, path);
        return fault ? Entry({path, *fault}) : Entry();
    });
}

WebAnswer ApplyFault(WebAnswer answer, const ResponseFault& fault) {
    if (fault.has_redirect()) {
        answer.status = kFound;
        answer.headers.emplace_back("Location", fault.redirect());
    }
    if (fault.has_status()) {
        answer.status = fault.status();
    }
    if (fault.has_code() || fault.nodata()) {
        answer.body = WithCode(answer.body, fault);
    }
    if (fault.has_body()) {
        answer.body = fault.body();
    } else if (fault.has_bodyhex()) {
        answer.body = FromHex(fault.bodyhex()).value_or("");
    }
    answer.fault = fault;
    return answer;
}

bool RefusesRequest(const ResponseFault& fault) {
    const int status = fault.has_redirect() ? kFound : 200;
    return (fault.has_status() ? fault.status() : status) >= 300 || fault.code() != 0;
}

}  // namespace devserver
