#include "Vip/View/ZRVipBaseWidget.h"

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipViewTools.h"
#include "Vip/ZRVipIds.h"
#include "core/report.h"
#include "framework/defensive.h"
#include "premium_svr.pb.h"
#include "ui/zr_ui_theme.h"

CZRVipBaseWidget::CZRVipBaseWidget(EnPremiumAccess access, QString pageId, QWidget* parent)
    : IGrowthVipBaseWidget(parent), m_enAccess(access), m_strPageId(std::move(pageId)) {
    if (auto* theme = zr_ui_theme::Manager::instancePtr()) {
        FrameWork::ConnectChecked(kGrowthModuleTag, theme, &zr_ui_theme::Manager::themeChanged, this,
                                  [this] { RefreshUI(); });
    }
}

CZRVipBaseWidget::~CZRVipBaseWidget() = default;

void CZRVipBaseWidget::RefreshUI() {}

void CZRVipBaseWidget::showEvent(QShowEvent* /*event*/) {
    ReportExposeStart();
}

void CZRVipBaseWidget::hideEvent(QHideEvent* /*event*/) {
    ReportExposeEnd();
}

void CZRVipBaseWidget::ReportExposeStart() {
    if (m_enAccess == 0) {
        return;
    }
    m_exposeTimer = core::report::ReportTimerStart(vip_view::IsMarketRight(m_enAccess) ? "ViewPremiumMarketEntrance"
                                                                                       : "ViewPremiumFunctionEntrance");
}

// The timer stays set, on purpose: a second hide without a show between them reports again.
void CZRVipBaseWidget::ReportExposeEnd() {
    if (m_enAccess == 0 || !m_exposeTimer) {
        return;
    }
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(m_enAccess);
    if (record.nActivationType == 0) {
        return;
    }
    Json::Value params(Json::objectValue);
    params["permission_type"] = vip_view::PermissionType(m_enAccess);
    params["page_status"] = record.nActivationType;
    if (!m_strPageId.isEmpty()) {
        params["page_id"] = m_strPageId.toStdString();
    }
    if (record.nActivationType == web_premium_access::LIMITED_TIME_ACTIVATION && record.nDaysLeft >= 0) {
        params["day_number"] = record.nDaysLeft;
    }
    params["engine_status"] = CZRVipManager::Singleton()->GetVipEngineStatus();
    core::report::ReportTimerEnd(*m_exposeTimer, kReportCodeMarket, params, 0, 0);
}
