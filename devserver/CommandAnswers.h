#pragma once

#include <cstdint>
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

struct CommandAnswer {
    int32_t error = kErrorNone;
    std::string body;  // empty with an error
};

/// Maximum size of an answer, without what surrounds its elements.
constexpr size_t kMaxAnswerBytes = 16 * 1024 * 1024;

/// The sender of a request. Refers to the scenario.
struct RequestContext {
    const CScenario& scenario;
    const User& user;
    Language language;
};

/// Answers a command from the scenario.
CommandAnswer AnswerCommand(uint32_t command, const RequestContext& context, const std::string& body);

}  // namespace devserver
