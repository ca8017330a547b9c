#include "http/HttpExchange.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Http");

// Status lines, headers and trailers of one response together.
constexpr size_t kMaxHeaderBytes = 256 << 10;
constexpr int kFirstFinalStatus = 200;
constexpr std::string_view kStatusLineStart = "HTTP/";

}  // namespace

/// One request and its response.
struct CHttpExchange::Transfer {
    explicit Transfer(CCurlLoop& owner) : loop(owner), easy(curl_easy_init()) {}
    ~Transfer() {
        Remove();
        curl_easy_cleanup(easy);
        curl_slist_free_all(headers);
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    void Remove() {
        if (added) {
            loop.Remove(easy);
            added = false;
        }
    }

    template <class Value>
    void Set(CURLoption option, Value value) {
        configured = configured && curl_easy_setopt(easy, option, value) == CURLE_OK;
    }

    CCurlLoop& loop;
    CURL* const easy;
    curl_slist* headers = nullptr;
    bool configured = true;  // no option was refused
    bool added = false;
    bool connected = false;  // TLS included
    bool headComplete = false;
    bool tooLarge = false;
    size_t headerBytes = 0;
    qint64 uploaded = 0;
    std::string body;
    std::array<char, CURL_ERROR_SIZE> error{};
};

CHttpExchange::CHttpExchange(CCurlLoop& loop, HttpMessage message, int timeoutMs, const HttpOptions& options)
    : m_loop(loop), m_message(std::move(message)), m_nTimeoutMs(timeoutMs), m_options(options) {}

CHttpExchange::~CHttpExchange() {
    Abort();
}

void CHttpExchange::Begin() {
    m_deadline.setRemainingTime(m_nTimeoutMs, Qt::PreciseTimer);
    Connect();
}

void CHttpExchange::Abort() {
    m_transfer.reset();
}

std::string CHttpExchange::Header(const char* name) const {
    curl_header* header = nullptr;
    const bool found =
        m_transfer && curl_easy_header(m_transfer->easy, name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK;
    return found ? header->value : std::string();
}

void CHttpExchange::Connect() {
    m_transfer = std::make_unique<Transfer>(m_loop);
    if (!Configure(*m_transfer)) {
        QMetaObject::invokeMethod(
            this, [this] { OnDone(CURLE_FAILED_INIT); }, Qt::QueuedConnection);
        return;
    }
    m_transfer->added = true;
    m_loop.Add(m_transfer->easy, [this](CURLcode code) { OnDone(code); });
}

bool CHttpExchange::Configure(Transfer& transfer) {
    const auto remainingMs = long(std::max<qint64>(m_deadline.remainingTime(), 1));
    transfer.Set(CURLOPT_ERRORBUFFER, transfer.error.data());
    transfer.Set(CURLOPT_NOSIGNAL, 1L);
    // Without this, ending the transfer waits for its thread that looks up the name.
    transfer.Set(CURLOPT_QUICK_EXIT, 1L);
    transfer.Set(CURLOPT_TIMEOUT_MS, remainingMs);
    transfer.Set(CURLOPT_CONNECTTIMEOUT_MS, remainingMs);

    transfer.Set(CURLOPT_URL, m_message.url.toEncoded().constData());
    transfer.Set(CURLOPT_PROTOCOLS_STR, m_message.url.scheme() == QLatin1String("https") ? "https" : "http");
    transfer.Set(CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    transfer.Set(CURLOPT_PATH_AS_IS, 1L);
    transfer.Set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    transfer.Set(CURLOPT_FOLLOWLOCATION, 0L);
    transfer.Set(CURLOPT_PROXY, "");
    transfer.Set(CURLOPT_FRESH_CONNECT, 1L);
    transfer.Set(CURLOPT_FORBID_REUSE, 1L);

    transfer.Set(CURLOPT_SSL_VERIFYPEER, 1L);
    transfer.Set(CURLOPT_SSL_VERIFYHOST, 2L);
    // The folder alone: reading the file with all authorities would hold up the main thread.
    if (curl_version_info(CURLVERSION_NOW)->capath) {
        transfer.Set(CURLOPT_CAINFO, static_cast<char*>(nullptr));
    }
    if (!m_options.caCertificates.isEmpty()) {
        curl_blob certificates{const_cast<char*>(m_options.caCertificates.constData()),
                               size_t(m_options.caCertificates.size()), CURL_BLOB_COPY};
        transfer.Set(CURLOPT_CAINFO_BLOB, &certificates);
    }

    const auto lines = http_request::HeaderLines(m_message);
    for (const QByteArray& line : lines) {
        transfer.headers = curl_slist_append(transfer.headers, line.constData());
    }
    transfer.Set(CURLOPT_HTTPHEADER, transfer.headers);
    if (m_message.method == kHttpPost) {
        transfer.Set(CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_message.body.size()));
        transfer.Set(CURLOPT_POSTFIELDS, m_message.body.constData());
    }

    transfer.Set(CURLOPT_MAXFILESIZE_LARGE, curl_off_t(m_options.maxBodyBytes));
    using Exchange = CHttpExchange;
    transfer.Set(CURLOPT_HEADERDATA, this);
    transfer.Set(
        CURLOPT_HEADERFUNCTION, +[](char* bytes, size_t size, size_t count, void* exchange) {
            return static_cast<Exchange*>(exchange)->OnHeader(bytes, size * count);
        });
    transfer.Set(CURLOPT_WRITEDATA, this);
    transfer.Set(
        CURLOPT_WRITEFUNCTION, +[](char* bytes, size_t size, size_t count, void* exchange) {
            return static_cast<Exchange*>(exchange)->OnBody(bytes, size * count);
        });
    transfer.Set(CURLOPT_PREREQDATA, &transfer);
    transfer.Set(
        CURLOPT_PREREQFUNCTION, +[](void* connecting, char*, char*, int, int) {
            static_cast<Transfer*>(connecting)->connected = true;
            return int(CURL_PREREQFUNC_OK);
        });
    transfer.Set(CURLOPT_NOPROGRESS, 0L);
    transfer.Set(CURLOPT_XFERINFODATA, this);
    transfer.Set(
        CURLOPT_XFERINFOFUNCTION, +[](void* exchange, curl_off_t, curl_off_t, curl_off_t total, curl_off_t done) {
            auto* self = static_cast<Exchange*>(exchange);
            // libcurl also reports progress when Abort() removes the transfer.
            if (self->m_transfer && std::exchange(self->m_transfer->uploaded, done) != done) {
                self->Report(self->listeners.upload, done, total);
            }
            return 0;
        });
    return transfer.configured;
}

// libcurl ends the transfer when fewer bytes are returned than were given.
size_t CHttpExchange::OnHeader(const char* bytes, size_t count) {
    m_transfer->headerBytes += count;
    m_transfer->tooLarge = m_transfer->headerBytes > kMaxHeaderBytes;
    if (std::string_view(bytes, count).substr(0, kStatusLineStart.size()) == kStatusLineStart) {
        m_transfer->headComplete = false;
    } else if (*bytes == '\r' || *bytes == '\n') {
        m_transfer->headComplete = true;
    }
    return m_transfer->tooLarge ? 0 : count;
}

size_t CHttpExchange::OnBody(const char* bytes, size_t count) {
    std::string& body = m_transfer->body;
    if (body.size() + count > size_t(m_options.maxBodyBytes)) {
        m_transfer->tooLarge = true;
        return 0;
    }
    body.append(bytes, count);
    curl_off_t total = -1;
    curl_easy_getinfo(m_transfer->easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &total);
    Report(listeners.download, qint64(body.size()), total);
    return count;
}

// A callback may run an event loop in which the exchange ends, so it is called from a task. The task outlives the
// exchange, which is deleted at its end, but not the service.
void CHttpExchange::Report(const core::network::http::Progress& progress, qint64 done, qint64 total) {
    if (!progress) {
        return;
    }
    const auto report = [guard = listeners.guard, progress, done, total] {
        if (guard) {
            host::CallAndLogExceptions(kLog, "A progress callback", [&] { progress(double(done), double(total)); });
        }
    };
    QMetaObject::invokeMethod(&m_loop, report, Qt::QueuedConnection);
}

void CHttpExchange::OnDone(CURLcode code) {
    // Aborted before a failed configuration was reported.
    if (!m_transfer) {
        return;
    }
    m_transfer->Remove();
    const HttpResult result = ResultOf(code);
    if (result != kHttpOk) {
        kLog.Info(FMT_STRING("A request to {} failed with result {}: {} {}"), m_message.url.host().toStdString(),
                  int(result), curl_easy_strerror(code), m_transfer->error.data());
        End(result);
        return;
    }
    const QUrl target = http_request::RedirectTarget(m_message.url, Status(), Header("location"));
    if (target.isEmpty()) {
        End(kHttpOk);
    } else if (!http_request::SameOrigin(m_message.url, target) || m_nRedirects == m_options.maxRedirects) {
        kLog.Info(FMT_STRING("A redirect of {} is not followed"), m_message.url.host().toStdString());
        End(kHttpRedirected);
    } else if (m_deadline.hasExpired()) {
        End(kHttpTimedOut);
    } else {
        ++m_nRedirects;
        m_message = http_request::Redirected(std::move(m_message), Status(), target);
        Connect();
    }
}

HttpResult CHttpExchange::ResultOf(CURLcode code) const {
    // libcurl reports a header line above its own maximum as CURLE_OUT_OF_MEMORY.
    if (m_transfer->tooLarge || code == CURLE_FILESIZE_EXCEEDED ||
        (m_transfer->connected && code == CURLE_OUT_OF_MEMORY)) {
        return kHttpTooLarge;
    }
    if (code == CURLE_OPERATION_TIMEDOUT) {
        return kHttpTimedOut;
    }
    if (!m_transfer->connected) {
        return kHttpNoConnection;
    }
    // libcurl accepts a connection that closes within the headers, and a change of protocol.
    return code == CURLE_OK && m_transfer->headComplete && Status() != 0 ? kHttpOk : kHttpCut;
}

int CHttpExchange::Status() const {
    long status = 0;
    curl_easy_getinfo(m_transfer->easy, CURLINFO_RESPONSE_CODE, &status);
    return status < kFirstFinalStatus ? 0 : int(status);
}

void CHttpExchange::End(HttpResult result) {
    auto response = std::make_shared<HttpRspInfo>();
    response->m_nResult = result;
    response->m_nHttpStatusCode = result != kHttpTimedOut ? Status() : 0;
    if (result == kHttpOk) {
        response->m_strBody = std::move(m_transfer->body);
    }
    Q_EMIT Ended(response);
}
