#pragma once

#include <json/value.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include "channel/Backoff.h"

/// The ports and the token of a server.
struct ServerEndpoint {
    quint16 channelPort = 0;
    quint16 controlPort = 0;
    QByteArray token;
};

/// Reads a port of the server's answers. Returns false, and leaves `port` as it is, if the value is no port.
bool ReadPort(const Json::Value& value, quint16& port);

/// The client's own server, a child process that ends with the client. A crashed server is started again, each time
/// with a new token and new ports: another program may have taken the former ports. Main thread.
class CServerProcess : public QObject {
    Q_OBJECT

public:
    CServerProcess(QString binary, QString scenario);
    ~CServerProcess() override;

    void Start();
    void Stop();

    /// 0 while no process runs.
    qint64 ProcessId() const { return m_process.processId(); }

    /// Reads the server's first output line. Returns false if it is malformed.
    static bool ReadEndpoint(const QByteArray& line, ServerEndpoint& endpoint);

Q_SIGNALS:
    void Ready(const ServerEndpoint& endpoint);
    /// The server ended or did not start. Its token and ports are void. It is started again later.
    void Lost(const QString& reason);

private:
    /// A process in its own group, so that an interrupt of the terminal ends the client first.
    class CChild : public QProcess {
        void setupChildProcess() override;
    };

    void OnOutput();
    void OnEnded(const QString& reason);

    const QString m_strBinary;
    const QString m_strScenario;
    CChild m_process;
    QTimer m_retryTimer;
    QTimer m_greetingTimer;
    QElapsedTimer m_running;
    CBackoff m_backoff;
    QByteArray m_lastErrors;  // the last line of its error output
    bool m_bWanted = false;
};
