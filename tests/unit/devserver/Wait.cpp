#include "Wait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

bool WaitUntil(const std::function<bool()>& condition) {
    constexpr int kBoundMs = 10'000;
    const QDeadlineTimer deadline(kBoundMs);
    QTimer waker;  // the loop below waits for events, and the bound must be one
    waker.start(kBoundMs);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
