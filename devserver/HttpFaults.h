#pragma once

#include <optional>
#include <string>

#include "Faults.h"
#include "WebServer.h"

namespace devserver {

using CHttpFaults = CFaultTable<std::string, ResponseFault>;  // by path

/// Reads the fault of `path`. `key` leads to it. Returns nothing, with at least one error, if it is invalid.
std::optional<ResponseFault> ReadResponseFault(const Json::Value& json, const std::string& path, Errors& errors,
                                               const std::string& key = {});

/// Reads an object with one member per path.
std::optional<CHttpFaults::Table> ReadResponseFaults(const std::string& text, Errors& errors);

/// Returns true if the server answers on the path. A path of a missing picture is answered with 404.
bool IsServedPath(const std::string& path);

/// Returns the answer with the fault applied. CWebServer applies the part that concerns the transfer.
WebAnswer ApplyFault(WebAnswer answer, const ResponseFault& fault);

/// Returns true if the client learns from the answer that its request failed. Such a request has no effect. A request
/// whose answer is lost on the way has its effect.
bool RefusesRequest(const ResponseFault& fault);

}  // namespace devserver
