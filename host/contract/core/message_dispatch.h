#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

#include "framework/export.h"

namespace core {

/// The parameters of a bus message: two unsigned 64-bit numbers, whose meaning the message id fixes.
class CMessageBody {
public:
    void set_p1(uint64_t value) { m_nP1 = value; }
    void set_p2(uint64_t value) { m_nP2 = value; }
    uint64_t p1() const { return m_nP1; }
    uint64_t p2() const { return m_nP2; }

private:
    uint64_t m_nP1 = 0;
    uint64_t m_nP2 = 0;
};

/// `wParam` is 0 for every message but the host's own that say otherwise; `body` may be null.
using MessageCallback =
    std::function<void(unsigned int messageId, unsigned long wParam, std::shared_ptr<CMessageBody> body)>;

/// A handle on the process-wide message bus, made on the spot and thrown away.
class ZRHOST_API __CMessageDispatch {
public:
    /// `location` says where the handle stands ("[Module]:path@line"). It is not copied: pass a literal.
    explicit __CMessageDispatch(const char* location) : m_pLocation(location) {}

    /// Subscribes on behalf of `context`, to which the subscription is tied: when it is destroyed the
    /// callback is not called again. One bound inside a delivery gets the next message.
    /// Main thread. A null context or an empty callback binds nothing.
    void Bind(unsigned int messageId, MessageCallback callback, QObject* context) const;

    /// Delivers to all subscribers in order of binding. On the main thread the delivery is done when the
    /// call returns, also inside another delivery (depth first); from another thread the whole send moves
    /// to the main thread, in order. `reserved` has no effect; callers pass true.
    void Send(unsigned int messageId, std::shared_ptr<CMessageBody> body, bool reserved) const;

    /// Removes all subscriptions of `context`; inside a delivery it gets nothing more. Main thread.
    void UnBind(QObject* context) const;

private:
    const char* m_pLocation;
};

}  // namespace core
