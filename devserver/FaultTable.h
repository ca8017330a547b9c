#pragma once

#include <map>
#include <optional>
#include <utility>

namespace devserver {

/// The faults in force, by what they strike. A fault has a member `times`, an optional count of how often it
/// strikes; without one it lasts.
template <class Key, class Fault>
class CFaultTable {
public:
    using Table = std::map<Key, Fault>;

    void Set(Table faults) { m_faults = std::move(faults); }
    void Set(const Key& key, Fault fault) { m_faults[key] = std::move(fault); }
    void Remove(const Key& key) { m_faults.erase(key); }

    /// The fault that strikes `key` next, used up by one.
    std::optional<Fault> Take(const Key& key) {
        const auto found = m_faults.find(key);
        if (found == m_faults.end()) {
            return std::nullopt;
        }
        const Fault fault = found->second;
        if (found->second.times && --*found->second.times == 0) {
            m_faults.erase(found);
        }
        return fault;
    }

private:
    Table m_faults;
};

}  // namespace devserver
