#pragma once

#include <string>

#include "framework/export.h"

namespace core {
namespace url_data {

/// The business that needs the domain.
enum DomainBizType : int {
    kDomainBizDefault = 0,
};

/// Returns the base address of the servers under `key`, without a trailing slash. "api" is the ad server, and
/// "pages" the server of the client's own web pages.
/// The address may change when the client finds another server, so ask before each request.
/// Thread: main thread.
/// Failure: empty for an unknown key, and before a server was found.
ZRHOST_API std::string GetDomainUrl(const std::string& key, DomainBizType biz);

}  // namespace url_data
}  // namespace core
