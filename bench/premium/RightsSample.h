#pragma once

#include <string>

/// The server's answer with all the rights that there are, each with texts of usual length: about 20 KB.
std::string AnswerWithAllRights();
