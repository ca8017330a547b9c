#pragma once

#include <QPointer>
#include <chrono>
#include <functional>

/// The port behind core::post. `delay` is not negative. Any thread.
class IPoster {
public:
    virtual ~IPoster() = default;
    virtual void Post(QPointer<QObject> context, std::chrono::milliseconds delay, std::function<void()> task) = 0;
};
