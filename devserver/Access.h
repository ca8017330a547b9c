#pragma once

#include <QString>
#include <string>

namespace devserver {

/// Returns 32 hex digits from the system's random source.
std::string RandomToken();

/// Compares in a time that does not depend on how many characters are equal.
bool SameToken(const std::string& given, const std::string& expected);

/// Returns true for http and https of 127.0.0.1 or localhost, any port.
bool IsLoopbackOrigin(const QString& origin);

}  // namespace devserver
