#include "FirstPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <cinttypes>
#include <cstdio>
#include <ctime>

namespace {

void PrintAndQuit() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    printf("%" PRId64 "\n", int64_t(now.tv_sec) * 1000000000 + now.tv_nsec);
    fflush(stdout);
    QCoreApplication::quit();
}

}  // namespace

CFirstPaint::CFirstPaint(QWidget& window) {
    window.installEventFilter(this);
}

bool CFirstPaint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The window paints before its children: the frame is whole when this event has returned.
        QMetaObject::invokeMethod(this, PrintAndQuit, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
