#pragma once

#include <QObject>

class QWidget;

/// Tells when a window has painted its first whole frame: prints the moment (CLOCK_MONOTONIC, nanoseconds) on
/// the standard output and ends the application. For measuring starts. Lives as long as the window.
class CFirstPaint : public QObject {
public:
    explicit CFirstPaint(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
