#pragma once

#include <string>

#include "CommandAnswers.h"

namespace devserver {

/// The answer to command 20831: the VIP status of the user.
CommandAnswer AnswerVipStatus(const Asker& asker, const std::string& body);

}  // namespace devserver
