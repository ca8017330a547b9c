#include "http/HttpRequest.h"

#include <algorithm>

#include "core/UrlCheck.h"

namespace {

constexpr int kHttpsPort = 443;
constexpr int kHttpPort = 80;
constexpr int kDefaultTimeoutSeconds = 10;
constexpr int kMaxTimeoutSeconds = 24 * 3600;

// The transport sets these itself. A second value could make client and server disagree about the request.
constexpr const char* kReservedHeaders[] = {
    "host",    "connection", "content-length", "transfer-encoding", "keep-alive", "upgrade", "te",
    "trailer", "expect",     "cookie"};

bool IsNameCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    constexpr char separators[] = "()<>@,;:\\\"/[]?={} \t";
    return byte > 0x20 && byte < 0x7F &&
           std::find(std::begin(separators), std::end(separators) - 1, character) == std::end(separators) - 1;
}

bool IsValueCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte >= 0x20 && byte != 0x7F) || character == '\t';
}

bool IsReserved(const std::string& name) {
    const QByteArray lower = QByteArray::fromStdString(name).toLower();
    return std::any_of(std::begin(kReservedHeaders), std::end(kReservedHeaders),
                       [&](const char* reserved) { return lower == reserved; });
}

bool AddHeaders(HttpMessage& message, const std::map<std::string, std::vector<std::string>>& headers) {
    for (const auto& [name, values] : headers) {
        if (name.empty() || !std::all_of(name.begin(), name.end(), IsNameCharacter) || IsReserved(name)) {
            return false;
        }
        QByteArray joined;
        for (const std::string& value : values) {
            if (!std::all_of(value.begin(), value.end(), IsValueCharacter)) {
                return false;
            }
            joined += (joined.isEmpty() ? QByteArray() : QByteArray(", ")) + QByteArray::fromStdString(value);
        }
        if (!values.empty()) {
            message.headers[QByteArray::fromStdString(name).toLower()] = joined;
        }
    }
    return true;
}

QUrl WithQuery(QUrl url, const std::map<std::string, std::vector<std::string>>& query) {
    QByteArray text = url.query(QUrl::FullyEncoded).toLatin1();
    for (const auto& [name, values] : query) {
        for (const std::string& value : values) {
            text += (text.isEmpty() ? QByteArray() : QByteArray("&")) +
                    QByteArray::fromStdString(name).toPercentEncoding() + '=' +
                    QByteArray::fromStdString(value).toPercentEncoding();
        }
    }
    if (!text.isEmpty()) {
        url.setQuery(QString::fromLatin1(text), QUrl::StrictMode);
    }
    url.setFragment(QString());
    return url;
}

int PortOf(const QUrl& url) {
    return url.port(url.scheme() == QLatin1String("https") ? kHttpsPort : kHttpPort);
}

}  // namespace

std::optional<HttpMessage> http_request::Make(const HttpReqInfo& request, bool internal, const QUrl& insecureOrigin,
                                              std::string& reason) {
    if (request.m_enMethod != kHttpGet && request.m_enMethod != kHttpPost) {
        reason = "its method is not known";
        return std::nullopt;
    }
    const QString text = QString::fromStdString(request.m_strUrl);
    const bool allowed = !insecureOrigin.isEmpty() && SameOrigin(insecureOrigin, QUrl(text, QUrl::StrictMode));
    const auto verdict = host::CheckUrl(text, internal || allowed);
    if (verdict.target != host::EnUrlTarget::kWeb) {
        reason = verdict.reason.isEmpty() ? "it is not the address of a server" : verdict.reason.toStdString();
        return std::nullopt;
    }
    HttpMessage message;
    message.url = WithQuery(verdict.url, request.m_mapQuery);
    message.method = request.m_enMethod;
    // The limit on the body counts the bytes received, so a compressed body must not expand beyond it.
    message.headers["accept-encoding"] = "identity";
    message.headers["accept"] = "*/*";
    message.headers["user-agent"] = "zrclient";
    if (message.method == kHttpPost) {
        message.headers["content-type"] = "application/json";
        message.body = QByteArray::fromStdString(request.m_strBody);
    }
    if (!AddHeaders(message, request.m_mapHeader)) {
        reason = "a header of it is not allowed";
        return std::nullopt;
    }
    return message;
}

QList<QByteArray> http_request::HeaderLines(const HttpMessage& message) {
    // libcurl would ask the server to confirm a large body first.
    QList<QByteArray> lines{"connection: close", "expect:"};
    for (const auto& [name, value] : message.headers) {
        // libcurl sends a header without a value only when a semicolon follows its name.
        lines += value.trimmed().isEmpty() ? name + ';' : name + ": " + value;
    }
    return lines;
}

int http_request::TimeoutMs(const HttpReqInfo& request) {
    const int seconds = request.m_nTimeoutSeconds > 0 ? request.m_nTimeoutSeconds : kDefaultTimeoutSeconds;
    return std::min(seconds, kMaxTimeoutSeconds) * 1000;
}

QUrl http_request::RedirectTarget(const QUrl& from, int status, const std::string& location) {
    const bool redirects = status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
    if (!redirects || location.empty()) {
        return {};
    }
    const QUrl target = QUrl::fromEncoded(QByteArray::fromStdString(location), QUrl::StrictMode);
    return target.isValid() ? from.resolved(target) : QUrl(QStringLiteral("invalid:"));
}

// Only 307 and 308 keep the method and the body, as in browsers.
HttpMessage http_request::Redirected(HttpMessage message, int status, const QUrl& target) {
    message.url = target;
    message.url.setFragment(QString());
    if (status != 307 && status != 308 && message.method == kHttpPost) {
        message.method = kHttpGet;
        message.body.clear();
        message.headers.erase("content-type");
    }
    return message;
}

bool http_request::SameOrigin(const QUrl& left, const QUrl& right) {
    return left.scheme() == right.scheme() && left.host() == right.host() && PortOf(left) == PortOf(right) &&
           right.userInfo().isEmpty();
}
