#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <functional>

/// For tests with a real network: runs the event loop, deferred deletes included, until `condition` holds.
/// False if it does not within 20 seconds.
inline bool WaitInRealTime(const std::function<bool()>& condition) {
    const QDeadlineTimer bound(20'000);
    QTimer glance;  // wakes the loop for what changes without an event
    glance.start(5);
    while (!condition()) {
        if (bound.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
