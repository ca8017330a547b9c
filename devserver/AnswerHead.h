#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "JsonNode.h"

namespace devserver {

/// The result that an answer of the premium and the VIP service begins with.
struct AnswerHead {
    std::optional<int32_t> code = 0;     // null in a scenario is an answer without a code
    std::optional<std::string> message;  // without it the field is absent
};

/// Of an object that has the optional members "code" and "message" among others.
AnswerHead ReadAnswerHead(const CJsonNode& node);

/// Adds the members to `json`; a code of 0 goes without saying.
void WriteAnswerHead(Json::Value& json, const AnswerHead& head);

}  // namespace devserver
