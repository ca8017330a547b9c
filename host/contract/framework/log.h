#pragma once

#include <QString>

#include "framework/export.h"

/// The severity of a log line. kZRLogError and above report failures.
enum ZRLogType : int {
    kZRLogInfo = 4,
    kZRLogError = 8,
    kZRLogFatal = 16,
};

namespace FrameWork {

/// Writes one log line. The log escapes control and format characters in `text`, so one call is always one line.
/// `channel` exists for callers of an older form and has no effect.
/// Thread: any, from the first static initialiser to the end of the process.
/// Ownership: `file`, `function` and `module` may be null; they are copied before the call returns.
/// Failure: the line is dropped while no services are installed.
ZRHOST_API void _WriteLogRaw(const char* file, int line, const char* function, ZRLogType type, const char* module,
                             const QString& text, signed char channel);

}  // namespace FrameWork
