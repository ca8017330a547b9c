#pragma once

#include <QObject>
#include <optional>

#include "workbench/ControlClient.h"

/// Overrides the show interval of the bottom popup by a change of the server's scenario. Ads that were fetched before
/// keep their interval. `server` must outlive it.
class CAdInterval : public QObject {
    Q_OBJECT

public:
    explicit CAdInterval(IControlClient& server, QObject* parent = nullptr);

    /// The override in seconds; nothing while the scenario's own value applies.
    std::optional<qint64> Override() const { return m_override; }
    /// The scenario's own value, read at the first override.
    qint64 Own() const { return m_nOwn; }

    /// Sets the override later and then emits Done. An empty value restores the scenario's own. Must not be called
    /// before the previous call is done.
    void Set(std::optional<qint64> seconds);

    /// Must be called for a new server, which has its own interval. Pending calls to the old server emit nothing.
    void ForgetServer();

Q_SIGNALS:
    /// `failure` is the reason; empty on success.
    void Done(const QString& failure);

private:
    /// Sends a request. The answer is dropped if the server was forgotten meanwhile.
    void Ask(const char* verb, const QString& path, const QByteArray& json, IControlClient::Answered answered);
    void Put(const Json::Value& ads, qint64 own, std::optional<qint64> seconds);

    IControlClient& m_server;
    std::optional<qint64> m_override;
    qint64 m_nOwn = 0;
    int m_nServer = 0;  // counts the servers so far, to identify late answers
};
