#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "JsonNode.h"

namespace devserver {

/// A push as a tester asks for it: by its bytes, or by the fields of one that the server knows.
struct PushRequest {
    std::optional<uint64_t> user;  // everybody without it
    uint32_t command = 0;
    std::string body;
};

PushRequest ReadPushRequest(const CJsonNode& node);

/// The member "user" of a request, which may be absent.
std::optional<uint64_t> ReadUserId(const CJsonNode& node);

}  // namespace devserver
