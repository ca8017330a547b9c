#pragma once

#include <QObject>
#include <map>
#include <memory>

#include "core/IHttp.h"
#include "http/HttpExchange.h"

class IClientState;
class IPoster;

/// HTTP on libcurl. Only https is allowed, and http to loopback addresses: to all in internal builds, in every build
/// to the origin given to AllowInsecureOrigin(). No proxy, cookies, cache or login. Poster and environment must
/// outlive the service. Main thread.
class CHttpService : public QObject, public IHttp {
    Q_OBJECT

public:
    CHttpService(IPoster& poster, const IClientState& environment, const HttpOptions& options = {});
    /// Aborts running exchanges without a callback.
    ~CHttpService() override;

    /// Allows http to this loopback origin in every build, instead of the previous one. An empty URL allows none.
    /// Running exchanges continue.
    void AllowInsecureOrigin(const QUrl& origin) { m_insecureOrigin = origin; }

    unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                        HttpWorkPool pool, core::network::http::Progress upload,
                        core::network::http::Progress download) override;

    int RunningCount() const { return int(m_running.size()); }

private:
    void DeliverLater(const CHttpExchange::Listeners& listeners, unsigned long task,
                      std::shared_ptr<HttpRspInfo> response);
    void Drop(unsigned long task);

    IPoster& m_poster;
    const IClientState& m_environment;
    const HttpOptions m_options;
    QUrl m_insecureOrigin;
    CCurlLoop m_loop;  // destroyed after the exchanges
    unsigned long m_nLastTask = 0;
    std::map<unsigned long, std::unique_ptr<CHttpExchange>> m_running;
};
