#pragma once

#include "core/IHttp.h"

class CTraceLog;

/// Records HTTP requests and their results and forwards all calls unchanged. A request whose guard was destroyed has
/// no recorded result. Main thread. The service and the trace log must outlive it.
class CHttpRecorder : public IHttp {
public:
    CHttpRecorder(IHttp& http, CTraceLog& traceLog);

    unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                        HttpWorkPool pool, core::network::http::Progress upload,
                        core::network::http::Progress download) override;

private:
    IHttp& m_http;
    CTraceLog& m_traceLog;
};
