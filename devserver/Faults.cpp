#include "Faults.h"

#include <limits>

#include "Digits.h"

namespace devserver {

std::optional<uint32_t> ReadCommand(const std::string& text) {
    const auto number = ReadNumber(text);
    const bool isCommand = number && *number > 0 && *number <= std::numeric_limits<uint32_t>::max();
    return isCommand ? std::make_optional(uint32_t(*number)) : std::nullopt;
}

std::optional<ReplyFault> ReadReplyFault(const Json::Value& json, Errors& errors, const std::string& path) {
    const size_t errorsBefore = errors.size();
    ReplyFault fault;
    if (ReadMessage(json, fault, errors, path)) {
        CheckEffect(fault, path, errors);
    }
    return errors.size() == errorsBefore ? std::make_optional(fault) : std::nullopt;
}

std::optional<CReplyFaults::Table> ReadReplyFaults(const std::string& text, Errors& errors) {
    using Entry = std::optional<CReplyFaults::Table::value_type>;
    return ReadFaultTable<CReplyFaults>(text, errors, [&errors](const std::string& key, const Json::Value& json) {
        const auto command = ReadCommand(key);
        if (!command) {
            errors.push_back(key + ": the key must be a command's number");
            return Entry();
        }
        const auto fault = ReadReplyFault(json, errors, key);
        return fault ? Entry({*command, *fault}) : Entry();
    });
}

}  // namespace devserver
