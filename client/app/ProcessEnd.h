#pragma once

#include <QObject>
#include <QSocketNotifier>

/// Quits the application in order on SIGTERM, SIGINT and SIGHUP. A second signal ends the process at once. One per
/// process; main thread.
class CEndSignals : public QObject {
    Q_OBJECT

public:
    CEndSignals();

Q_SIGNALS:
    void Received();

private:
    static int s_pipe[2];

    QSocketNotifier m_notifier;
};

/// Ends the process, without static destructors, when the end of the application takes too long. Acknowledged data is
/// on the disk.
void LimitEnd();

/// Ends the process without static destructors: one of the toolkit waits for running name lookups.
[[noreturn]] void EndProcess(int code);
