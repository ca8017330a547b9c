#include "observe/ObservedChannel.h"

#include <QElapsedTimer>

#include "observe/Observation.h"

CObservedChannel::CObservedChannel(IChannel& channel, CObservation& observation)
    : m_channel(channel), m_observation(observation) {}

CObservedChannel::~CObservedChannel() {
    m_channel.UnbindCallback(&m_tap);
}

unsigned long CObservedChannel::SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) {
    CSCallback observed;
    if (callback) {
        QElapsedTimer clock;
        clock.start();
        observed = [this, clock, asked = data.m_nCmd, callback = std::move(callback)](
                       unsigned long session, CSProtoError error, const CSProtoData& reply, const CSResponseExt* ext) {
            const auto kind = error == kCSProtoOk ? CommandSeen::EnKind::Replied : CommandSeen::EnKind::Failed;
            m_observation.Report(
                CommandSeen{kind, reply.m_nCmd, session, int(error), clock.elapsed(), reply.m_strData, asked});
            callback(session, error, reply, ext);
        };
    }
    const unsigned long session = m_channel.SendCommand(data, std::move(observed), context);
    m_observation.Report(
        CommandSeen{CommandSeen::EnKind::Sent, data.m_nCmd, session, 0, -1, data.m_strData, data.m_nCmd});
    return session;
}

void CObservedChannel::BindCallback(unsigned short commandId, CSCallback callback, QObject* context) {
    if (callback && context && m_tapped.insert(commandId).second) {
        m_channel.BindCallback(
            commandId,
            [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt*) {
                m_observation.Report(CommandSeen{CommandSeen::EnKind::Pushed, data.m_nCmd, session, int(error), -1,
                                                 data.m_strData, data.m_nCmd});
            },
            &m_tap);
    }
    m_channel.BindCallback(commandId, std::move(callback), context);
}

void CObservedChannel::UnbindCallback(QObject* context) {
    m_channel.UnbindCallback(context);
}
