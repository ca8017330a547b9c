#pragma once

#include <string>

#include "framework/export.h"

namespace core {

/// Parts of URLs, as UTF-8.
/// Thread: any.
namespace url {

/// Returns the text with percent-encoded bytes decoded. Other characters stay, also "+".
/// Failure: an incomplete or invalid sequence stays as it is.
ZRHOST_API std::string Decode(const std::string& text);

/// Returns the host part, without port and user.
/// Failure: empty for a text that is no URL with a host.
ZRHOST_API std::string GetHost(const std::string& url);

}  // namespace url
}  // namespace core
