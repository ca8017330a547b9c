#include "support/ScriptedStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

bool operator==(const StoreSave& left, const StoreSave& right) {
    return std::tie(left.owner, left.key, left.value) == std::tie(right.owner, right.key, right.value);
}

std::ostream& operator<<(std::ostream& stream, const StoreSave& save) {
    stream << (save.owner ? "user " + std::to_string(*save.owner) : std::string("installation"));
    return stream << ", " << ::testing::PrintToString(save.key) << " = " << ::testing::PrintToString(save.value);
}

const std::vector<StoreSave>& CScriptedStore::Saves() {
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
    return m_saves;
}

void CScriptedStore::SetAppString(const std::string& key, const std::string& value) {
    m_values[Key(std::nullopt, key)] = value;
}

void CScriptedStore::SetUserString(uint64_t user, const std::string& key, const std::string& value) {
    m_values[Key(user, key)] = value;
}

void CScriptedStore::SetInt64(const std::string& key, int64_t value) {
    m_values[Key(std::nullopt, key)] = value;
}

std::optional<std::string> CScriptedStore::AppString(const std::string& key) {
    LookAt(Key(std::nullopt, key));
    return Stored<std::string>(Key(std::nullopt, key));
}

std::optional<std::string> CScriptedStore::UserString(uint64_t user, const std::string& key) {
    LookAt(Key(user, key));
    return Stored<std::string>(Key(user, key));
}

std::optional<int64_t> CScriptedStore::Int64(const std::string& key) {
    LookAt(Key(std::nullopt, key));
    return Stored<int64_t>(Key(std::nullopt, key));
}

void CScriptedStore::RefuseSaves(Failing which) {
    m_refusedSaves = which;
}

void CScriptedStore::RefuseReads(Failing which) {
    m_refusedReads = which;
}

void CScriptedStore::Forget() {
    m_saves.clear();
    m_lookedAt.clear();
}

void CScriptedStore::CheckAllLookedAt() {
    for (size_t i = 0; i < m_saves.size(); ++i) {
        if (!m_lookedAt[i]) {
            ADD_FAILURE() << "Unexpected save: " << m_saves[i];
        }
    }
}

bool CScriptedStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    const auto stored = m_refusedReads.Next() ? std::nullopt : Stored<std::string>(Key(owner, key));
    if (!stored) {
        return false;
    }
    value = *stored;
    return true;
}

bool CScriptedStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    return Save(Key(owner, key), value, value);
}

bool CScriptedStore::ReadInt64(const std::string& key, int64_t& value) {
    m_int64Reads.push_back(key);
    const auto stored = m_refusedReads.Next() ? std::nullopt : Stored<int64_t>(Key(std::nullopt, key));
    if (!stored) {
        return false;
    }
    value = *stored;
    return true;
}

bool CScriptedStore::SaveInt64(const std::string& key, int64_t value) {
    return Save(Key(std::nullopt, key), value, std::to_string(value));
}

template <class Type>
std::optional<Type> CScriptedStore::Stored(const Key& key) const {
    const auto found = m_values.find(key);
    const Type* value = found == m_values.end() ? nullptr : std::get_if<Type>(&found->second);
    return value ? std::optional<Type>(*value) : std::nullopt;
}

bool CScriptedStore::Save(const Key& key, Value value, const std::string& text) {
    m_saves.push_back(StoreSave{key.first, key.second, text});
    m_lookedAt.push_back(false);
    if (m_refusedSaves.Next()) {
        return false;
    }
    m_values[key] = std::move(value);
    return true;
}

void CScriptedStore::LookAt(const Key& key) {
    for (size_t i = 0; i < m_saves.size(); ++i) {
        if (m_saves[i].owner == key.first && m_saves[i].key == key.second) {
            m_lookedAt[i] = true;
        }
    }
}
