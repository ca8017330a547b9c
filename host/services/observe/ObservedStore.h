#pragma once

#include "core/ILocalStore.h"

class CObservation;

/// A store that reports what is read and saved, and changes nothing. Main thread. Both must outlive it.
class CObservedStore : public ILocalStore {
public:
    CObservedStore(ILocalStore& store, CObservation& observation);

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

private:
    ILocalStore& m_store;
    CObservation& m_observation;
};
