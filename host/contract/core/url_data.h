#pragma once

#include <string>

#include "framework/export.h"

namespace core {
namespace url_data {

/// The business that needs the domain.
enum DomainBizType : int {
    kDomainBizDefault = 0,
};

/// Returns the base address of the servers under `key`, without a trailing slash. "api" is the ad server.
/// Thread: main thread.
/// Failure: empty for an unknown key.
ZRHOST_API std::string GetDomainUrl(const std::string& key, DomainBizType biz);

}  // namespace url_data
}  // namespace core
