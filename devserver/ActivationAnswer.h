#pragma once

#include <string>

#include "CommandAnswers.h"

namespace devserver {

/// Answers command 20981, which activates rights of the user that are ready.
CommandAnswer AnswerActivation(const RequestContext& context, const std::string& body);

}  // namespace devserver
