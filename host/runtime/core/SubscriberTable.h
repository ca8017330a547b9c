#pragma once

#include <QObject>
#include <QPointer>
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
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
        Entries& entries = At(key);
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
        ForEachEntries([&](Entries& entries) {
            for (const auto& entry : entries) {
                if (entry->context == context) {
                    entry->context.clear();
                    m_bUnswept = true;
                }
            }
        });
        SweepWhenIdle();
    }

    /// Calls `call(callback)` for the subscribers of `key`, in order of binding. `call` must not throw.
    template <class Call>
    void Deliver(Key key, const Call& call) {
        // Good while keys are added; entries go only in Sweep, when nothing is delivered.
        Entries* const found = SlotOf(key).entries.get();
        if (!found) {
            return;
        }
        Entries& entries = *found;
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
        ForEachEntries(
            [&count](const Entries& entries) { count += int(std::count_if(entries.begin(), entries.end(), IsAlive)); });
        return count;
    }

    /// Those of `key` whose context lives.
    int CountOf(Key key) const {
        const Slot& slot = m_slots[SlotIndex(m_slots, key)];
        return slot.entries ? int(std::count_if(slot.entries->begin(), slot.entries->end(), IsAlive)) : 0;
    }

private:
    struct Entry {
        QPointer<QObject> context;  // null when it died or unbound
        Callback callback;
    };
    using Entries = std::vector<std::unique_ptr<Entry>>;
    struct Slot {
        Key key{};
        std::unique_ptr<Entries> entries;  // null where the slot is free
    };

    static constexpr size_t kFewestSlots = 16;

    static bool IsAlive(const std::unique_ptr<Entry>& entry) { return !entry->context.isNull(); }

    // An open table of a power of two, at least half of it free: a send finds its subscribers without the
    // division that a standard map of this kind makes. Keys are never taken out.
    size_t SlotIndex(const std::vector<Slot>& table, Key key) const {
        constexpr uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
        const size_t mask = table.size() - 1;
        size_t index = size_t((uint64_t(key) * kGoldenRatio) >> 32) & mask;
        while (table[index].entries && table[index].key != key) {
            index = (index + 1) & mask;
        }
        return index;
    }

    Slot& SlotOf(Key key) { return m_slots[SlotIndex(m_slots, key)]; }

    Entries& At(Key key) {
        if (2 * (m_nKeys + 1) > m_slots.size()) {
            std::vector<Slot> larger(2 * m_slots.size());
            for (Slot& slot : m_slots) {
                if (slot.entries) {
                    larger[SlotIndex(larger, slot.key)] = std::move(slot);
                }
            }
            m_slots.swap(larger);
        }
        Slot& slot = SlotOf(key);
        if (!slot.entries) {
            slot = {key, std::make_unique<Entries>()};
            ++m_nKeys;
        }
        return *slot.entries;
    }

    template <class Visit>
    void ForEachEntries(const Visit& visit) const {
        for (const Slot& slot : m_slots) {
            if (slot.entries) {
                visit(*slot.entries);
            }
        }
    }

    void SweepWhenIdle() {
        if (m_nDeliveries != 0 || !m_bUnswept) {
            return;
        }
        m_bUnswept = false;
        // A callback may hold the last reference to something whose end binds or unbinds: the dead are
        // destroyed when the table is whole again.
        Entries dead;
        ForEachEntries([&dead](Entries& entries) {
            const auto firstDead = std::stable_partition(entries.begin(), entries.end(), IsAlive);
            std::move(firstDead, entries.end(), std::back_inserter(dead));
            entries.erase(firstDead, entries.end());
        });
    }

    std::vector<Slot> m_slots = std::vector<Slot>(kFewestSlots);
    size_t m_nKeys = 0;
    int m_nDeliveries = 0;
    bool m_bUnswept = false;
};
