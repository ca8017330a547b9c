#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace devserver {

/// All that is wrong with one text: a line each, key path (or place) first, then the reason.
using Errors = std::vector<std::string>;

/// Strict JSON from bytes that are not to be trusted: UTF-8, no comments, no trailing bytes, no duplicate
/// keys, values inside values `maxDepth` deep at most. Nothing is thrown; an empty result comes with an error.
std::optional<Json::Value> ParseJson(const std::string& text, unsigned maxDepth, Errors& errors);

/// In one line, without blanks.
std::string WriteJson(const Json::Value& value);

bool IsUtf8(const std::string& text);

/// A value of a JSON text and the key path that leads to it. What has the wrong type or range is added to
/// the errors and read as empty, so that one reading finds them all. A node of a missing member is absent:
/// it reads as empty and reports nothing, as `Keys` has reported it already where it must be there.
/// Refers to the value and to the errors, which must live longer.
class CJsonNode {
public:
    CJsonNode(const Json::Value& value, std::string path, Errors& errors);

    bool Present() const { return m_pValue != nullptr; }
    bool IsNull() const { return m_pValue && m_pValue->isNull(); }

    /// Checks for an object that has all of `required`, perhaps some of `optional`, and nothing else.
    void Keys(const std::vector<std::string>& required, const std::vector<std::string>& optional) const;

    CJsonNode Member(const std::string& key) const;
    std::vector<std::pair<std::string, CJsonNode>> Members() const;  // of an object with free keys
    std::vector<CJsonNode> Items() const;

    uint64_t Unsigned(uint64_t min, uint64_t max) const;
    uint32_t UInt32() const;
    int64_t Signed(int64_t min, int64_t max) const;
    int32_t Int32() const;
    bool Bool() const;
    std::string Text() const;
    std::string NonEmptyText() const;
    std::string HexBytes() const;
    Json::Value Any() const;  // whatever it is, as long as its texts are of whole characters

    /// What `read` finds, or nothing in an absent node: node.Maybe(&CJsonNode::Int32).
    template <class T>
    std::optional<T> Maybe(T (CJsonNode::*read)() const) const {
        return Present() ? std::optional<T>((this->*read)()) : std::nullopt;
    }

    void Refuse(const std::string& reason) const;

private:
    CJsonNode(const Json::Value* value, std::string path, Errors* errors);
    bool Is(bool type, const char* reason) const;

    const Json::Value* m_pValue;
    std::string m_strPath;
    Errors* m_pErrors;
};

/// What `read` makes of a whole text, or nothing and at least one error.
template <class T>
std::optional<T> ReadJson(const std::string& text, unsigned maxDepth, T (*read)(const CJsonNode&), Errors& errors) {
    const size_t errorsBefore = errors.size();
    const auto json = ParseJson(text, maxDepth, errors);
    if (!json) {
        return std::nullopt;
    }
    std::optional<T> result = read(CJsonNode(*json, {}, errors));
    if (errors.size() != errorsBefore) {
        result.reset();
    }
    return result;
}

/// An absent value is an absent member.
template <class T>
void WriteMember(Json::Value& json, const char* key, const std::optional<T>& value) {
    if (value) {
        json[key] = *value;
    }
}

}  // namespace devserver
