#include "Ad/Tools/ZRAdTools.h"

#include <fmt/format.h>

#include "core/environment.h"
#include "core/random.h"
#include "core/time_date.h"

QString CZRAdTools::GenerateAdRequestId() {
    return QString::fromStdString(fmt::format(FMT_STRING("{}{}{}"), core::environment::GetDeviceId(),
                                              core::time_date::GetSvrTimeStamp(), core::random::GetRandUInt32()));
}

QString CZRAdTools::GenerateAdReportId(QString const& adId) {
    return QString::fromStdString(fmt::format(FMT_STRING("{}{}{}"), core::environment::GetDeviceId(),
                                              core::time_date::GetSvrTimeStamp(), adId.toStdString()));
}
