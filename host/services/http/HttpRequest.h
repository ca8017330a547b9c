#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>
#include <map>
#include <optional>
#include <string>

#include "core/network/http.h"

/// A request that passed the policy and may be sent.
struct HttpMessage {
    QUrl url;
    HttpMethod method = kHttpGet;
    std::map<QByteArray, QByteArray> headers;  ///< without those of the transport; names in lower case
    QByteArray body;
};

/// The policy for requests and redirects.
namespace http_request {

/// Returns the message to send, or nothing and a `reason` if the request is refused. Only https is allowed, and http
/// to loopback addresses: in an `internal` build to all, otherwise only to `insecureOrigin` (empty: to none).
std::optional<HttpMessage> Make(const HttpReqInfo& request, bool internal, const QUrl& insecureOrigin,
                                std::string& reason);

/// Returns the header lines for libcurl.
QList<QByteArray> HeaderLines(const HttpMessage& message);

/// Returns the timeout of the whole exchange, from 1 second to 24 hours, 10 seconds by default.
int TimeoutMs(const HttpReqInfo& request);

/// Returns the redirect target of a response with this status and `Location`, empty if it does not redirect. A
/// `Location` that is not a URL gives a target with no origin.
QUrl RedirectTarget(const QUrl& from, int status, const std::string& location);

/// Returns the message to send to `target` after a response with this redirect status.
HttpMessage Redirected(HttpMessage message, int status, const QUrl& target);

/// Returns true if scheme, host and port are equal and `right` has no user information.
bool SameOrigin(const QUrl& left, const QUrl& right);

}  // namespace http_request
