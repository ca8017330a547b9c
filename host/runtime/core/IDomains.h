#pragma once

#include "core/url_data.h"

/// Behind core::url_data. Main thread.
class IDomains {
public:
    virtual ~IDomains() = default;

    /// Without a slash at its end; empty if there is none.
    virtual std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const = 0;
};
