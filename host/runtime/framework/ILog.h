#pragma once

#include <QString>
#include <string>

#include "framework/log.h"

/// One log line as it was written, not escaped.
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

/// The port behind the log and assertions of FrameWork. Any thread.
class ILog {
public:
    virtual ~ILog() = default;
    virtual void Write(const LogRecord& record) = 0;
    virtual void AssertionFailed(const AssertionRecord& record) = 0;
};
