#pragma once

#include <string>

#include "framework/export.h"

namespace core {
namespace url_data {

/// Which business a domain is asked for.
enum DomainBizType : int {
    kDomainBizDefault = 0,
};

/// The base address of the servers under that key, without a slash at its end; empty if there is none.
/// "api" is the ad server. Main thread.
ZRHOST_API std::string GetDomainUrl(const std::string& key, DomainBizType biz);

}  // namespace url_data
}  // namespace core
