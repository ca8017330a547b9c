#include "observe/ObservedStore.h"

#include "observe/Observation.h"

CObservedStore::CObservedStore(ILocalStore& store, CObservation& observation)
    : m_store(store), m_observation(observation) {}

bool CObservedStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    const bool read = m_store.ReadString(owner, key, value);
    m_observation.Report(StoreSeen{false, owner, key, read ? value : std::string(), false, read});
    return read;
}

bool CObservedStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    const bool saved = m_store.SaveString(owner, key, value);
    m_observation.Report(StoreSeen{true, owner, key, value, false, saved});
    return saved;
}

bool CObservedStore::ReadInt64(const std::string& key, int64_t& value) {
    const bool read = m_store.ReadInt64(key, value);
    m_observation.Report(StoreSeen{false, std::nullopt, key, read ? std::to_string(value) : std::string(), true, read});
    return read;
}

bool CObservedStore::SaveInt64(const std::string& key, int64_t value) {
    const bool saved = m_store.SaveInt64(key, value);
    m_observation.Report(StoreSeen{true, std::nullopt, key, std::to_string(value), true, saved});
    return saved;
}
