#pragma once

#include <QNetworkRequest>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <vector>

#include "ISessionControl.h"
#include "workbench/ControlClient.h"

class QNetworkAccessManager;

/// The state of a server, as the control API returns it.
struct ServerState {
    quint16 channelPort = 0;
    quint16 httpPort = 0;  // serves ads and reports; 0: no HTTP server
    std::vector<ServerUser> users;
};

/// Client of the server's control API over HTTP. Main thread.
class CServerControl : public QObject, public IControlClient {
    Q_OBJECT

public:
    CServerControl();
    ~CServerControl() override;

    /// Uses the server at `address` from now on and requests its state.
    void Open(const QUrl& address, const QByteArray& token);

    /// Forgets the server and its token. Nothing is sent until the next Open.
    void Close();

    /// Requests the state. After a failure it retries until the server answers. Does nothing while closed.
    void Refresh() override;

    void Ask(const char* method, const QString& path, const QByteArray& json, QObject* context,
             Answered answered) override;

    QString Curl(const ControlRequest& request) const override;

    /// Reads the answer to a state request. Returns false and leaves `state` unchanged if it is malformed.
    static bool ReadState(const QByteArray& json, ServerState& state);

Q_SIGNALS:
    void StateReceived(const ServerState& state);
    void Failed(const QString& reason);

private:
    QNetworkAccessManager& Network();
    QNetworkRequest RequestTo(const QString& path) const;

    std::unique_ptr<QNetworkAccessManager> m_pNetwork;
    QTimer m_retryTimer;
    QUrl m_address;
    QByteArray m_token;
};
