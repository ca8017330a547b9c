#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "FaultTable.h"
#include "JsonNode.h"

namespace devserver {

/// How the reply to a command differs from what it should be. Members combine.
struct Fault {
    std::optional<int32_t> error;          // instead of 0; takes the body away, unless `body` gives another
    std::optional<std::string> body;       // these bytes
    std::optional<uint32_t> replyCommand;  // the reply names this command
    std::optional<std::string> frame;      // these bytes instead of the whole envelope
    int delayMs = 0;
    int copies = 1;
    bool silent = false;            // no reply at all
    bool drop = false;              // the connection is cut instead
    std::optional<uint64_t> times;  // so many replies are left; for ever without it
};

using CFaults = CFaultTable<uint32_t, Fault>;  // by command
using FaultTable = CFaults::Table;

/// The table of a JSON object with one member per command number, or nothing and at least one error.
std::optional<FaultTable> FaultsFromText(const std::string& text, Errors& errors);

/// One fault of a JSON object, or nothing and at least one error.
std::optional<Fault> FaultFromText(const std::string& text, Errors& errors);

}  // namespace devserver
