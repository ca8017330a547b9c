#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

#include "Scenario.h"

namespace devserver {

/// Replaces `{server}` by the origin of the HTTP port.
std::string WithOrigin(std::string text, const std::string& origin);

/// The URLs by link id, in decimal: of the scenario's links and of all links of its rights.
Json::Value LinkTable(const CScenario& scenario, const std::string& origin);

/// An HTML page with the link's id and title, and the rights that use it. Nothing for an unknown link.
std::optional<std::string> LinkPage(const CScenario& scenario, int64_t id);

}  // namespace devserver
