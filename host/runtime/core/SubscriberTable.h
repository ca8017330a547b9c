#pragma once

#include <QObject>
#include <QPointer>
#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

/// Subscribers by key, each tied to a context object. Deliveries may be nested, and whatever a callback does
/// to the table is safe: one bound inside a delivery gets the next one, one unbound or dead gets nothing
/// more, and a callback lives until its own call returns. One thread.
template <class Key, class Callback>
class SubscriberTable {
public:
    /// A null context or an empty callback binds nothing.
    void Bind(Key key, Callback callback, QObject* context) {
        if (!context || !callback) {
            return;
        }
        Entries& entries = m_entries[key];
        if (entries.size() == entries.capacity()) {
            // Where contexts come and go and nothing is ever delivered, the dead would pile up.
            m_bUnswept = true;
            SweepWhenIdle();
        }
        entries.push_back(std::make_unique<Entry>(Entry{context, std::move(callback)}));
    }

    void UnBind(QObject* context) {
        if (!context) {
            return;
        }
        for (auto& [key, entries] : m_entries) {
            for (const auto& entry : entries) {
                if (entry->context == context) {
                    entry->bound = false;
                    m_bUnswept = true;
                }
            }
        }
        SweepWhenIdle();
    }

    /// Calls `call(callback)` for the subscribers of `key`, in order of binding. `call` must not throw.
    template <class Call>
    void Deliver(Key key, const Call& call) {
        const auto found = m_entries.find(key);
        if (found == m_entries.end()) {
            return;
        }
        // The reference stays good while keys are added; entries go only in Sweep, when nothing is delivered.
        Entries& entries = found->second;
        ++m_nDeliveries;
        const size_t count = entries.size();
        for (size_t i = 0; i < count; ++i) {
            const Entry* entry = entries[i].get();
            if (!entry->context) {
                m_bUnswept = true;
            } else if (entry->bound) {
                call(entry->callback);
            }
        }
        --m_nDeliveries;
        SweepWhenIdle();
    }

    /// Subscriptions whose context lives.
    int Count() const {
        int count = 0;
        for (const auto& [key, entries] : m_entries) {
            count += int(std::count_if(entries.begin(), entries.end(), IsAlive));
        }
        return count;
    }

    /// Those of `key` whose context lives.
    int CountOf(Key key) const {
        const auto found = m_entries.find(key);
        return found == m_entries.end() ? 0 : int(std::count_if(found->second.begin(), found->second.end(), IsAlive));
    }

private:
    struct Entry {
        QPointer<QObject> context;
        Callback callback;
        bool bound = true;
    };
    using Entries = std::vector<std::unique_ptr<Entry>>;

    static bool IsAlive(const std::unique_ptr<Entry>& entry) { return entry->bound && entry->context; }

    void SweepWhenIdle() {
        if (m_nDeliveries != 0 || !m_bUnswept) {
            return;
        }
        m_bUnswept = false;
        // A callback may hold the last reference to something whose end binds or unbinds: the dead are
        // destroyed when the table is whole again.
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
