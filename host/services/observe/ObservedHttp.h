#pragma once

#include "core/IHttp.h"

class CObservation;

/// HTTP that reports what is asked and answered, and changes nothing. An exchange whose guard is gone has no end
/// to report. Main thread. Both must outlive it.
class CObservedHttp : public IHttp {
public:
    CObservedHttp(IHttp& http, CObservation& observation);

    unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                        HttpWorkPool pool, core::network::http::Progress upload,
                        core::network::http::Progress download) override;

private:
    IHttp& m_http;
    CObservation& m_observation;
};
