#pragma once

#include <string>

#include "core/IZRChannelProxy.h"
#include "framework/export.h"

namespace core {
namespace url_linkid {

/// Returns the URL that the server's link table holds for a link id. The table may change while the client runs, so
/// ask at the time of the click.
/// `broker` is reserved for tables per broker. There is one table, and the value has no effect.
/// Thread: main thread.
/// Failure: empty for an unknown id, and before the client received the table for the first time.
ZRHOST_API std::string GetLinkUrlWithTargetLinkId(unsigned long linkId, CSBrokerId broker);

}  // namespace url_linkid
}  // namespace core
