#pragma once

#include <QByteArray>
#include <QString>
#include <QThread>
#include <memory>

class CRawHttpServer;

/// A server of one picture. Its own thread keeps its time out of the measurement.
class CPictureSource {
public:
    /// Listens and answers every path with `picture`.
    explicit CPictureSource(const QByteArray& picture);
    ~CPictureSource();
    CPictureSource(const CPictureSource&) = delete;
    CPictureSource& operator=(const CPictureSource&) = delete;

    /// Returns the URL without a trailing slash; empty if it could not listen.
    const QString& Url() const { return m_url; }

private:
    QThread m_thread;
    QObject m_agent;  // on the thread, as all that it creates
    std::unique_ptr<CRawHttpServer> m_server;
    QString m_url;
};
