#include "JsonNode.h"

#include <fmt/format.h>
#include <json/reader.h>
#include <json/writer.h>

#include <QString>
#include <QTextCodec>
#include <algorithm>
#include <limits>
#include <memory>

#include "Hex.h"

namespace devserver {
namespace {

bool IsWhole(const Json::Value& value) {
    // A type check and not isUInt64(), which takes 1.0 and 1e3 as well.
    return value.type() == Json::intValue || value.type() == Json::uintValue;
}

bool Contains(const std::vector<std::string>& keys, const std::string& key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

std::string Joined(const std::string& path, const std::string& key) {
    return path.empty() ? key : path + "." + key;
}

}  // namespace

bool IsUtf8(const std::string& text) {
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QTextCodec::codecForName("UTF-8")->toUnicode(text.data(), int(text.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

std::optional<Json::Value> ParseJson(const std::string& text, unsigned maxDepth, Errors& errors) {
    if (!IsUtf8(text)) {
        errors.push_back("not JSON: not UTF-8");
        return std::nullopt;
    }
    // The parser takes a zero byte as the end and would not see what follows.
    if (text.find('\0') != std::string::npos) {
        errors.push_back("not JSON: holds a zero byte");
        return std::nullopt;
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["strictRoot"] = false;
    builder["stackLimit"] = maxDepth;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    try {
        Json::Value value;
        std::string reasons;
        if (reader->parse(text.data(), text.data() + text.size(), &value, &reasons)) {
            return value;
        }
        errors.push_back("not JSON: " + QString::fromStdString(reasons).simplified().toStdString());
    } catch (const std::exception&) {
        // The one thing that the parser throws on in text.
        errors.push_back(fmt::format(FMT_STRING("nested more than {} deep"), maxDepth));
    }
    return std::nullopt;
}

std::string WriteJson(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
}

CJsonNode::CJsonNode(const Json::Value& value, std::string path, Errors& errors)
    : CJsonNode(&value, std::move(path), &errors) {}

CJsonNode::CJsonNode(const Json::Value* value, std::string path, Errors* errors)
    : m_pValue(value), m_strPath(std::move(path)), m_pErrors(errors) {}

void CJsonNode::Refuse(const std::string& reason) const {
    m_pErrors->push_back(m_strPath.empty() ? reason : m_strPath + ": " + reason);
}

bool CJsonNode::Is(bool type, const char* reason) const {
    if (!type) {
        Refuse(reason);
    }
    return type;
}

void CJsonNode::Keys(const std::vector<std::string>& required, const std::vector<std::string>& optional) const {
    if (!m_pValue || !Is(m_pValue->isObject(), "must be an object")) {
        return;
    }
    for (const std::string& key : m_pValue->getMemberNames()) {
        if (!Contains(required, key) && !Contains(optional, key)) {
            m_pErrors->push_back(Joined(m_strPath, key) + ": unknown key");
        }
    }
    for (const std::string& key : required) {
        if (!m_pValue->isMember(key)) {
            m_pErrors->push_back(Joined(m_strPath, key) + ": missing");
        }
    }
}

CJsonNode CJsonNode::Member(const std::string& key) const {
    const bool there = m_pValue && m_pValue->isObject() && m_pValue->isMember(key);
    return CJsonNode(there ? &(*m_pValue)[key] : nullptr, Joined(m_strPath, key), m_pErrors);
}

std::vector<std::pair<std::string, CJsonNode>> CJsonNode::Members() const {
    std::vector<std::pair<std::string, CJsonNode>> members;
    if (m_pValue && Is(m_pValue->isObject(), "must be an object")) {
        for (const std::string& key : m_pValue->getMemberNames()) {
            if (Is(IsUtf8(key), "its keys must be texts of whole characters")) {
                members.emplace_back(key, Member(key));
            }
        }
    }
    return members;
}

std::vector<CJsonNode> CJsonNode::Items() const {
    std::vector<CJsonNode> items;
    if (m_pValue && Is(m_pValue->isArray(), "must be a list")) {
        for (const Json::Value& item : *m_pValue) {
            items.push_back(CJsonNode(&item, fmt::format(FMT_STRING("{}[{}]"), m_strPath, items.size()), m_pErrors));
        }
    }
    return items;
}

uint64_t CJsonNode::Unsigned(uint64_t min, uint64_t max) const {
    if (!m_pValue) {
        return 0;
    }
    if (IsWhole(*m_pValue) && m_pValue->isUInt64() && m_pValue->asUInt64() >= min && m_pValue->asUInt64() <= max) {
        return m_pValue->asUInt64();
    }
    Refuse(fmt::format(FMT_STRING("must be a whole number from {} to {}"), min, max));
    return 0;
}

int64_t CJsonNode::Signed(int64_t min, int64_t max) const {
    if (!m_pValue) {
        return 0;
    }
    if (IsWhole(*m_pValue) && m_pValue->isInt64() && m_pValue->asInt64() >= min && m_pValue->asInt64() <= max) {
        return m_pValue->asInt64();
    }
    Refuse(fmt::format(FMT_STRING("must be a whole number from {} to {}"), min, max));
    return 0;
}

uint32_t CJsonNode::UInt32() const {
    return uint32_t(Unsigned(0, std::numeric_limits<uint32_t>::max()));
}

int32_t CJsonNode::Int32() const {
    return int32_t(Signed(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

bool CJsonNode::Bool() const {
    return m_pValue && Is(m_pValue->isBool(), "must be true or false") && m_pValue->asBool();
}

std::string CJsonNode::Text() const {
    if (!m_pValue || !Is(m_pValue->isString(), "must be a text")) {
        return {};
    }
    // Valid UTF-8 can still spell half of a surrogate pair as an escape.
    return Is(IsUtf8(m_pValue->asString()), "must be a text of whole characters") ? m_pValue->asString()
                                                                                  : std::string();
}

std::string CJsonNode::NonEmptyText() const {
    const size_t errorsBefore = m_pErrors->size();
    std::string text = Text();
    if (m_pValue && text.empty() && m_pErrors->size() == errorsBefore) {
        Refuse("must not be empty");
    }
    return text;
}

std::string CJsonNode::HexBytes() const {
    if (!m_pValue || !Is(m_pValue->isString(), "must be a text of hex digits")) {
        return {};
    }
    const auto bytes = FromHex(m_pValue->asString());
    return Is(bytes.has_value(), "must be an even number of hex digits") ? *bytes : std::string();
}

Json::Value CJsonNode::Any() const {
    const bool sound = m_pValue && Is(IsUtf8(WriteJson(*m_pValue)), "must hold texts of whole characters alone");
    return sound ? *m_pValue : Json::Value();
}

}  // namespace devserver
