#include "observe/ObservedBus.h"

#include "framework/Ports.h"
#include "observe/Observation.h"

CObservedBus::CObservedBus(IMessageBus& bus, CObservation& observation, Receivers receivers)
    : m_bus(bus), m_observation(observation), m_fnReceivers(std::move(receivers)) {}

void CObservedBus::Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) {
    m_bus.Bind(messageId, std::move(callback), context);
}

void CObservedBus::Send(const char* location, unsigned int messageId, unsigned long wParam,
                        std::shared_ptr<core::CMessageBody> body) {
    MessageSeen seen;
    seen.id = messageId;
    seen.wParam = wParam;
    seen.hasBody = body != nullptr;
    if (body) {
        seen.p1 = body->p1();
        seen.p2 = body->p2();
    }
    seen.location = location ? location : "";
    seen.receivers = host::OnMainThread() ? m_fnReceivers(messageId) : -1;
    m_observation.Report(std::move(seen));
    m_bus.Send(location, messageId, wParam, std::move(body));
}

void CObservedBus::UnBind(QObject* context) {
    m_bus.UnBind(context);
}
