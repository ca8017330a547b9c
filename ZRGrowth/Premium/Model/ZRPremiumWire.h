#pragma once

#include <optional>

#include "modules/ZRPremiumRecords.h"

namespace web_premium_access {
class UiDataAndAccessData;
}  // namespace web_premium_access

/// Converts rights between the wire format and the client's records.
namespace premium_wire {

/// Returns the record of one right. Absent fields have their defaults. It is empty if the element has no right, or if
/// one of its halves has none or another one.
std::optional<CPremiumUIAccessData> ReadRecord(const web_premium_access::UiDataAndAccessData& element);

/// Returns the saved form of the record of the right `access`: the halves that have a right, without the source of the
/// activation.
void WriteRecord(EnPremiumAccess access, const CPremiumUIAccessData& record,
                 web_premium_access::UiDataAndAccessData& element);

}  // namespace premium_wire
