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
};

struct CommandAnswer {
    int32_t error = kErrorNone;
    std::string body;  // empty with an error
};

/// What the scenario has for `user` in answer to a command.
CommandAnswer AnswerCommand(uint32_t command, const User& user, const std::string& body);

}  // namespace devserver
