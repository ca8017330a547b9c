#pragma once

#include <QString>
#include <string>

#include "framework/log.h"

/// One line of the log, as the writer gave it: nothing is escaped yet.
struct LogRecord {
    std::string file;
    int line = 0;
    std::string function;
    ZRLogType type = kZRLogInfo;
    std::string module;
    QString text;
};

struct AssertionRecord {
    int type = 0;
    std::string detail;
    std::string module;
    std::string file;
    int line = 0;
    std::string expression;
};

/// Behind FrameWork's log and assertion. Callable from any thread.
class ILog {
public:
    virtual ~ILog() = default;
    virtual void Write(const LogRecord& record) = 0;
    virtual void AssertionFailed(const AssertionRecord& record) = 0;
};
