#pragma once

#include "core/network/http.h"

/// Behind core::network::http. Main thread; see there for what is promised.
class IHttp {
public:
    virtual ~IHttp() = default;

    /// `guard` is not null.
    virtual unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                HttpWorkPool pool, core::network::http::Progress upload,
                                core::network::http::Progress download) = 0;
};
