#pragma once

#include <optional>

#include "modules/ZRPremiumRecords.h"

namespace web_premium_access {
class UiDataAndAccessData;
}  // namespace web_premium_access

/// Rights as the server writes them, from and to the client's records.
namespace premium_wire {

/// The record of one right. Empty for an element that does not name its right, or one of whose halves names
/// none or another: both halves of such an element are dropped. Fields that are absent keep their defaults.
std::optional<CPremiumUIAccessData> ReadRecord(const web_premium_access::UiDataAndAccessData& element);

/// The saved form of a record under the right `access`: the halves that name a right, and of the state all but
/// its source.
void WriteRecord(EnPremiumAccess access, const CPremiumUIAccessData& record,
                 web_premium_access::UiDataAndAccessData& element);

}  // namespace premium_wire
