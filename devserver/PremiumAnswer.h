#pragma once

#include <string>

#include "CommandAnswers.h"

namespace devserver {

/// Answers command 20637 with the requested rights of the user.
CommandAnswer AnswerPremiumAccess(const RequestContext& context, const std::string& body);

}  // namespace devserver
