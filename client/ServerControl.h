#pragma once

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>
#include <vector>

class QNetworkAccessManager;
class QNetworkReply;

struct ServerUser {
    quint64 id = 0;
    QString name;
};

/// What the control interface tells of a server.
struct ServerState {
    quint16 channelPort = 0;
    std::vector<ServerUser> users;
};

/// The control interface of the server, over HTTP.
class CServerControl : public QObject {
    Q_OBJECT

public:
    CServerControl();
    ~CServerControl() override;

    /// Speaks to the server at `address` from now on and asks it for its state.
    void Open(const QUrl& address, const QByteArray& token);

    /// Asks again; a failure is tried again until there is an answer.
    void Refresh();

    /// Asks for the server's scenario. `answered` runs once, later, with its JSON; with nothing where it can't
    /// be had.
    void AskScenario(std::function<void(const QByteArray& json)> answered);

    static bool ReadState(const QByteArray& json, ServerState& state);

Q_SIGNALS:
    void StateReceived(const ServerState& state);
    void Failed(const QString& reason);

private:
    QNetworkReply* Get(const char* path);

    std::unique_ptr<QNetworkAccessManager> m_pNetwork;
    QTimer m_retryTimer;
    QUrl m_address;
    QByteArray m_token;
};
