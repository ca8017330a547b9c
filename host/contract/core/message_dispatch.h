#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

#include "framework/export.h"

namespace core {

/// The parameters of a bus message: two unsigned 64-bit numbers. The message id defines their meaning.
class CMessageBody {
public:
    /// Set and return the two numbers. Both are 0 at first.
    void set_p1(uint64_t value) { m_nP1 = value; }
    void set_p2(uint64_t value) { m_nP2 = value; }
    uint64_t p1() const { return m_nP1; }
    uint64_t p2() const { return m_nP2; }

private:
    uint64_t m_nP1 = 0;
    uint64_t m_nP2 = 0;
};

/// Receives a message. Runs on the main thread.
/// `wParam` is 0 unless the description of a host message defines it. `body` may be null.
using MessageCallback =
    std::function<void(unsigned int messageId, unsigned long wParam, std::shared_ptr<CMessageBody> body)>;

/// A handle of the process-wide message bus. Handles are temporary objects and hold no subscription.
class ZRHOST_API __CMessageDispatch {
public:
    /// `location` names the call site as "[Module]:path@line".
    /// Ownership: the text is not copied; pass a literal.
    explicit __CMessageDispatch(const char* location) : m_pLocation(location) {}

    /// Subscribes `context` to a message. A subscriber bound inside a delivery gets the next message.
    /// Thread: main thread.
    /// Ownership: the subscription ends with `context`; the callback never runs after that.
    /// Failure: a null context or an empty callback binds nothing.
    void Bind(unsigned int messageId, MessageCallback callback, QObject* context) const;

    /// Delivers a message to all subscribers, in order of binding.
    /// Thread: any. On the main thread the delivery is complete when the call returns, also inside another delivery
    /// (depth first). From another thread the whole send moves to the main thread, in order.
    /// `reserved` has no effect; callers pass true.
    void Send(unsigned int messageId, std::shared_ptr<CMessageBody> body, bool reserved) const;

    /// Removes all subscriptions of `context`. Inside a delivery, `context` gets nothing more.
    /// Thread: main thread.
    void UnBind(QObject* context) const;

private:
    const char* m_pLocation;
};

}  // namespace core
