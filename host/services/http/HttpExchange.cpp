#include "http/HttpExchange.h"

#include <QNetworkProxy>
#include <QSslSocket>

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Http");

// What the socket may hold for us; it leaves the rest with the server. Also what one turn of the loop takes.
constexpr int kBufferBytes = 64 << 10;

}  // namespace

CHttpExchange::CHttpExchange(HttpMessage message, int limitMillis, const HttpLimits& limits)
    : m_message(std::move(message)), m_limits(limits) {
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(limitMillis);
    connect(&m_deadline, &QTimer::timeout, this, [this] { m_lastBytes.isActive() ? OnAnswer() : End(kHttpTimedOut); });
    m_lastBytes.setSingleShot(true);
    m_lastBytes.setInterval(m_limits.lastBytesMillis);
    connect(&m_lastBytes, &QTimer::timeout, this, &CHttpExchange::OnAnswer);
}

CHttpExchange::~CHttpExchange() {
    Abort();
}

// The socket may tell of a failure at once; the caller hears of it later.
void CHttpExchange::Begin() {
    m_deadline.start();
    QMetaObject::invokeMethod(this, &CHttpExchange::Connect, Qt::QueuedConnection);
}

void CHttpExchange::Abort() {
    m_deadline.stop();
    m_lastBytes.stop();
    if (m_pSocket) {
        m_pSocket->disconnect(this);
        m_pSocket->abort();
        m_pSocket->deleteLater();
        m_pSocket = nullptr;
    }
}

void CHttpExchange::Connect() {
    if (!m_deadline.isActive()) {
        return;
    }
    m_bConnected = false;
    m_bEnded = false;
    m_reader.emplace(uint64_t(m_limits.bodyBytes));
    const bool secure = m_message.url.scheme() == QLatin1String("https");
    auto* secureSocket = secure ? new QSslSocket(this) : nullptr;
    m_pSocket = secure ? secureSocket : new QTcpSocket(this);
    m_pSocket->setProxy(QNetworkProxy::NoProxy);
    m_pSocket->setReadBufferSize(kBufferBytes);
    connect(m_pSocket, &QTcpSocket::readyRead, this, &CHttpExchange::OnBytes);
    connect(m_pSocket, &QTcpSocket::bytesWritten, this, &CHttpExchange::OnWritten);
    connect(m_pSocket, &QTcpSocket::errorOccurred, this, &CHttpExchange::OnError);
    if (secureSocket) {
        connect(secureSocket, &QSslSocket::encrypted, this, &CHttpExchange::OnConnected);
        secureSocket->connectToHostEncrypted(m_message.url.host(), quint16(m_message.url.port(443)));
    } else {
        connect(m_pSocket, &QTcpSocket::connected, this, &CHttpExchange::OnConnected);
        m_pSocket->connectToHost(m_message.url.host(), quint16(m_message.url.port(80)));
    }
}

void CHttpExchange::OnConnected() {
    m_bConnected = true;
    m_nUnsent = m_message.body.size();
    const QByteArray head = http_request::HeadOf(m_message);
    m_nUnsent += head.size();
    m_pSocket->write(head + m_message.body);
}

void CHttpExchange::OnWritten(qint64 bytes) {
    m_nUnsent -= bytes;
    const qint64 total = m_message.body.size();
    if (m_nUnsent <= total && total > 0) {
        Tell(listeners.upload, total - m_nUnsent, total);
    }
}

// From a task, with neither the socket nor the exchange below it: a callback may open a loop in which both end.
void CHttpExchange::Tell(const core::network::http::Progress& progress, qint64 done, qint64 total) {
    if (!progress) {
        return;
    }
    const auto tell = [guard = listeners.guard, progress, done, total] {
        if (guard) {
            host::CallAndLogExceptions(kLog, "A progress callback", [&] { progress(double(done), double(total)); });
        }
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void CHttpExchange::OnBytes() {
    const QByteArray bytes = m_pSocket->readAll();
    const auto state = m_reader->Take(bytes.constData(), size_t(bytes.size()));
    if (!m_reader->Body().empty()) {
        Tell(listeners.download, qint64(m_reader->Body().size()), m_reader->BodyLength());
    }
    OnState(state);
}

void CHttpExchange::OnError(QAbstractSocket::SocketError error) {
    const std::string reason = m_pSocket->errorString().toStdString();
    if (!m_bConnected) {
        kLog.Info(FMT_STRING("No connection to {}: {}"), m_message.url.host().toStdString(), reason);
        End(kHttpNoConnection);
        return;
    }
    while (m_pSocket && m_pSocket->bytesAvailable() > 0) {
        OnBytes();
    }
    if (m_pSocket) {
        m_bEnded = true;
        OnState(m_reader->End(error == QAbstractSocket::RemoteHostClosedError));
    }
}

void CHttpExchange::OnState(CHttpAnswerReader::EnState state) {
    switch (state) {
        case CHttpAnswerReader::EnState::kReading:
            return;
        case CHttpAnswerReader::EnState::kWhole:
            OnWhole();
            return;
        case CHttpAnswerReader::EnState::kTooLarge:
            kLog.Info(FMT_STRING("The answer of {} is too large"), m_message.url.host().toStdString());
            End(kHttpTooLarge);
            return;
        case CHttpAnswerReader::EnState::kBad:
        case CHttpAnswerReader::EnState::kCut:
            kLog.Info(FMT_STRING("The answer of {} is no whole one"), m_message.url.host().toStdString());
            End(kHttpCut);
            return;
    }
}

// Whether more comes behind the answer shows when the connection ends.
void CHttpExchange::OnWhole() {
    if (m_bEnded) {
        OnAnswer();
    } else {
        m_lastBytes.start();
    }
}

void CHttpExchange::OnAnswer() {
    const int status = m_reader->Status();
    const QUrl target = http_request::RedirectedTo(m_message.url, status, m_reader->Header("location"));
    if (target.isEmpty()) {
        End(kHttpOk);
        return;
    }
    if (!http_request::SameOrigin(m_message.url, target) || m_nRedirects == m_limits.redirects) {
        kLog.Info(FMT_STRING("A redirect of {} is not followed"), m_message.url.host().toStdString());
        End(kHttpRedirected);
        return;
    }
    // The last bytes may have been waited for until the end of the time.
    const int left = m_deadline.remainingTime();
    if (left <= 0) {
        End(kHttpTimedOut);
        return;
    }
    ++m_nRedirects;
    Abort();
    m_deadline.start(left);
    m_message = http_request::Redirected(std::move(m_message), status, target);
    Connect();
}

void CHttpExchange::End(HttpResult result) {
    Abort();
    auto response = std::make_shared<HttpRspInfo>();
    response->m_nResult = result;
    response->m_nHttpStatusCode = m_reader && result != kHttpTimedOut ? m_reader->Status() : 0;
    if (result == kHttpOk) {
        response->m_strBody = std::move(m_reader->Body());
    }
    Q_EMIT Ended(response);
}
