#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include "channel/Backoff.h"

/// Where a server listens.
struct ServerEndpoint {
    quint16 channelPort = 0;
    quint16 controlPort = 0;
    QByteArray token;
};

/// The client's own server: a child process that ends with the client. One that dies is started again, on
/// the same ports and with the same token, so that the channel finds it where it was.
class CServerProcess : public QObject {
    Q_OBJECT

public:
    CServerProcess(QString binary, QString scenario);
    ~CServerProcess() override;

    void Start();
    void Stop();

    /// 0 while it does not run.
    qint64 ProcessId() const { return m_process.processId(); }

    /// Reads the server's first line. False on anything else.
    static bool ReadEndpoint(const QByteArray& line, ServerEndpoint& endpoint);

Q_SIGNALS:
    void Ready(const ServerEndpoint& endpoint);
    /// It ended or would not start, for that reason; it is tried again.
    void Lost(const QString& reason);

private:
    void OnOutput();
    void OnEnded(const QString& reason);

    const QString m_strBinary;
    const QString m_strScenario;
    QProcess m_process;
    QTimer m_retryTimer;
    QTimer m_greetingTimer;
    QElapsedTimer m_running;
    CBackoff m_backoff;
    ServerEndpoint m_endpoint;
    QByteArray m_lastErrors;  // the last line of its error output
    bool m_bWanted = false;
};
