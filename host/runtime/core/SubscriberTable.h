#pragma once

#include <QObject>
#include <QPointer>
#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

/// Subscribers by key, each tied to a context object. A callback may bind, unbind and deliver. A subscriber bound
/// inside a delivery gets the next message. An unbound or dead one gets nothing more. A callback lives until its own
/// call returns. Single thread.
template <class Key, class Callback>
class CSubscriberTable {
public:
    /// A null context or an empty callback binds nothing.
    void Bind(Key key, Callback callback, QObject* context) {
        if (!context || !callback) {
            return;
        }
        Entries& entries = m_entries[key];
        if (entries.size() == entries.capacity()) {
            // Removes dead entries of keys that never get a delivery.
            m_bUnswept = true;
            SweepWhenIdle();
        }
        entries.push_back(std::make_unique<Entry>(Entry{context, std::move(callback)}));
    }

    void UnBind(QObject* context) {
        if (!context) {
            return;
        }
        for (const auto& [key, entries] : m_entries) {
            for (const auto& entry : entries) {
                if (entry->context == context) {
                    entry->context.clear();
                    m_bUnswept = true;
                }
            }
        }
        SweepWhenIdle();
    }

    /// Calls `call(callback)` for each subscriber of `key`, in order of binding. `call` must not throw.
    template <class Call>
    void Deliver(Key key, const Call& call) {
        // Keys are never removed, and entries only while no delivery runs. The reference therefore stays valid.
        const auto found = m_entries.find(key);
        if (found == m_entries.end()) {
            return;
        }
        Entries& entries = found->second;
        ++m_nDeliveries;
        const size_t count = entries.size();
        for (size_t i = 0; i < count; ++i) {
            const Entry* entry = entries[i].get();
            if (Q_LIKELY(entry->context)) {
                call(entry->callback);
            } else {
                m_bUnswept = true;
            }
        }
        --m_nDeliveries;
        if (m_bUnswept) {
            SweepWhenIdle();
        }
    }

    /// Subscriptions whose context lives.
    int Count() const {
        int count = 0;
        for (const auto& [key, entries] : m_entries) {
            count += int(std::count_if(entries.begin(), entries.end(), IsAlive));
        }
        return count;
    }

    /// Subscriptions of `key` whose context lives.
    int CountOf(Key key) const {
        const auto found = m_entries.find(key);
        return found == m_entries.end() ? 0 : int(std::count_if(found->second.begin(), found->second.end(), IsAlive));
    }

private:
    struct Entry {
        QPointer<QObject> context;  // null when it died or unbound
        Callback callback;
    };
    using Entries = std::vector<std::unique_ptr<Entry>>;

    static bool IsAlive(const std::unique_ptr<Entry>& entry) { return !entry->context.isNull(); }

    void SweepWhenIdle() {
        if (m_nDeliveries != 0 || !m_bUnswept) {
            return;
        }
        m_bUnswept = false;
        // Destroying a callback may bind or unbind, so this happens after the table is consistent.
        Entries dead;
        for (auto& [key, entries] : m_entries) {
            const auto firstDead = std::stable_partition(entries.begin(), entries.end(), IsAlive);
            std::move(firstDead, entries.end(), std::back_inserter(dead));
            entries.erase(firstDead, entries.end());
        }
    }

    std::unordered_map<Key, Entries> m_entries;
    int m_nDeliveries = 0;
    bool m_bUnswept = false;
};
