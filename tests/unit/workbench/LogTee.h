#pragma once

#include <functional>

#include "framework/ILog.h"

/// Forwards each line to a log and passes a copy to a second receiver.
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
