#pragma once

#include <gmock/gmock.h>

#include <mutex>
#include <vector>

#include "core/MessageBus.h"

/// A message as it was sent. p1 and p2 are 0 without a body.
struct BusMessage {
    unsigned int id = 0;
    unsigned long wParam = 0;
    bool hasBody = false;
    uint64_t p1 = 0;
    uint64_t p2 = 0;
};

bool operator==(const BusMessage& left, const BusMessage& right);
std::ostream& operator<<(std::ostream& stream, const BusMessage& message);

/// Matches a message without a body.
::testing::Matcher<BusMessage> Message(unsigned int id);

/// Matches a message with these two parameters.
::testing::Matcher<BusMessage> Message(unsigned int id, uint64_t p1, uint64_t p2);

/// The bus of the client with a record of all sends.
class CScriptedBus : public IMessageBus {
public:
    explicit CScriptedBus(IPoster& poster);

    /// Messages sent through the contract, in order of the calls.
    std::vector<BusMessage> Sent() const;

    /// Messages sent by the test as the host.
    std::vector<BusMessage> HostSent() const;

    /// Sends as the host does. The message is delivered before the call returns and is not in Sent().
    void HostSend(unsigned int id, unsigned long wParam = 0, std::shared_ptr<core::CMessageBody> body = nullptr);

    int SubscriptionCount() const;

    void Forget();

    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override;
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override;
    void UnBind(QObject* context) override;

private:
    CMessageBus m_bus;
    mutable std::mutex m_mutex;  // sends come from any thread
    std::vector<BusMessage> m_sent;
    std::vector<BusMessage> m_hostSent;
};
