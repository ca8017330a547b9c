#pragma once

#include <QAbstractSocket>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <optional>

#include "http/HttpAnswerReader.h"
#include "http/HttpRequest.h"

class QTcpSocket;

struct HttpLimits {
    qint64 bodyBytes = 8 << 20;  // of an answer
    int redirects = 5;           // within the same origin
    /// A server was told that the connection is for one exchange. One that keeps it open is waited for so long.
    int lastBytesMillis = 100;
};

/// One exchange from the first byte to the last, redirects included, each on a connection of its own: nothing is
/// sent twice, and nothing of one answer gets into another. Progress is told from a task, and ahead of the end.
/// Main thread.
///
/// On the socket itself, since the toolkit's own access manager sends a request again when a connection ends,
/// takes half a list of chunks for an answer, and holds what nobody has asked for yet.
class CHttpExchange : public QObject {
    Q_OBJECT

public:
    struct Listeners {
        QPointer<QObject> guard;
        core::network::http::Callback answered;
        core::network::http::Progress upload;
        core::network::http::Progress download;
    };

    CHttpExchange(HttpMessage message, int limitMillis, const HttpLimits& limits);
    ~CHttpExchange() override;

    void Begin();

    /// Ends it without a word, as the destructor does.
    void Abort();

    /// Of the answer, inside Ended; `name` in lower case. Empty if there is none.
    std::string Header(const std::string& name) const { return m_reader ? m_reader->Header(name) : std::string(); }

    Listeners listeners;

Q_SIGNALS:
    /// Once, and never inside Begin. Nothing follows.
    void Ended(const std::shared_ptr<HttpRspInfo>& response);

private:
    void Connect();
    void OnConnected();
    void OnBytes();
    void OnError(QAbstractSocket::SocketError error);
    void OnWritten(qint64 bytes);
    void OnState(CHttpAnswerReader::EnState state);
    void OnWhole();
    void OnAnswer();
    void End(HttpResult result);
    void Tell(const core::network::http::Progress& progress, qint64 done, qint64 total);

    HttpMessage m_message;
    const HttpLimits m_limits;
    QTimer m_deadline;
    QTimer m_lastBytes;  // runs while a whole answer waits for the connection's end
    QTcpSocket* m_pSocket = nullptr;
    std::optional<CHttpAnswerReader> m_reader;
    bool m_bConnected = false;
    bool m_bEnded = false;  // nothing can follow what is read
    qint64 m_nUnsent = 0;
    int m_nRedirects = 0;
};
