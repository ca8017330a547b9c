#pragma once

#include <json/value.h>

#include <QPixmap>
#include <QSize>
#include <string>

#include "modules/ZRGrowthTypes.h"

class QWidget;

/// Operations that several VIP widgets share. Main thread.
namespace vip_view {

/// Returns the image in the current theme, scaled into `size`, aspect ratio kept, with as many pixels as the widget's
/// screen has. Null for an unknown name.
QPixmap ScaledImage(const QString& name, const QSize& size, const QWidget* widget);

/// Returns the URL of a link id. Empty for an unknown one.
QString LinkUrl(unsigned long linkId);

/// Returns the report parameter "permission_type".
std::string PermissionType(EnPremiumAccess access);

/// Returns whether the right is one of market data. Others are functions, whose events have other names.
bool IsMarketRight(EnPremiumAccess access);

/// Sends the report of a click on a banner or a mask. `params` contains what is particular to the widget.
void ReportEntranceClick(EnPremiumAccess access, ZRVipUIDataType dataType, int pageStatus, Json::Value params);

}  // namespace vip_view
