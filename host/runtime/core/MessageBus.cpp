#include "core/MessageBus.h"

#include <QThread>

#include "core/IPoster.h"
#include "framework/HostLog.h"

namespace {

constexpr host::HostLog kLog("Bus");

}  // namespace

CMessageBus::CMessageBus(IPoster& poster) : m_poster(poster) {}

CMessageBus::~CMessageBus() = default;

void CMessageBus::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    m_subscribers.Bind(messageId, std::move(callback), context);
}

void CMessageBus::Send(const char* /*location*/, unsigned int messageId, unsigned long wParam,
                       std::shared_ptr<core::CMessageBody> body) {
    if (QThread::currentThread() != thread()) {
        m_poster.Post(this, std::chrono::milliseconds(0),
                      [this, messageId, wParam, body = std::move(body)] { Deliver(messageId, wParam, body); });
        return;
    }
    Deliver(messageId, wParam, body);
}

void CMessageBus::Deliver(unsigned int messageId, unsigned long wParam,
                          const std::shared_ptr<core::CMessageBody>& body) {
    m_subscribers.Deliver(messageId, [&](const core::MessageCallback& callback) {
        host::RunGuarded(kLog, "A subscriber", [&] { callback(messageId, wParam, body); });
    });
}

void CMessageBus::UnBind(QObject* context) {
    m_subscribers.UnBind(context);
}

int CMessageBus::SubscriptionCount() const {
    return m_subscribers.Count();
}

int CMessageBus::SubscriptionCount(unsigned int messageId) const {
    return m_subscribers.CountOf(messageId);
}
