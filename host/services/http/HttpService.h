#pragma once

#include <QObject>
#include <map>
#include <memory>

#include "core/IHttp.h"
#include "http/HttpExchange.h"

class IClientState;
class IPoster;

/// HTTP on the toolkit's sockets. Speaks to https alone, and in internal builds to this machine by http; in any
/// build to the one server on this machine that AllowPlain names. No proxy, cookies, cache or login. Poster and
/// environment must outlive it. Main thread.
class CHttpService : public QObject, public IHttp {
    Q_OBJECT

public:
    CHttpService(IPoster& poster, const IClientState& environment, const HttpLimits& limits = {});
    /// Aborts what is under way; nothing is called from then on.
    ~CHttpService() override;

    /// The server that the client started or was named may be spoken to by http in any build: this whole origin and
    /// no other one, in place of the one before; only on this machine. An empty one is nobody's. What is under way
    /// goes on.
    void AllowPlain(const QUrl& origin) { m_plain = origin; }

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
    const HttpLimits m_limits;
    QUrl m_plain;
    unsigned long m_nLastTask = 0;
    std::map<unsigned long, std::unique_ptr<CHttpExchange>> m_running;
};
