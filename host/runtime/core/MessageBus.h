#pragma once

#include <QObject>
#include <QPointer>
#include <memory>
#include <unordered_map>
#include <vector>

#include "core/IMessageBus.h"
#include "framework/export.h"

class IPoster;

/// The process-wide bus. Lives on the main thread; sends of other threads go through the poster.
class ZRHOST_API CMessageBus : public QObject, public IMessageBus {
public:
    explicit CMessageBus(IPoster& poster);
    ~CMessageBus() override;

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

    /// Subscriptions whose context lives, of all messages.
    int SubscriptionCount() const;

private:
    struct Subscription {
        QPointer<QObject> context;
        core::MessageCallback callback;
        bool bound = true;
    };
    using Subscriptions = std::vector<std::unique_ptr<Subscription>>;

    void Deliver(unsigned int messageId, unsigned long wParam, const std::shared_ptr<core::CMessageBody>& body);
    void Sweep();

    IPoster& m_poster;
    std::unordered_map<unsigned int, Subscriptions> m_subscriptions;
    int m_nDeliveries = 0;  // deliveries that are under way, one inside the other
    bool m_bUnswept = false;
};
