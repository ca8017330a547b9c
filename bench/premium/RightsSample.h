#pragma once

#include <string>

/// Returns a server's answer with all rights and texts of usual length, about 20 KB.
std::string AnswerWithAllRights();
