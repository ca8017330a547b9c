#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "JsonMessage.h"
#include "scenario.pb.h"

namespace devserver {

/// Active faults by key. A Fault is a message with an optional field `times`.
template <class Key, class Fault>
class CFaultTable {
public:
    using Table = std::map<Key, Fault>;

    void Set(Table faults) { m_faults = std::move(faults); }
    void Set(const Key& key, const Fault& fault) { m_faults[key] = fault; }
    void Remove(const Key& key) { m_faults.erase(key); }

    /// The active faults. `times` is the number of uses left.
    const Table& All() const { return m_faults; }

    /// Returns the fault of `key`, if any, and counts one use.
    std::optional<Fault> Take(const Key& key) {
        const auto found = m_faults.find(key);
        if (found == m_faults.end()) {
            return std::nullopt;
        }
        const Fault fault = found->second;
        if (fault.has_times()) {
            found->second.set_times(fault.times() - 1);
            if (fault.times() == 1) {
                m_faults.erase(found);
            }
        }
        return fault;
    }

private:
    Table m_faults;
};

/// Reads a table from a JSON object. Operation `read` turns a key text, a JSON value and errors into an entry.
template <class Faults, class ReadEntry>
std::optional<typename Faults::Table> ReadFaultTable(const std::string& text, Errors& errors, ReadEntry read) {
    const size_t errorsBefore = errors.size();
    typename Faults::Table table;
    const auto json = ParseJson(text, errors);
    if (json && !json->isObject()) {
        errors.emplace_back("must be an object");
    }
    for (const std::string& key : json && json->isObject() ? json->getMemberNames() : std::vector<std::string>()) {
        if (const auto entry = read(key, (*json)[key])) {
            table.insert(*entry);
        }
    }
    return errors.size() == errorsBefore ? std::make_optional(std::move(table)) : std::nullopt;
}

/// Writes the active faults as the object that ReadFaultTable reads.
template <class Faults>
Json::Value WriteFaultTable(const Faults& faults) {
    Json::Value json(Json::objectValue);
    for (const auto& [key, fault] : faults.All()) {
        json[fmt::format(FMT_STRING("{}"), key)] = WriteMessage(fault);
    }
    return json;
}

using CReplyFaults = CFaultTable<uint32_t, ReplyFault>;  // by command

/// Returns the command of a decimal number, or nothing.
std::optional<uint32_t> ReadCommand(const std::string& text);

/// Reads one fault. `path` leads to it. Returns nothing, with at least one error, if it is invalid.
std::optional<ReplyFault> ReadReplyFault(const Json::Value& json, Errors& errors, const std::string& path = {});

/// Reads an object with one member per command number.
std::optional<CReplyFaults::Table> ReadReplyFaults(const std::string& text, Errors& errors);

/// Adds an error if no field but `times` is set.
template <class Fault>
void CheckEffect(Fault fault, const std::string& path, Errors& errors) {
    fault.clear_times();
    if (fault.ByteSizeLong() == 0) {
        errors.push_back((path.empty() ? path : path + ": ") + "must hold a field other than times");
    }
}

}  // namespace devserver
