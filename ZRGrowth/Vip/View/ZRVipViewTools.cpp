#include "Vip/View/ZRVipViewTools.h"

#include <fmt/format.h>

#include <QWidget>

#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/Model/ZRVipTexts.h"
#include "core/report.h"
#include "core/url_linkid.h"
#include "premium_svr.pb.h"
#include "ui/zr_ui_res.h"

namespace vip_view {
namespace {

constexpr int kFirstFunctionRight = 99;

bool Serves(const SOfferRule& rule, int activationType) {
    switch (activationType) {
        case web_premium_access::LIMITED_TIME_ACTIVATION:
            return rule.servesLimitedTime;
        case web_premium_access::FROZEN_ACTIVATION:
        case web_premium_access::NOT_ACTIVATION:
        case web_premium_access::READY_ACTIVATION:
            return true;
        default:
            return false;
    }
}

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

std::string RefusalOf(const SOfferRule& rule, EnPremiumAccess access, ZRVipUIDataType dataType) {
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(access);
    if (record.strUIType != QLatin1String("D")) {
        return fmt::format("UI Type Mismatch, Premium Access = {}, UI Type = {}", int(access),
                           record.strUIType.toStdString());
    }
    if (!Serves(rule, record.nActivationType)) {
        const std::string dataTypeText = rule.namesDataType ? fmt::format(", Data Type = {}", int(dataType)) : "";
        return fmt::format("Activation Type Mismatch, Premium Access = {}, Activation Type = {}{}", int(access),
                           record.nActivationType, dataTypeText);
    }
    const CZRVipTexts texts = SelectVipTexts(record, dataType).value_or(CZRVipTexts());
    if (texts.strBtn.isEmpty() || (rule.needsTitle && texts.strTitle.isEmpty())) {
        return fmt::format("Empty Premium Data, Premium Access = {}, Data Type = {}", int(access), int(dataType));
    }
    return {};
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
