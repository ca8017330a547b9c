#pragma once

#include <json/value.h>

#include <QNetworkRequest>
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
    quint16 httpPort = 0;  // of ads and reports; 0: it has none
    std::vector<ServerUser> users;
};

/// What the server answered to a wish. `error` is its reason, or why there is no answer; empty when all is well.
struct ServerAnswer {
    bool reached = false;
    QString error;
    Json::Value body;
};

/// Who carries a wish to the server's control interface. Main thread.
class IServerAsk {
public:
    using Answered = std::function<void(const ServerAnswer& answer)>;

    virtual ~IServerAsk() = default;

    /// `answered` runs once, later, unless `context` is gone by then. An empty `json` is no body.
    virtual void Ask(const char* verb, const QString& path, const QByteArray& json, QObject* context,
                     Answered answered) = 0;
};

/// The control interface of the server, over HTTP.
class CServerControl : public QObject, public IServerAsk {
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

    void Ask(const char* verb, const QString& path, const QByteArray& json, QObject* context,
             Answered answered) override;

    /// What a status and a body come to. 200 is success; all else says why, in the server's own words where it
    /// has any.
    static ServerAnswer ReadAnswer(int status, const QByteArray& json, const QString& transportError);

    static bool ReadState(const QByteArray& json, ServerState& state);

Q_SIGNALS:
    void StateReceived(const ServerState& state);
    void Failed(const QString& reason);

private:
    QNetworkAccessManager& Network();
    QNetworkReply* Get(const char* path);
    QNetworkRequest RequestTo(const QString& path) const;

    std::unique_ptr<QNetworkAccessManager> m_pNetwork;
    QTimer m_retryTimer;
    QUrl m_address;
    QByteArray m_token;
};
