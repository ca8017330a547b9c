#pragma once

#include <fmt/format.h>

#include <string>

namespace devserver {

/// One line on the standard error stream; control characters are escaped, as texts may come from a client.
/// Callable from any thread.
void LogLine(const std::string& text);

/// The same from an FMT_STRING literal, so that a wrong field does not compile.
template <class Format, class... Args>
void Log(const Format& format, const Args&... args) {
    LogLine(fmt::format(format, args...));
}

}  // namespace devserver
