#include "core/IChannel.h"
#include "core/IZRChannelProxy.h"
#include "framework/HostLog.h"
#include "framework/Ports.h"

namespace {

constexpr host::CHostLog kLog("Channel");

bool IsKnown(CSChannelType channel) {
    if (channel == kCSChannelMain) {
        return true;
    }
    kLog.Error(FMT_STRING("There is no channel {}"), int(channel));
    return false;
}

}  // namespace

unsigned long IZRChannelProxy::SendCommand(CSChannelType channel, const CSProtoData& data, const CSRequestExt* /*ext*/,
                                           CSCallback callback, QObject* context) {
    const host::PortsLock ports;
    return ports->channel && IsKnown(channel) ? ports->channel->SendCommand(data, std::move(callback), context) : 0;
}

void IZRChannelProxy::BindCallback(CSChannelType channel, unsigned short commandId, CSCallback callback,
                                   QObject* context) {
    const host::PortsLock ports;
    if (ports->channel && IsKnown(channel)) {
        ports->channel->BindCallback(commandId, std::move(callback), context);
    }
}

void IZRChannelProxy::UnbindCallback(QObject* context) {
    const host::PortsLock ports;
    if (ports->channel) {
        ports->channel->UnbindCallback(context);
    }
}
