#include "Vip/View/ZRVipViewTools.h"

#include <QWidget>

#include "Vip/Controller/ZRVipManager.h"
#include "Vip/ZRVipIds.h"
#include "core/report.h"
#include "core/url_linkid.h"
#include "ui/zr_ui_res.h"

namespace vip_view {
namespace {

constexpr int kFirstFunctionRight = 99;

}  // namespace

QPixmap ScaledImage(const QString& name, const QSize& size, const QWidget* widget) {
    const double ratio = widget->devicePixelRatioF();
    const QPixmap image = zr_ui_res::TResource<QPixmap>(name).value(ratio);
    if (image.isNull()) {
        return image;
    }
    QPixmap scaled = image.scaled(size * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    return scaled;
}

QString LinkUrl(unsigned long linkId) {
    return QString::fromStdString(core::url_linkid::GetLinkUrlWithTargetLinkId(linkId, 0));
}

std::string PermissionType(EnPremiumAccess access) {
    return std::to_string(int(access));
}

bool IsMarketRight(EnPremiumAccess access) {
    return int(access) < kFirstFunctionRight;
}

void ReportEntranceClick(EnPremiumAccess access, ZRVipUIDataType dataType, int pageStatus, Json::Value params) {
    params["permission_type"] = PermissionType(access);
    params["page_status"] = pageStatus;
    params["button_position"] = std::to_string(int(dataType));
    params["engine_status"] = CZRVipManager::Singleton()->GetVipEngineStatus();
    if (IsMarketRight(access)) {
        core::report::Report("ClickPremiumMarketEntrance", kReportCodeMarket, params, 0);
    } else {
        core::report::Report("ClickPremiumFunctionEntrance", kReportCodeFunction, params, 0);
    }
}

}  // namespace vip_view
