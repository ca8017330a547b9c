#pragma once

#include <QObject>
#include <set>

#include "core/IChannel.h"

class CObservation;

/// A channel that reports what goes through it and changes nothing. Main thread. Both must outlive it.
class CObservedChannel : public IChannel {
public:
    CObservedChannel(IChannel& channel, CObservation& observation);
    ~CObservedChannel() override;

    /// The pushes of a command are reported once each, ahead of their delivery, as soon as somebody has
    /// subscribed to them.
    unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) override;
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override;
    void UnbindCallback(QObject* context) override;

private:
    IChannel& m_channel;
    CObservation& m_observation;
    QObject m_tap;  // the context of subscriptions of its own
    std::set<unsigned short> m_tapped;
};
