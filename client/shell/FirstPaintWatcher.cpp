#include "FirstPaintWatcher.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <utility>

CFirstPaintWatcher::CFirstPaintWatcher(QWidget& window, std::function<void()> painted)
    : m_fnPainted(std::move(painted)) {
    window.installEventFilter(this);
}

bool CFirstPaintWatcher::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        QTimer::singleShot(kTimeoutMs, this, &CFirstPaintWatcher::Run);
    } else if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The window is painted before its children: the frame is complete after this event.
        QMetaObject::invokeMethod(this, &CFirstPaintWatcher::Run, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void CFirstPaintWatcher::Run() {
    if (const auto painted = std::exchange(m_fnPainted, nullptr)) {
        painted();
    }
}
