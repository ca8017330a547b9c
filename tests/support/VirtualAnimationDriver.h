#pragma once

#include <QAbstractAnimation>
#include <QBasicTimer>

/// Has the toolkit's animations follow the virtual clock: the ordinary driver counts real time.
class CVirtualAnimationDriver : public QAnimationDriver {
public:
    qint64 elapsed() const override;

protected:
    void start() override;
    void stop() override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_timer;
    qint64 m_nStart = 0;
};
