#pragma once

#include <QString>

#include "framework/export.h"

/// Severity of a log line. A line of kZRLogError or above tells of something that went wrong.
enum ZRLogType : int {
    kZRLogInfo = 4,
    kZRLogError = 8,
    kZRLogFatal = 16,
};

namespace FrameWork {

/// Writes one log line; callable from any thread, from the first static initialiser to the process's
/// end. Before services are installed and after they are gone the line is dropped.
/// `file`, `function` and `module` may be null; they are copied before the call returns. Control
/// characters in `text` are escaped by whoever stores the line, so one call is always one line.
/// `channel` is kept for callers of an older form and has no effect.
ZRHOST_API void _WriteLogRaw(const char* file, int line, const char* function, ZRLogType type, const char* module,
                             const QString& text, signed char channel);

}  // namespace FrameWork
