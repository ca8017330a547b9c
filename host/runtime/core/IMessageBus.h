#pragma once

#include "core/message_dispatch.h"

/// The port behind core::__CMessageDispatch. The host also uses it to send a message with a `wParam`.
class IMessageBus {
public:
    virtual ~IMessageBus() = default;
    virtual void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) = 0;
    /// `location` may be null and must live as long as the process.
    virtual void Send(const char* location, unsigned int messageId, unsigned long wParam,
                      std::shared_ptr<core::CMessageBody> body) = 0;
    virtual void UnBind(QObject* context) = 0;
};
