#pragma once

#include <string>

#include "core/IZRChannelProxy.h"
#include "framework/export.h"

namespace core {
namespace url_linkid {

/// Returns the URL that the server's link table holds for a link id.
/// Thread: main thread.
/// Failure: empty for an unknown id, and before the client received the table for the first time.
ZRHOST_API std::string GetLinkUrlWithTargetLinkId(unsigned long linkId, CSBrokerId broker);

}  // namespace url_linkid
}  // namespace core
