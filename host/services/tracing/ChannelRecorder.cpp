#include "tracing/ChannelRecorder.h"

#include <QElapsedTimer>

#include "tracing/TraceLog.h"

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
            m_traceLog.Record(
                CommandTrace{kind, reply.m_nCmd, session, int(error), clock.elapsed(), reply.m_strData, asked});
            callback(session, error, reply, ext);
        };
    }
    const unsigned long session = m_channel.SendCommand(data, std::move(recording), context);
    m_traceLog.Record(
        CommandTrace{CommandTrace::EnKind::Sent, data.m_nCmd, session, 0, -1, data.m_strData, data.m_nCmd});
    return session;
}

void CChannelRecorder::BindCallback(unsigned short commandId, CSCallback callback, QObject* context) {
    if (callback && context && m_recorded.insert(commandId).second) {
        m_channel.BindCallback(
            commandId,
            [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt*) {
                m_traceLog.Record(CommandTrace{CommandTrace::EnKind::Pushed, data.m_nCmd, session, int(error), -1,
                                               data.m_strData, data.m_nCmd});
            },
            &m_subscriber);
    }
    m_channel.BindCallback(commandId, std::move(callback), context);
}

void CChannelRecorder::UnbindCallback(QObject* context) {
    m_channel.UnbindCallback(context);
}
