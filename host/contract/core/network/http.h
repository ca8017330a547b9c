#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "framework/export.h"

enum HttpMethod : int {
    kHttpGet = 0,
    kHttpPost = 1,
};

/// Identifies a queue of requests. There is exactly one.
enum HttpWorkPool : int {
    kHttpWorkPoolDefault = 0,
};

/// A request. Redirects are followed only within the same origin.
struct HttpReqInfo {
    HttpMethod m_enMethod = kHttpGet;
    /// An https URL. Plain http is allowed to loopback addresses only, in internal builds.
    std::string m_strUrl;
    /// The body of a POST, sent as JSON.
    std::string m_strBody;
    /// Headers by name. Several values are joined by commas. Headers of the transport, for example Host,
    /// Content-Length and Cookie, are refused.
    std::map<std::string, std::vector<std::string>> m_mapHeader;
    /// Query items, percent-encoded and appended to the URL.
    std::map<std::string, std::vector<std::string>> m_mapQuery;
    /// The time limit of the whole exchange, redirects included. 0 and negative values mean 10, the maximum is 24
    /// hours.
    int m_nTimeoutSeconds = 10;
};

/// The result of an exchange. Every value except kHttpOk means that no complete answer was received.
enum HttpResult : int {
    /// An answer was received, with any status.
    kHttpOk = 0,
    /// The URL, the method or a header is not allowed. Nothing was sent.
    kHttpBadRequest = 1,
    /// The name is unknown, or no connection was made, a refused certificate included.
    kHttpNoConnection = 2,
    kHttpTimedOut = 3,
    /// The body or the headers are larger than the limits.
    kHttpTooLarge = 4,
    /// The connection ended before the answer was complete. The server may have handled the request.
    kHttpCut = 5,
    /// A redirect to another origin, which was not followed.
    kHttpRedirected = 6,
};

/// An answer, or the reason why there is none.
struct HttpRspInfo {
    int m_nResult = kHttpOk;
    /// 0 without an answer.
    int m_nHttpStatusCode = 0;
    /// At most 1 MiB; empty with a result other than kHttpOk.
    std::string m_strBody;
};

namespace core {
namespace network {
namespace http {

/// Receives the result. Runs on the main thread. `response` is valid only during the call.
using Callback = std::function<void(unsigned long taskId, const HttpRspInfo& response)>;
/// Receives the progress in bytes. `total` is 0 or below if it is unknown.
using Progress = std::function<void(double done, double total)>;

/// Starts an exchange on a connection of its own.
/// Returns its task id, never 0.
/// The callback runs exactly once, later, never inside this call.
/// Thread: main thread.
/// Ownership: nothing runs after the end of `guard`. `upload` and `download` may be empty.
/// Failure: without a service, or with a null `guard`, it returns 0 and calls nothing. All other failures are
/// results.
ZRHOST_API unsigned long StartRequest(const HttpReqInfo& request, Callback callback, QObject* guard, HttpWorkPool pool,
                                      Progress upload, Progress download);

}  // namespace http
}  // namespace network
}  // namespace core
