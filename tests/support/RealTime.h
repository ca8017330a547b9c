#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>

/// For tests with a real network: runs the event loop, deferred deletes included, until `condition` holds.
/// False if it does not within the bound.
inline bool WaitInRealTime(const std::function<bool()>& condition,
                           std::chrono::milliseconds bound = std::chrono::seconds(20)) {
    const QDeadlineTimer deadline(bound);
    QTimer glance;  // wakes the loop for what changes without an event
    glance.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
