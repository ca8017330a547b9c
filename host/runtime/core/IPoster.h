#pragma once

#include <QPointer>
#include <chrono>
#include <functional>

/// Behind core::post. Callable from any thread; `delay` is never negative.
class IPoster {
public:
    virtual ~IPoster() = default;
    virtual void Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) = 0;
};
