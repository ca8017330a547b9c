#include "core/MessageBus.h"

#include <QThread>
#include <algorithm>

#include "core/IPoster.h"
#include "framework/HostLog.h"

namespace {

constexpr host::HostLog kLog("Bus");

}  // namespace

CMessageBus::CMessageBus(IPoster& poster) : m_poster(poster) {}

CMessageBus::~CMessageBus() = default;

void CMessageBus::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    if (!context || !callback) {
        return;
    }
    Subscriptions& subscriptions = m_subscriptions[messageId];
    subscriptions.push_back(std::make_unique<Subscription>(Subscription{context, std::move(callback)}));
}

void CMessageBus::Send(const char* /*location*/, unsigned int messageId, unsigned long wParam,
                       std::shared_ptr<core::CMessageBody> body) {
    if (QThread::currentThread() != thread()) {
        m_poster.Post(this, std::chrono::milliseconds(0), [this, messageId, wParam, body = std::move(body)] {
            Deliver(messageId, wParam, body);
        });
        return;
    }
    Deliver(messageId, wParam, body);
}

void CMessageBus::Deliver(unsigned int messageId, unsigned long wParam,
                          const std::shared_ptr<core::CMessageBody>& body) {
    const auto found = m_subscriptions.find(messageId);
    if (found == m_subscriptions.end()) {
        return;
    }
    // References into the map stay good while others are inserted; entries are only taken out by Sweep.
    Subscriptions& subscriptions = found->second;
    ++m_nDeliveries;
    const size_t count = subscriptions.size();  // what is bound from now on waits for the next message
    for (size_t i = 0; i < count; ++i) {
        const Subscription* subscription = subscriptions[i].get();
        if (!subscription->bound) {
            continue;
        }
        if (!subscription->context) {
            m_bUnswept = true;
            continue;
        }
        host::RunGuarded(kLog, "A subscriber", [&] { subscription->callback(messageId, wParam, body); });
    }
    --m_nDeliveries;
    if (m_nDeliveries == 0 && m_bUnswept) {
        Sweep();
    }
}

void CMessageBus::UnBind(QObject* context) {
    if (!context) {
        return;
    }
    for (auto& [messageId, subscriptions] : m_subscriptions) {
        for (const auto& subscription : subscriptions) {
            if (subscription->context == context) {
                subscription->bound = false;
                m_bUnswept = true;
            }
        }
    }
    if (m_nDeliveries == 0 && m_bUnswept) {
        Sweep();
    }
}

int CMessageBus::SubscriptionCount() const {
    int count = 0;
    for (const auto& [messageId, subscriptions] : m_subscriptions) {
        count += int(std::count_if(subscriptions.begin(), subscriptions.end(),
                                   [](const auto& it) { return it->bound && it->context; }));
    }
    return count;
}

// A callback may hold the last reference to something whose end binds or unbinds: the dead are moved
// aside first and destroyed when the table is whole again.
void CMessageBus::Sweep() {
    m_bUnswept = false;
    Subscriptions dead;
    for (auto& [messageId, subscriptions] : m_subscriptions) {
        const auto firstDead = std::stable_partition(subscriptions.begin(), subscriptions.end(), [](const auto& it) {
            return it->bound && it->context;
        });
        std::move(firstDead, subscriptions.end(), std::back_inserter(dead));
        subscriptions.erase(firstDead, subscriptions.end());
    }
}
