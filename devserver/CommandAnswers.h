#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

#include "Language.h"
#include "Scenario.h"

namespace devserver {

/// Errors of a reply. 0 is success.
enum CommandError : int32_t {
    kErrorNone = 0,
    kErrorNotLoggedIn = 1,
    kErrorUnknownCommand = 2,
    kErrorBadBody = 3,
    kErrorTooLarge = 4,
};

/// A change of the sender, made if the reply is sent as it is.
struct CommandEffect {
    Json::Value premium;       // the user's new member
    uint32_t pushCommand = 0;  // to all connections of the user, behind the reply
    std::string pushBody;
};

struct CommandAnswer {
    int32_t error = kErrorNone;
    std::string body;  // empty with an error
    bool silent = false;
    std::optional<CommandEffect> effect = {};
};

/// Maximum size of an answer, without what surrounds its elements.
constexpr size_t kMaxAnswerBytes = 16 * 1024 * 1024;

/// The sender of a request. Refers to the scenario.
struct RequestContext {
    const CScenario& scenario;
    const User& user;
    Language language;
    std::string origin = {};  // of the HTTP port
};

/// Answers a command from the scenario.
CommandAnswer AnswerCommand(uint32_t command, const RequestContext& context, const std::string& body);

}  // namespace devserver
