#include "support/ScriptedBus.h"

#include <ostream>
#include <tuple>

namespace {

BusMessage Record(unsigned int id, unsigned long wParam, const std::shared_ptr<core::CMessageBody>& body) {
    return BusMessage{id, wParam, body != nullptr, body ? body->p1() : 0, body ? body->p2() : 0};
}

auto Fields(const BusMessage& message) {
    return std::tie(message.id, message.wParam, message.hasBody, message.p1, message.p2);
}

}  // namespace

bool operator==(const BusMessage& left, const BusMessage& right) {
    return Fields(left) == Fields(right);
}

std::ostream& operator<<(std::ostream& stream, const BusMessage& message) {
    stream << "Message(" << message.id;
    if (message.wParam != 0) {
        stream << ", wParam " << message.wParam;
    }
    if (message.hasBody) {
        stream << ", " << message.p1 << ", " << message.p2;
    }
    return stream << ")";
}

::testing::Matcher<BusMessage> Message(unsigned int id) {
    return ::testing::Eq(BusMessage{id, 0, false, 0, 0});
}

::testing::Matcher<BusMessage> Message(unsigned int id, uint64_t p1, uint64_t p2) {
    return ::testing::Eq(BusMessage{id, 0, true, p1, p2});
}

CScriptedBus::CScriptedBus(IPoster& poster) : m_bus(poster) {}

std::vector<BusMessage> CScriptedBus::Sent() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_sent;
}

std::vector<BusMessage> CScriptedBus::HostSent() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_hostSent;
}

void CScriptedBus::HostSend(unsigned int id, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_hostSent.push_back(Record(id, wParam, body));
    }
    m_bus.Send("Host", id, wParam, std::move(body));
}

int CScriptedBus::SubscriptionCount() const {
    return m_bus.SubscriptionCount();
}

void CScriptedBus::Forget() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_sent.clear();
    m_hostSent.clear();
}

void CScriptedBus::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    m_bus.Bind(messageId, std::move(callback), context);
}

void CScriptedBus::Send(const char* location, unsigned int messageId, unsigned long wParam,
                        std::shared_ptr<core::CMessageBody> body) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_sent.push_back(Record(messageId, wParam, body));
    }
    m_bus.Send(location, messageId, wParam, std::move(body));
}

void CScriptedBus::UnBind(QObject* context) {
    m_bus.UnBind(context);
}
