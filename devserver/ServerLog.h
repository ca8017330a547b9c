#pragma once

#include <fmt/format.h>

#include <string>

namespace devserver {

/// Writes one line to the standard error stream. Escapes control characters, as texts may come from a client. Callable
/// from any thread.
void LogLine(const std::string& text);

/// The same from an FMT_STRING literal, which is checked at compile time.
template <class Format, class... Args>
void Log(const Format& format, const Args&... args) {
    LogLine(fmt::format(format, args...));
}

}  // namespace devserver
