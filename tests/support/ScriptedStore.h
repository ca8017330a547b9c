#pragma once

#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "core/ILocalStore.h"
#include "support/Failing.h"

/// A save as it was requested, including refused ones. A number is written in decimal.
struct StoreSave {
    ILocalStore::Owner owner;
    std::string key;
    std::string value;
};

bool operator==(const StoreSave& left, const StoreSave& right);
std::ostream& operator<<(std::ostream& stream, const StoreSave& save);

/// The store in memory. A save that no test looked at (Saves, or reading the value) fails the test.
class CScriptedStore : public ILocalStore {
public:
    const std::vector<StoreSave>& Saves();

    /// Sets a value without a save, as if it had been saved earlier.
    void SetAppString(const std::string& key, const std::string& value);
    void SetUserString(uint64_t user, const std::string& key, const std::string& value);
    void SetInt64(const std::string& key, int64_t value);

    /// The stored value. Empty without one, and for a value of the other type.
    std::optional<std::string> AppString(const std::string& key);
    std::optional<std::string> UserString(uint64_t user, const std::string& key);
    std::optional<int64_t> Int64(const std::string& key);

    /// The keys of all reads of numbers, including refused ones.
    const std::vector<std::string>& Int64Reads() const { return m_int64Reads; }

    /// The calls that `which` selects return false and change nothing.
    void RefuseSaves(Failing which);
    void RefuseReads(Failing which);

    /// Marks all saves as looked at and clears the record. Values are kept.
    void Forget();

    /// Fails the test for each save that no test looked at.
    void CheckAllLookedAt();

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

private:
    using Key = std::pair<Owner, std::string>;
    using Value = std::variant<std::string, int64_t>;

    template <class Type>
    std::optional<Type> Stored(const Key& key) const;
    bool Save(const Key& key, Value value, const std::string& text);
    void LookAt(const Key& key);

    std::map<Key, Value> m_values;
    std::vector<StoreSave> m_saves;
    std::vector<bool> m_lookedAt;  // beside m_saves
    std::vector<std::string> m_int64Reads;
    Failing m_refusedSaves = Failing::Never();
    Failing m_refusedReads = Failing::Never();
};
