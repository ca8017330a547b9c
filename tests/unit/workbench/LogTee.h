#pragma once

#include <functional>

#include "framework/ILog.h"

/// Writes on, and gives each line to somebody else as well.
class CLogTee : public ILog {
public:
    using Take = std::function<void(const LogRecord&)>;

    CLogTee(ILog& log, Take take) : m_log(log), m_fnTake(std::move(take)) {}

    void Write(const LogRecord& record) override {
        m_log.Write(record);
        m_fnTake(record);
    }
    void AssertionFailed(const AssertionRecord& record) override { m_log.AssertionFailed(record); }

private:
    ILog& m_log;
    const Take m_fnTake;
};
