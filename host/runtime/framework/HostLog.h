#pragma once

#include <fmt/format.h>

#include <exception>
#include <string>

#include "framework/export.h"
#include "framework/log.h"

namespace host {

/// The log of one part of the host. Its lines have the module "Host.<area>". Formats are FMT_STRING literals, which
/// are checked at compile time. Any thread.
class ZRHOST_API CHostLog {
public:
    explicit constexpr CHostLog(const char* area) : m_pArea(area) {}

    template <class Format, class... Args>
    void Info(const Format& format, const Args&... args) const {
        Write(kZRLogInfo, fmt::format(format, args...));
    }

    template <class Format, class... Args>
    void Error(const Format& format, const Args&... args) const {
        Write(kZRLogError, fmt::format(format, args...));
    }

    void Write(ZRLogType type, const std::string& text) const;

private:
    const char* m_pArea;
};

/// Runs a callback of other code. An exception is logged under `what` and not rethrown.
template <class Callback>
void CallAndLogExceptions(const CHostLog& log, const char* what, const Callback& callback) {
    try {
        callback();
    } catch (const std::exception& error) {
        log.Error(FMT_STRING("{} threw: {}"), what, error.what());
    } catch (...) {
        log.Error(FMT_STRING("{} threw something that is no exception"), what);
    }
}

}  // namespace host
