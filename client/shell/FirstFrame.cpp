#include "FirstFrame.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <utility>

CFirstFrame::CFirstFrame(QWidget& window, std::function<void()> then) : m_fnThen(std::move(then)) {
    window.installEventFilter(this);
}

bool CFirstFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        QTimer::singleShot(kAtMostMs, this, &CFirstFrame::Run);
    } else if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The window paints before its children: the frame is whole when this event has returned.
        QMetaObject::invokeMethod(this, &CFirstFrame::Run, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void CFirstFrame::Run() {
    if (const auto then = std::exchange(m_fnThen, nullptr)) {
        then();
    }
}
