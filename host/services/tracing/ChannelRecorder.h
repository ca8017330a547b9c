#pragma once

#include <QObject>
#include <set>

#include "core/IChannel.h"

class CTraceLog;

/// Records the commands of a channel and forwards all calls unchanged. Main thread. The channel and the trace log must
/// outlive it.
class CChannelRecorder : public IChannel {
public:
    CChannelRecorder(IChannel& channel, CTraceLog& traceLog);
    ~CChannelRecorder() override;

    unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) override;
    /// A push is recorded once, before it is delivered, if its command has a subscriber.
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override;
    void UnbindCallback(QObject* context) override;

private:
    IChannel& m_channel;
    CTraceLog& m_traceLog;
    QObject m_subscriber;                 // context of the recorder's own subscriptions
    std::set<unsigned short> m_recorded;  // commands whose pushes are recorded
};
