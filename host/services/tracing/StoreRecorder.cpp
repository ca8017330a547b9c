#include "tracing/StoreRecorder.h"

#include "tracing/TraceLog.h"

CStoreRecorder::CStoreRecorder(ILocalStore& store, CTraceLog& traceLog) : m_store(store), m_traceLog(traceLog) {}

bool CStoreRecorder::ReadString(Owner owner, const std::string& key, std::string& value) {
    const bool read = m_store.ReadString(owner, key, value);
    m_traceLog.Record(StoreTrace{false, owner, key, read ? value.substr(0, kTracedBytes) : std::string(), false, read});
    return read;
}

bool CStoreRecorder::SaveString(Owner owner, const std::string& key, const std::string& value) {
    const bool saved = m_store.SaveString(owner, key, value);
    m_traceLog.Record(StoreTrace{true, owner, key, value.substr(0, kTracedBytes), false, saved});
    return saved;
}

bool CStoreRecorder::ReadInt64(const std::string& key, int64_t& value) {
    const bool read = m_store.ReadInt64(key, value);
    m_traceLog.Record(StoreTrace{false, std::nullopt, key, read ? std::to_string(value) : std::string(), true, read});
    return read;
}

bool CStoreRecorder::SaveInt64(const std::string& key, int64_t value) {
    const bool saved = m_store.SaveInt64(key, value);
    m_traceLog.Record(StoreTrace{true, std::nullopt, key, std::to_string(value), true, saved});
    return saved;
}
