#pragma once

#include <QObject>

#include "core/IMessageBus.h"
#include "core/SubscriberTable.h"
#include "framework/export.h"

class IPoster;

/// The process-wide bus. Made on the main thread; sends of other threads go through the poster, which
/// must outlive it.
class ZRHOST_API CMessageBus : public IMessageBus {
public:
    explicit CMessageBus(IPoster& poster);
    ~CMessageBus() override;

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

    /// Subscriptions whose context lives, of all messages.
    int SubscriptionCount() const;
    /// Those of one message.
    int SubscriptionCount(unsigned int messageId) const;

private:
    IPoster& m_poster;
    const void* const m_pThread;
    QObject m_context;  // of what other threads posted
    CSubscriberTable<unsigned int, core::MessageCallback> m_subscribers;
};
