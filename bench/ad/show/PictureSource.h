#pragma once

#include <QByteArray>
#include <QString>
#include <QThread>
#include <memory>

class CRawHttpServer;

/// A server of one picture, on a thread of its own, so that nobody else is charged for it.
class CPictureSource {
public:
    /// `picture` is what every path leads to. Listens from now on.
    explicit CPictureSource(const QByteArray& picture);
    ~CPictureSource();
    CPictureSource(const CPictureSource&) = delete;
    CPictureSource& operator=(const CPictureSource&) = delete;

    /// Without a slash at its end; empty where no port is to be had.
    const QString& Url() const { return m_url; }

private:
    QThread m_thread;
    QObject m_agent;  // lives on the thread, and so does what it makes
    std::unique_ptr<CRawHttpServer> m_server;
    QString m_url;
};
