#include "core/MessageBus.h"

#include "core/IPoster.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Bus");

// Its address identifies the thread. QThread::currentThread() costs as much as two deliveries.
__thread char t_thread __attribute__((tls_model("initial-exec")));

}  // namespace

CMessageBus::CMessageBus(IPoster& poster) : m_poster(poster), m_pThread(&t_thread) {}

CMessageBus::~CMessageBus() = default;

void CMessageBus::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    m_subscribers.Bind(messageId, std::move(callback), context);
}

void CMessageBus::Send(const char* location, unsigned int messageId, unsigned long wParam,
                       std::shared_ptr<core::CMessageBody> body) {
    if (m_pThread != &t_thread) {
        m_poster.Post(
            &m_context, std::chrono::milliseconds(0),
            [this, location, messageId, wParam, body = std::move(body)] { Send(location, messageId, wParam, body); });
        return;
    }
    m_subscribers.Deliver(messageId, [&](const core::MessageCallback& callback) {
        host::CallAndLogExceptions(kLog, "A subscriber", [&] { callback(messageId, wParam, body); });
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
