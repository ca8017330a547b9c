#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "JsonMessage.h"

namespace devserver {

struct Push {
    std::optional<uint64_t> user;  // everybody without it
    uint32_t command = 0;
    std::string body;
};

/// Reads a PushRequest. Returns nothing, with at least one error, if it is invalid.
std::optional<Push> ReadPush(const std::string& text, Errors& errors);

}  // namespace devserver
