#include "core/IChannel.h"
#include "core/IZRChannelProxy.h"
#include "framework/Ports.h"

unsigned long IZRChannelProxy::SendCommand(CSChannelType /*channel*/, const CSProtoData& data,
                                           const CSRequestExt* /*ext*/, CSCallback callback, QObject* context) {
    const host::PortsInUse ports;
    return ports->channel ? ports->channel->SendCommand(data, std::move(callback), context) : 0;
}

void IZRChannelProxy::BindCallback(CSChannelType /*channel*/, unsigned short commandId, CSCallback callback,
                                   QObject* context) {
    const host::PortsInUse ports;
    if (ports->channel) {
        ports->channel->BindCallback(commandId, std::move(callback), context);
    }
}

void IZRChannelProxy::UnbindCallback(QObject* context) {
    const host::PortsInUse ports;
    if (ports->channel) {
        ports->channel->UnbindCallback(context);
    }
}
