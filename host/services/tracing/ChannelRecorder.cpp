#include "tracing/ChannelRecorder.h"

#include <QElapsedTimer>

#include "tracing/TraceLog.h"

namespace {

CommandTrace TraceOf(CommandTrace::EnKind kind, const CSProtoData& data, unsigned long session) {
    CommandTrace trace;
    trace.kind = kind;
    trace.command = data.m_nCmd;
    trace.session = session;
    trace.body = data.m_strData.substr(0, kTracedBytes);
    trace.bodyBytes = data.m_strData.size();
    trace.asked = data.m_nCmd;
    return trace;
}

}  // namespace

CChannelRecorder::CChannelRecorder(IChannel& channel, CTraceLog& traceLog) : m_channel(channel), m_traceLog(traceLog) {}

CChannelRecorder::~CChannelRecorder() {
    m_channel.UnbindCallback(&m_subscriber);
}

unsigned long CChannelRecorder::SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) {
    CSCallback recording;
    if (callback) {
        QElapsedTimer clock;
        clock.start();
        recording = [this, clock, asked = data.m_nCmd, callback = std::move(callback)](
                        unsigned long session, CSProtoError error, const CSProtoData& reply, const CSResponseExt* ext) {
            const auto kind = error == kCSProtoOk ? CommandTrace::EnKind::Replied : CommandTrace::EnKind::Failed;
            CommandTrace trace = TraceOf(kind, reply, session);
            trace.error = int(error);
            trace.durationMs = clock.elapsed();
            trace.asked = asked;
            m_traceLog.Record(std::move(trace));
            callback(session, error, reply, ext);
        };
    }
    const unsigned long session = m_channel.SendCommand(data, std::move(recording), context);
    m_traceLog.Record(TraceOf(CommandTrace::EnKind::Sent, data, session));
    return session;
}

void CChannelRecorder::BindCallback(unsigned short commandId, CSCallback callback, QObject* context) {
    if (callback && context && m_recorded.insert(commandId).second) {
        m_channel.BindCallback(
            commandId,
            [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt*) {
                CommandTrace trace = TraceOf(CommandTrace::EnKind::Pushed, data, session);
                trace.error = int(error);
                m_traceLog.Record(std::move(trace));
            },
            &m_subscriber);
    }
    m_channel.BindCallback(commandId, std::move(callback), context);
}

void CChannelRecorder::UnbindCallback(QObject* context) {
    m_channel.UnbindCallback(context);
}
