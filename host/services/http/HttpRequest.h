#pragma once

#include <QByteArray>
#include <QUrl>
#include <map>
#include <optional>
#include <string>

#include "core/network/http.h"

/// A request that may be sent.
struct HttpMessage {
    QUrl url;
    HttpMethod method = kHttpGet;
    std::map<QByteArray, QByteArray> headers;  // but for those that the line itself needs; names in lower case
    QByteArray body;
};

/// What goes to the server for a request of the contract.
namespace http_request {

/// Nothing where the request can't be sent, and `reason` says why. Only https is sent; http on this machine alone,
/// where it goes to the origin `plain` (empty: to none) or the build is an `internal` one.
std::optional<HttpMessage> Make(const HttpReqInfo& request, bool internal, const QUrl& plain, std::string& reason);

/// The bytes before the body. The connection is for this one exchange.
QByteArray HeadOf(const HttpMessage& message);

/// The whole time limit of a request in milliseconds, in a range that a timer can count.
int LimitMillis(const HttpReqInfo& request);

/// Where an answer with this status and `Location` sends its reader, empty where nowhere. What is no address is
/// an address of nobody's.
QUrl RedirectedTo(const QUrl& from, int status, const std::string& location);

/// The message that follows an answer of this status to `target`.
HttpMessage Redirected(HttpMessage message, int status, const QUrl& target);

bool SameOrigin(const QUrl& left, const QUrl& right);

}  // namespace http_request
