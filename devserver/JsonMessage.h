#pragma once

#include <google/protobuf/message.h>
#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

namespace devserver {

/// One line per error: key path, then the reason.
using Errors = std::vector<std::string>;

constexpr unsigned kMaxJsonDepth = 64;

/// Parses untrusted bytes as JSON of RFC 8259 in UTF-8, without duplicate keys and with at most `maxDepth` levels.
/// Throws nothing. Returns nothing, with one error, if the text is refused.
std::optional<Json::Value> ParseJson(const std::string& text, Errors& errors, unsigned maxDepth = kMaxJsonDepth);

/// JSON in one line, without blanks.
std::string WriteJson(const Json::Value& value);

bool IsUtf8(const std::string& text);

/// The errors in one line.
std::string Joined(const Errors& errors);

/// Fills `message`, a message of scenario.proto, and checks its rules. Returns false, with at least one error, if the
/// JSON breaks the schema or a rule. `path` leads to `json` and begins each key path.
bool ReadMessage(const Json::Value& json, google::protobuf::Message& message, Errors& errors,
                 const std::string& path = {});

/// The same from a text, as a message of its own.
template <class Message>
std::optional<Message> ReadText(const std::string& text, Errors& errors) {
    const auto json = ParseJson(text, errors);
    Message message;
    return json && ReadMessage(*json, message, errors) ? std::make_optional(message) : std::nullopt;
}

/// Writes the fields that are set. A number of 64 bits becomes a text.
Json::Value WriteMessage(const google::protobuf::Message& message);

}  // namespace devserver
