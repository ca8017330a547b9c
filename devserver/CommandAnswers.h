#pragma once

#include <cstdint>
#include <string>

#include "Scenario.h"

namespace devserver {

/// Errors of a reply; 0 is success.
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

/// An answer is smaller, give or take what surrounds its elements.
constexpr size_t kMaxAnswerBytes = 16 * 1024 * 1024;

/// Who sent a request; refers to the scenario.
struct Asker {
    const CScenario& scenario;
    const User& user;
    Language language;
};

/// What the scenario has for the user in answer to a command.
CommandAnswer AnswerCommand(uint32_t command, const Asker& asker, const std::string& body);

}  // namespace devserver
