#pragma once

#include <optional>
#include <string>

namespace devserver {

/// Two lower case digits per byte.
std::string ToHex(const std::string& bytes);

/// Empty result on an odd number of digits, or on anything that is no digit.
std::optional<std::string> FromHex(const std::string& digits);

}  // namespace devserver
