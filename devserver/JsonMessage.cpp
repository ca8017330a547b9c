#include "JsonMessage.h"

#include <fmt/format.h>
#include <google/protobuf/util/json_util.h>
#include <json/reader.h>
#include <json/writer.h>

#include <QString>
#include <QTextCodec>
#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <memory>

#include "Digits.h"
#include "scenario.pb.h"

namespace devserver {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

constexpr const char* kForType = " for type ";

std::string Joined(const std::string& path, const std::string& key) {
    return path.empty() || key.empty() ? path + key : path + "." + key;
}

template <class Number>
std::string WholeNumber(const Rule& rule) {
    using Limits = std::numeric_limits<Number>;
    return fmt::format(FMT_STRING("must be a whole number from {} to {}"),
                       rule.has_min() ? Number(rule.min()) : Limits::min(),
                       rule.has_max() ? Number(rule.max()) : Limits::max());
}

// The parser's names of types.
std::string TypeError(const std::string& type) {
    static const std::map<std::string, std::string> errors{
        {"TYPE_INT32", WholeNumber<int32_t>({})},   {"TYPE_INT64", WholeNumber<int64_t>({})},
        {"TYPE_UINT32", WholeNumber<uint32_t>({})}, {"TYPE_UINT64", WholeNumber<uint64_t>({})},
        {"TYPE_BOOL", "must be true or false"},     {"TYPE_STRING", "must be a text"},
    };
    const auto found = errors.find(type);
    return found == errors.end() ? "must be an object" : found->second;
}

// Removes `beginning` from the front of `text`. Returns false if it is not there.
bool Remove(const char* beginning, std::string& text) {
    const size_t size = std::strlen(beginning);
    const bool begins = text.compare(0, size, beginning) == 0;
    text.erase(0, begins ? size : 0);
    return begins;
}

// The parser writes "(users[0].id): invalid value -1 for type TYPE_UINT64" and the like. No regular expressions, which
// recurse over keys and values of any length.
std::string KeyFirst(std::string error, std::string key) {
    if (Remove("(", error)) {
        const size_t end = error.find(')');
        key = Joined(key, error.substr(0, end));
        error.erase(0, end + 1);
        Remove(" ", error);
    }
    const size_t colon = error.find(": ");
    if (colon != std::string::npos) {
        key = Joined(key, error.substr(0, colon));
        error.erase(0, colon + 2);
    }
    if (Remove("invalid value ", error)) {
        error = TypeError(error.substr(error.rfind(kForType) + std::strlen(kForType)));
    } else if (error == "Cannot find field.") {
        error = "unknown key";
    } else if (error == "Proto field is not repeating, cannot start list.") {
        error = "must not be a list";
    } else if (error == "Root element must be a message.") {
        error = "must be an object";
    }
    return key.empty() ? error : key + ": " + error;
}

template <class Number>
std::string NumberError(Number value, const Rule& rule) {
    const bool isTooSmall = rule.has_min() && value < Number(rule.min());
    const bool isTooLarge = rule.has_max() && value > Number(rule.max());
    return isTooSmall || isTooLarge ? WholeNumber<Number>(rule) : std::string();
}

std::string TextError(const std::string& value, const Rule& rule) {
    if (rule.notempty() && value.empty()) {
        return "must not be empty";
    }
    return rule.hex() && !FromHex(value) ? "must be an even number of hex digits" : std::string();
}

// `message` holds the one value of `field` to check.
std::string RuleError(const Message& message, const FieldDescriptor& field, int index) {
    const Rule& rule = field.options().GetExtension(devserver::rule);
    const auto& reflection = *message.GetReflection();
    const bool isList = field.is_repeated();
    switch (field.cpp_type()) {
        case FieldDescriptor::CPPTYPE_INT32:
            return NumberError(
                isList ? reflection.GetRepeatedInt32(message, &field, index) : reflection.GetInt32(message, &field),
                rule);
        case FieldDescriptor::CPPTYPE_INT64:
            return NumberError(reflection.GetInt64(message, &field), rule);
        case FieldDescriptor::CPPTYPE_UINT32:
            return NumberError(
                isList ? reflection.GetRepeatedUInt32(message, &field, index) : reflection.GetUInt32(message, &field),
                rule);
        case FieldDescriptor::CPPTYPE_UINT64:
            return NumberError(
                isList ? reflection.GetRepeatedUInt64(message, &field, index) : reflection.GetUInt64(message, &field),
                rule);
        case FieldDescriptor::CPPTYPE_STRING:
            return TextError(
                isList ? reflection.GetRepeatedString(message, &field, index) : reflection.GetString(message, &field),
                rule);
        default:
            return {};
    }
}

void CheckRules(const Message& message, const std::string& path, Errors& errors) {
    const auto& reflection = *message.GetReflection();
    for (int number = 0; number < message.GetDescriptor()->field_count(); ++number) {
        const FieldDescriptor* field = message.GetDescriptor()->field(number);
        const std::string key = Joined(path, field->json_name());
        const bool isSet = field->is_repeated() || reflection.HasField(message, field);
        const int count = field->is_repeated() ? reflection.FieldSize(message, field) : int(isSet);
        if (!isSet && field->options().GetExtension(rule).needed()) {
            errors.push_back(key + ": missing");
        }
        for (int i = 0; i < count; ++i) {
            const std::string place = field->is_repeated() ? fmt::format(FMT_STRING("{}[{}]"), key, i) : key;
            if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) {
                const std::string error = RuleError(message, *field, i);
                if (!error.empty()) {
                    errors.push_back(fmt::format(FMT_STRING("{}: {}"), place, error));
                }
            } else if (field->message_type()->file() == Rule::descriptor()->file()) {
                CheckRules(field->is_repeated() ? reflection.GetRepeatedMessage(message, field, i)
                                                : reflection.GetMessage(message, field),
                           place, errors);
            }
        }
    }
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Returns whether the text is a number of RFC 8259: -?(0|[1-9][0-9]*)(.[0-9]+)?([eE][+-]?[0-9]+)?
bool IsNumber(const char* at, const char* end) {
    const auto take = [&](const char* characters) { return at != end && std::strchr(characters, *at) && (++at, true); };
    const auto takeDigits = [&] {
        const char* first = at;
        at = std::find_if_not(at, end, IsDigit);
        return at != first;
    };
    take("-");
    if (!take("0") && !takeDigits()) {
        return false;
    }
    if (take(".") && !takeDigits()) {
        return false;
    }
    if (take("eE")) {
        take("+-");
        if (!takeDigits()) {
            return false;
        }
    }
    return at == end;
}

// The parser accepts any run of digits, signs and points as a number, comments in lists and objects, and control
// characters in strings. Returns why the text, which the parser accepted and which holds no zero byte, is not JSON;
// null if it is.
const char* WhyNotJson(const std::string& text) {
    const char* const end = text.data() + text.size();
    bool inString = false;
    for (const char* at = text.data(); at != end; ++at) {
        if (inString) {
            if (static_cast<unsigned char>(*at) < 0x20) {
                return "holds a control character in a string";
            }
            inString = *at != '"';
            at += *at == '\\' ? 1 : 0;
        } else if (*at == '"') {
            inString = true;
        } else if (*at == '/') {
            return "holds a comment";
        } else if (IsDigit(*at) || std::strchr("+-.", *at)) {
            const char* last =
                std::find_if_not(at, end, [](char c) { return IsDigit(c) || std::strchr("+-.eE", c) != nullptr; });
            if (!IsNumber(at, last)) {
                return "holds an invalid number";
            }
            at = last - 1;
        }
    }
    return nullptr;
}

}  // namespace

bool IsUtf8(const std::string& text) {
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QTextCodec::codecForName("UTF-8")->toUnicode(text.data(), int(text.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

std::string Joined(const Errors& errors) {
    return fmt::format(FMT_STRING("{}"), fmt::join(errors, "; "));
}

std::optional<Json::Value> ParseJson(const std::string& text, Errors& errors, unsigned maxDepth) {
    if (!IsUtf8(text)) {
        errors.push_back("not JSON: not UTF-8");
        return std::nullopt;
    }
    // The parser takes a zero byte as the end and would not see the bytes behind it.
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
        if (!reader->parse(text.data(), text.data() + text.size(), &value, &reasons)) {
            errors.push_back("not JSON: " + QString::fromStdString(reasons).simplified().toStdString());
        } else if (const char* reason = WhyNotJson(text)) {
            errors.push_back(std::string("not JSON: ") + reason);
        } else if (!IsUtf8(WriteJson(value))) {
            // Valid UTF-8 can still escape half of a surrogate pair.
            errors.push_back("not JSON: escapes half a character");
        } else {
            return value;
        }
    } catch (const std::exception&) {
        // Depth is the only reason for which the parser throws.
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

bool ReadMessage(const Json::Value& json, Message& message, Errors& errors, const std::string& path) {
    const size_t errorsBefore = errors.size();
    const auto status = google::protobuf::util::JsonStringToMessage(WriteJson(json), &message);
    if (status.ok()) {
        CheckRules(message, path, errors);
    } else {
        errors.push_back(KeyFirst(status.message().ToString(), path));
    }
    return errors.size() == errorsBefore;
}

Json::Value WriteMessage(const Message& message) {
    std::string text;
    const auto status = google::protobuf::util::MessageToJsonString(message, &text);
    Errors errors;
    const auto json = status.ok() ? ParseJson(text, errors) : std::nullopt;
    return json.value_or(Json::objectValue);
}

}  // namespace devserver
