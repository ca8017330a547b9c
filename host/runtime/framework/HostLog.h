#pragma once

#include <fmt/format.h>

#include <exception>
#include <string>

#include "framework/export.h"
#include "framework/log.h"

namespace host {

/// The log of one part of the host, named by `area` ("Channel"); its lines carry the module "Host.<area>".
/// Texts are FMT_STRING literals, so that a wrong field does not compile.
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

/// Runs a callback that belongs to somebody else. What it throws is logged under `what` and goes no further.
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
