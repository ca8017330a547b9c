#include "core/message_dispatch.h"

#include "core/IMessageBus.h"
#include "framework/Ports.h"

namespace core {

void __CMessageDispatch::Bind(unsigned int messageId, MessageCallback callback, QObject* context) const {
    const host::PortsLock ports;
    if (ports->bus) {
        ports->bus->Bind(messageId, std::move(callback), context);
    }
}

void __CMessageDispatch::Send(unsigned int messageId, std::shared_ptr<CMessageBody> body, bool /*reserved*/) const {
    const host::PortsLock ports;
    if (ports->bus) {
        ports->bus->Send(m_pLocation, messageId, 0, std::move(body));
    }
}

void __CMessageDispatch::UnBind(QObject* context) const {
    const host::PortsLock ports;
    if (ports->bus) {
        ports->bus->UnBind(context);
    }
}

}  // namespace core
