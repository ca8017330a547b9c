#pragma once

#include <string>

#include "CommandAnswers.h"

namespace devserver {

/// The answer to command 20637: the rights of the user that the request asks for.
CommandAnswer AnswerPremiumAccess(const Asker& asker, const std::string& body);

}  // namespace devserver
