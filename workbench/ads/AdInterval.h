#pragma once

#include <QObject>
#include <optional>

#include "workbench/ControlClient.h"

/// How long the bottom popup stays away after it was shown, as the server tells it with the ads: overridden
/// by a change of the server's scenario. What was fetched before keeps what came with it. `server` must outlive it.
class CAdInterval : public QObject {
    Q_OBJECT

public:
    explicit CAdInterval(IControlClient& server, QObject* parent = nullptr);

    /// What is put in the scenario's place, in seconds; nothing: the scenario holds.
    std::optional<qint64> Override() const { return m_override; }
    /// What the scenario says of its own, as it was at the first override.
    qint64 Own() const { return m_nOwn; }

    /// Later, and told by Done. An empty value gives the scenario its own interval back. Not before the last one is
    /// done.
    void Set(std::optional<qint64> seconds);

    /// The server is new and has its own interval. What the old one was asked for is not told any more.
    void ForgetServer();

Q_SIGNALS:
    /// Empty words: it is so now. Else they say why it is not.
    void Done(const QString& failure);

private:
    /// Who asks hears nothing of a server that was forgotten meanwhile.
    void Ask(const char* verb, const QString& path, const QByteArray& json, IControlClient::Answered answered);
    void Put(const Json::Value& ads, qint64 own, std::optional<qint64> seconds);

    IControlClient& m_server;
    std::optional<qint64> m_override;
    qint64 m_nOwn = 0;
    int m_nServer = 0;  // that is asked, by its place among those that there were
};
