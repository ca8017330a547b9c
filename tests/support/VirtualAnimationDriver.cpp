#include "support/VirtualAnimationDriver.h"

#include "support/VirtualEventDispatcher.h"

namespace {

constexpr int kFrameMs = 16;

}  // namespace

qint64 CVirtualAnimationDriver::elapsed() const {
    return CVirtualEventDispatcher::Instance()->Now() - m_nStart;
}

void CVirtualAnimationDriver::start() {
    m_nStart = CVirtualEventDispatcher::Instance()->Now();
    m_timer.start(kFrameMs, Qt::PreciseTimer, this);
    QAnimationDriver::start();
}

void CVirtualAnimationDriver::stop() {
    m_timer.stop();
    QAnimationDriver::stop();
}

void CVirtualAnimationDriver::timerEvent(QTimerEvent* /*event*/) {
    advance();
}
