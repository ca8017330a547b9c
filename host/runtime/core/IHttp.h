#pragma once

#include "core/network/http.h"

/// The port behind core::network::http, with the same guarantees. Main thread.
class IHttp {
public:
    virtual ~IHttp() = default;

    /// `guard` is not null.
    virtual unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                HttpWorkPool pool, core::network::http::Progress upload,
                                core::network::http::Progress download) = 0;
};
