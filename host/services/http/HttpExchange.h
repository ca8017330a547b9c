#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <memory>

#include "http/CurlLoop.h"
#include "http/HttpRequest.h"

struct HttpOptions {
    qint64 maxBodyBytes = 1 << 20;  ///< of a response
    int maxRedirects = 5;           ///< within the same origin
    QByteArray caCertificates;      ///< PEM, in addition to the certificate authorities of the system; may be empty
};

/// One HTTP exchange from the first byte to the last, redirects included. Each request has a connection of its own,
/// because libcurl sends a request again when a reused connection is closed, a POST included. Main thread.
class CHttpExchange : public QObject {
    Q_OBJECT

public:
    struct Listeners {
        QPointer<QObject> guard;
        core::network::http::Callback answered;
        core::network::http::Progress upload;
        core::network::http::Progress download;
    };

    /// `loop` must outlive the exchange, or at least its last call of Abort().
    CHttpExchange(CCurlLoop& loop, HttpMessage message, int timeoutMs, const HttpOptions& options);
    ~CHttpExchange() override;

    void Begin();

    /// Ends the exchange without a signal. The destructor does the same.
    void Abort();

    /// Returns the first response header with this name, empty if there is none. Valid inside Ended only.
    std::string Header(const char* name) const;

    Listeners listeners;

Q_SIGNALS:
    /// Emitted once, later than Begin(), and last.
    void Ended(const std::shared_ptr<HttpRspInfo>& response);

private:
    struct Transfer;

    void Connect();
    bool Configure(Transfer& transfer);
    size_t OnHeader(const char* bytes, size_t count);
    size_t OnBody(const char* bytes, size_t count);
    void OnDone(CURLcode code);
    HttpResult ResultOf(CURLcode code) const;
    int Status() const;
    void End(HttpResult result);
    void Report(const core::network::http::Progress& progress, qint64 done, qint64 total);

    CCurlLoop& m_loop;
    HttpMessage m_message;
    const int m_nTimeoutMs;
    const HttpOptions m_options;
    QDeadlineTimer m_deadline;
    std::unique_ptr<Transfer> m_transfer;  // null before Begin() and after the end
    int m_nRedirects = 0;
};
