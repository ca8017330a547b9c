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

/// Selects a queue of requests; there is one.
enum HttpWorkPool : int {
    kHttpWorkPoolDefault = 0,
};

struct HttpReqInfo {
    HttpMethod m_enMethod = kHttpGet;
    std::string m_strUrl;
    std::string m_strBody;  // of a POST; it is sent as JSON
    std::map<std::string, std::vector<std::string>> m_mapHeader;
    std::map<std::string, std::vector<std::string>> m_mapQuery;  // appended to the URL, percent-encoded
    int m_nTimeoutSeconds = 10;                                  // for the whole exchange
};

/// How an exchange that never became an answer ended.
enum HttpResult : int {
    kHttpOk = 0,  // an answer came, whatever its status
    kHttpBadRequest = 1,
    kHttpNoConnection = 2,
    kHttpTimedOut = 3,
    kHttpTooLarge = 4,
    kHttpCut = 5,
    kHttpRedirected = 6,  // to another host, which is not followed
};

struct HttpRspInfo {
    int m_nResult = kHttpOk;
    int m_nHttpStatusCode = 0;  // 0 where no answer came
    std::string m_strBody;      // at most 8 MiB; empty with a result other than kHttpOk
};

namespace core {
namespace network {
namespace http {

using Callback = std::function<void(unsigned long taskId, const HttpRspInfo& response)>;
using Progress = std::function<void(double done, double total)>;

/// Starts an exchange and gives its task id, never 0. The callback runs once, on the main thread, never inside
/// this call, and not at all once `guard` is gone. 0 where nothing was started (no service, a null guard); then
/// nothing is called. Main thread. `upload` and `download` count bytes and may be empty.
ZRHOST_API unsigned long StartRequest(const HttpReqInfo& request, Callback callback, QObject* guard, HttpWorkPool pool,
                                      Progress upload, Progress download);

}  // namespace http
}  // namespace network
}  // namespace core
