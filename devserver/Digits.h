#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace devserver {

/// Returns two lower case digits per byte.
std::string ToHex(const std::string& bytes);

/// Returns nothing for an odd number of digits, or for any other character.
std::optional<std::string> FromHex(const std::string& digits);

/// Returns the decimal number of which the whole text consists, or nothing. Leading zeros are refused.
std::optional<uint64_t> ReadNumber(const std::string& text);

}  // namespace devserver
