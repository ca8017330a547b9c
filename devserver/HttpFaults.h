#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "FaultTable.h"
#include "JsonNode.h"
#include "WebServer.h"

namespace devserver {

/// How the answer to a path differs from what it should be. Members combine.
struct HttpFault {
    std::optional<int> status;
    std::optional<std::string> body;      // these bytes
    std::optional<int32_t> code;          // in the JSON that it would be
    std::optional<std::string> redirect;  // a Location; the status is 302 unless named
    bool noData = false;                  // the JSON lacks its data
    WebHarm harm;
    std::optional<uint64_t> times;  // so many answers are left; for ever without it
};

using CHttpFaults = CFaultTable<std::string, HttpFault>;  // by path

/// The table of a JSON object with one member per path, or nothing and at least one error.
std::optional<CHttpFaults::Table> HttpFaultsFromText(const std::string& text, Errors& errors);

/// The fault of one path of a JSON object, or nothing and at least one error.
std::optional<HttpFault> HttpFaultFromText(const std::string& text, const std::string& path, Errors& errors);

/// Whether the server answers on the path at all, be it with 404 for a picture that it does not have.
bool IsServedPath(const std::string& path);

/// The answer as the fault leaves it.
WebAnswer Struck(WebAnswer answer, const HttpFault& fault);

/// Whether a client that gets the answer learns that its request went wrong: then the request has no effect. One
/// whose answer is lost on the way has.
bool RefusesRequest(const HttpFault& fault);

}  // namespace devserver
