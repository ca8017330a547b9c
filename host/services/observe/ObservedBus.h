#pragma once

#include <functional>

#include "core/IMessageBus.h"

class CObservation;

/// A bus that reports what is sent on it and changes nothing. Sends come from any thread. Both must outlive it.
class CObservedBus : public IMessageBus {
public:
    /// How many will get a message; asked on the main thread.
    using Receivers = std::function<int(unsigned int messageId)>;

    CObservedBus(IMessageBus& bus, CObservation& observation, Receivers receivers);

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

private:
    IMessageBus& m_bus;
    CObservation& m_observation;
    const Receivers m_fnReceivers;
};
