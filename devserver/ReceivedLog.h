#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>

namespace devserver {

/// One frame of a client.
struct ReceivedFrame {
    uint64_t number = 0;  // from 1 upwards, without gaps
    uint64_t connection = 0;
    uint64_t user = 0;  // logged in or to be logged in; 0 for nobody
    std::string kind;   // LOGIN, LOGOUT, LANGUAGE or REQUEST
    uint32_t command = 0;
    uint64_t session = 0;
    std::string body;
    std::optional<int32_t> language;  // of the frame
};

/// The latest entries, limited in number and in bytes of their bodies. An Entry has the members `number` and `body`.
template <class Entry>
class CBoundedLog {
public:
    static constexpr size_t kMaxEntries = 10'000;
    static constexpr size_t kMaxBytes = 64 * 1024 * 1024;

    /// Numbers and keeps the entry. Removes the oldest ones above the limits.
    void Add(Entry entry) {
        entry.number = ++m_nAdded;
        m_nBytes += entry.body.size();
        m_entries.push_back(std::move(entry));
        while (m_entries.size() > kMaxEntries || m_nBytes > kMaxBytes) {
            m_nBytes -= m_entries.front().body.size();
            m_entries.pop_front();
        }
    }

    const std::deque<Entry>& Entries() const { return m_entries; }

private:
    std::deque<Entry> m_entries;
    uint64_t m_nAdded = 0;
    size_t m_nBytes = 0;
};

using CReceivedLog = CBoundedLog<ReceivedFrame>;

}  // namespace devserver
