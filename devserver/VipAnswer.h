#pragma once

#include <string>

#include "CommandAnswers.h"

namespace devserver {

/// Answers command 20831 with the VIP status of the user.
CommandAnswer AnswerVipStatus(const RequestContext& context, const std::string& body);

}  // namespace devserver
