#pragma once

#include <QObject>

#include "core/IMessageBus.h"
#include "core/SubscriberTable.h"
#include "framework/export.h"

class IPoster;

/// The message bus of the process. Constructed on the main thread. Sends of other threads use the poster, which must
/// outlive the bus.
class ZRHOST_API CMessageBus : public IMessageBus {
public:
    explicit CMessageBus(IPoster& poster);
    ~CMessageBus() override;

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

    /// Number of subscriptions whose context lives.
    int SubscriptionCount() const;
    /// The same for one message.
    int SubscriptionCount(unsigned int messageId) const;

private:
    IPoster& m_poster;
    const void* const m_pThread;
    QObject m_context;  // context of sends posted by other threads
    CSubscriberTable<unsigned int, core::MessageCallback> m_subscribers;
};
