#pragma once

#include "core/IZRChannelProxy.h"

/// The port behind IZRChannelProxy, with the same guarantees. Main thread.
class IChannel {
public:
    virtual ~IChannel() = default;
    virtual unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) = 0;
    virtual void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) = 0;
    virtual void UnbindCallback(QObject* context) = 0;
};
