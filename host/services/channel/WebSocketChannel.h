#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <map>

#include "channel/Backoff.h"
#include "channel/FrameCodec.h"
#include "core/IChannel.h"
#include "core/SubscriberTable.h"

class IPoster;
class ITimeAndRandom;
class QWebSocket;

struct ChannelOptions {
    std::chrono::milliseconds requestLimit{15'000};
    std::chrono::milliseconds connectLimit{10'000};
    std::chrono::milliseconds firstRetry{500};
    std::chrono::milliseconds lastRetry{30'000};
    std::chrono::milliseconds pingEvery{10'000};
    /// After this time without a sign of the server the connection counts as lost.
    std::chrono::milliseconds silenceLimit{25'000};
    /// Limit of the body of a push or a reply, and of replies to single commands.
    size_t maxBodyBytes = 64 << 10;
    std::map<uint32_t, size_t> maxReplyBytes{{20637, 256 << 10}, {20981, 16 << 10}, {20982, 16 << 10}};
    /// Milliseconds that the machine was suspended so far. If empty, those of the system.
    std::function<int64_t()> suspendedMillis;
};

/// The command channel over a WebSocket. It reconnects until it is closed, and after a suspend of the machine,
/// because the server's time is then asked again. Poster and random must outlive it. Main thread.
class CWebSocketChannel : public QObject, public IChannel {
    Q_OBJECT

public:
    CWebSocketChannel(IPoster& poster, ITimeAndRandom& random, const ChannelOptions& options = {});
    ~CWebSocketChannel() override;

    /// Connects to `url` with the access token, and again whenever the connection is lost. Another server replaces the
    /// first. The same server is tried at once, with the back-off kept.
    void Open(const QUrl& url, const QByteArray& token);

    /// Closes the connection and stops reconnecting. Running requests fail.
    void Close();

    /// Drops the connection as if it were lost.
    void Reconnect(const QString& reason);

    bool IsConnected() const { return m_bConnected; }

    /// Sends a frame of the host (login, logout). Returns false without a connection and for a frame above the maximum
    /// size.
    bool SendFrame(const channel::Frame& frame);

    /// Handles one frame of the server. Invalid bytes are logged and dropped.
    void Receive(const QByteArray& bytes);

    unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) override;
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override;
    void UnbindCallback(QObject* context) override;

Q_SIGNALS:
    void Connected();
    /// Also emitted for a failed attempt. The next one follows after `retryMs`.
    void Disconnected(const QString& reason, int retryMs);
    /// A frame that is neither a reply nor a push.
    void HostFrameReceived(const channel::Frame& frame);

private:
    struct Request {
        QPointer<QObject> context;
        CSCallback callback;
        uint32_t command = 0;
        int64_t deadline = 0;
    };

    void Connect();
    void DropSocket();
    void OnConnected();
    void OnLost(const QString& reason);
    void Deliver(const channel::Frame& frame);
    void OnPingTime();
    void OnReply(const channel::Frame& frame);
    void OnPush(const channel::Frame& frame);
    void LimitHandshake();
    bool IsTooLarge(const channel::Frame& frame);
    void Fail(unsigned long session, CSProtoError error);
    void FailUpTo(unsigned long lastSession, CSProtoError error);
    void FailLater(CSProtoError error);
    void FailOverdue();
    void ArmDeadline();

    IPoster& m_poster;
    ITimeAndRandom& m_random;
    const ChannelOptions m_options;
    CBackoff m_backoff;
    QUrl m_url;
    QByteArray m_token;
    QWebSocket* m_pSocket = nullptr;
    bool m_bConnected = false;
    int64_t m_nLastSign = 0;
    int64_t m_nSuspended = 0;  // at the start of the connection
    QTimer m_retryTimer;
    QTimer m_connectTimer;
    QTimer m_pingTimer;
    QTimer m_deadlineTimer;
    unsigned long m_nLastSession = 0;
    std::map<unsigned long, Request> m_requests;  // in order of session, and so of deadline
    CSubscriberTable<unsigned short, CSCallback> m_pushes;
};
