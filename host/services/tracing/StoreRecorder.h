#pragma once

#include "core/ILocalStore.h"

class CTraceLog;

/// Records reads and saves of a store and forwards all calls unchanged. Main thread. The store and the trace log must
/// outlive it.
class CStoreRecorder : public ILocalStore {
public:
    CStoreRecorder(ILocalStore& store, CTraceLog& traceLog);

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

private:
    ILocalStore& m_store;
    CTraceLog& m_traceLog;
};
