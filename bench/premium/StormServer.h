#pragma once

#include <QObject>
#include <QUrl>
#include <QWebSocketServer>
#include <atomic>
#include <string>

class QWebSocket;

/// A server of the command channel that answers each request with the same bytes, and pushes on request. It has a
/// thread of its own, so that its time does not count as the client's.
class CStormServer : public QObject {
    Q_OBJECT

public:
    explicit CStormServer(std::string answer);
    ~CStormServer() override;

    /// Returns the URL; empty if it could not listen. Call it on the server's thread, before a client connects.
    QUrl Listen();

    /// Pushes `count` times within a second, in bursts of 10 ms. The end is not reported.
    void PushWithinASecond(int count);

    /// Requests that were answered. Callable from any thread.
    int Answered() const { return m_nAnswered; }

private:
    void OnConnection();
    void OnFrame(const QByteArray& bytes);
    void PushBurst(int left, int burst);

    const std::string m_strAnswer;
    QWebSocketServer m_server;
    QWebSocket* m_pClient = nullptr;
    std::atomic<int> m_nAnswered{0};
};
