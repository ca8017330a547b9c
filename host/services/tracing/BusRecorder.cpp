#include "tracing/BusRecorder.h"

#include "framework/Ports.h"
#include "tracing/TraceLog.h"

CBusRecorder::CBusRecorder(IMessageBus& bus, CTraceLog& traceLog, Receivers receivers)
    : m_bus(bus), m_traceLog(traceLog), m_fnReceivers(std::move(receivers)) {}

void CBusRecorder::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    m_bus.Bind(messageId, std::move(callback), context);
}

void CBusRecorder::Send(const char* location, unsigned int messageId, unsigned long wParam,
                        std::shared_ptr<core::CMessageBody> body) {
    MessageTrace trace;
    trace.id = messageId;
    trace.wParam = wParam;
    trace.hasBody = body != nullptr;
    if (body) {
        trace.p1 = body->p1();
        trace.p2 = body->p2();
    }
    trace.location = location ? location : "";
    trace.receivers = host::OnMainThread() ? m_fnReceivers(messageId) : -1;
    m_traceLog.Record(std::move(trace));
    m_bus.Send(location, messageId, wParam, std::move(body));
}

void CBusRecorder::UnBind(QObject* context) {
    m_bus.UnBind(context);
}
