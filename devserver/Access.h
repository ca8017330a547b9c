#pragma once

#include <QString>
#include <string>

namespace devserver {

/// 32 hex digits from the system's random source.
std::string RandomToken();

/// Compares in a time that does not tell how much of the token was right.
bool SameToken(const std::string& given, const std::string& expected);

/// Whether a page of this machine sent the `Origin`: http or https of 127.0.0.1 or localhost, any port.
bool IsLoopbackOrigin(const QString& origin);

}  // namespace devserver
