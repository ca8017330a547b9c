#pragma once

#include <functional>

#include "core/IMessageBus.h"

class CTraceLog;

/// Records the messages of a bus and forwards all calls unchanged. Sends come from any thread. The bus and the trace
/// log must outlive it.
class CBusRecorder : public IMessageBus {
public:
    /// Returns the number of receivers of a message. Is called on the main thread.
    using Receivers = std::function<int(unsigned int messageId)>;

    CBusRecorder(IMessageBus& bus, CTraceLog& traceLog, Receivers receivers);

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

private:
    IMessageBus& m_bus;
    CTraceLog& m_traceLog;
    const Receivers m_fnReceivers;
};
