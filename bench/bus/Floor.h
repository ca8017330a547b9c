#pragma once

#include <benchmark/benchmark.h>

#include <QObject>
#include <memory>

#include "core/message_dispatch.h"

/// The minimum cost of a notification: a virtual call with the message's arguments by value. The body is in another
/// file, so that the compiler cannot inline it.
class IListener {
public:
    virtual ~IListener() = default;
    virtual void On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) = 0;
};

/// The work of each subscriber. Inline, so that no variant has an additional call.
inline void Note(unsigned int messageId, unsigned long wParam, const std::shared_ptr<core::CMessageBody>& body) {
    benchmark::DoNotOptimize(messageId);
    benchmark::DoNotOptimize(wParam);
    benchmark::DoNotOptimize(body.get());
}

std::unique_ptr<IListener> NewListener();

/// A notification by a direct signal.
class CSignaller : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void Told(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body);
};

class CListenerObject : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void On(unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body);
};
