#include "Vip/View/ZRVipTagWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipViewTools.h"
#include "Vip/ZRVipIds.h"
#include "core/lang.h"
#include "core/report.h"
#include "framework/assertion.h"
#include "premium_svr.pb.h"
#include "ui/ZResource.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;

struct Image {
    ZResource::Name name;
    int width;
};

Image NameImage() {
    switch (core::lang::GetLanguageID()) {
        case core::lang::kLanguageSimplifiedChinese:
            return {ZResource::img_viptabcn_45x16_normal, 45};
        case core::lang::kLanguageTraditionalChinese:
            return {ZResource::img_viptabhk_45x16_normal, 45};
        case core::lang::kLanguageJapanese:
            return {ZResource::img_viptabjp_71x16_normal, 71};
        default:
            return {ZResource::img_viptaben_76x16_normal, 76};
    }
}

QString GradeImageName(ZRVipGrade grade) {
    switch (grade) {
        case ZRVipGradeNone:
            return QString();
        case ZRVipGrade1:
            return ZResource::img_viptab1_26x16_normal;
        case ZRVipGrade2:
            return ZResource::img_viptab2_26x16_normal;
        case ZRVipGrade3:
            return ZResource::img_viptab3_26x16_normal;
    }
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__,
                                  "Unexpected Vip Grade");
    LogError("Unexpected Vip Grade, Grade = {}", int(grade));
    return QString();
}

}  // namespace

CZRVipTagWidget::CZRVipTagWidget(EnPremiumAccess access, ZRVipTagType tagType, QString pageId, QWidget* parent)
    : CZRVipBaseWidget(access, std::move(pageId), parent), m_pLabel(new QLabel(this)), m_enTagType(tagType) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_pLabel->setScaledContents(true);
    layout->addWidget(m_pLabel);
    CZRVipTagWidget::RefreshUI();
}

CZRVipTagWidget::~CZRVipTagWidget() = default;

bool CZRVipTagWidget::IsVipTagEnabled(EnPremiumAccess access) {
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(access);
    if (record.nActivationSource != web_premium_access::VipRule) {
        LogInfo("Vip Tag Disabled, Activation Source Not Vip, Premium Access = {}, Activation Source = {}", int(access),
                record.nActivationSource);
        return false;
    }
    if (record.nActivationType != web_premium_access::FULL_ACTIVATION) {
        LogInfo("Vip Tag Disabled, Activation Type Not Full, Premium Access = {}", int(access));
        return false;
    }
    return true;
}

QString CZRVipTagWidget::GetTagImageName(ZRVipTagType tagType, ZRVipGrade grade) {
    if (CZRVipManager::Singleton()->IsNewVipSystem()) {
        return ZResource::img_engine_m_56x16_normal;
    }
    return tagType == ZRVipTagGrade ? GradeImageName(grade) : QString(NameImage().name);
}

QSize CZRVipTagWidget::GetTagImageSize(ZRVipTagType tagType) {
    if (CZRVipManager::Singleton()->IsNewVipSystem()) {
        return {56, 16};
    }
    return {tagType == ZRVipTagGrade ? 26 : NameImage().width, 16};
}

void CZRVipTagWidget::UpdateUIData(EnPremiumAccess /*access*/, ZRVipUIDataType /*dataType*/) {
    RefreshUI();
}

void CZRVipTagWidget::RefreshUI() {
    const QSize size = GetTagImageSize(m_enTagType);
    setFixedSize(size);
    const QString name = GetTagImageName(m_enTagType, ZRVipGrade(CZRVipManager::Singleton()->GetVipGrade()));
    // Without a name the last image stays, on purpose.
    if (!name.isEmpty()) {
        m_pLabel->setPixmap(vip_view::ScaledImage(name, size, this));
    }
}

Json::Value CZRVipTagWidget::ReportParams() const {
    Json::Value params(Json::objectValue);
    params["permission_type"] = vip_view::PermissionType(m_enAccess);
    params["engine_status"] = CZRVipManager::Singleton()->GetVipEngineStatus();
    return params;
}

void CZRVipTagWidget::ReportExposeStart() {
    if (m_enAccess == 0) {
        return;
    }
    m_exposeTimer = core::report::ReportTimerStart("ExposeMemberIcon");
}

void CZRVipTagWidget::ReportExposeEnd() {
    if (m_enAccess == 0 || !m_exposeTimer) {
        return;
    }
    core::report::ReportTimerEnd(*m_exposeTimer, kReportCodeFunction, ReportParams(), 0, 0);
}

void CZRVipTagWidget::ReportClick() {
    if (m_enAccess == 0) {
        return;
    }
    core::report::Report("ClickMemberIcon", kReportCodeFunction, ReportParams(), 0);
}

// The event stays accepted, so that no button presses what is behind the tag.
void CZRVipTagWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    ReportClick();
    CZRVipManager::Singleton()->OpenVipWebPage(vip_view::LinkUrl(kLinkMembershipCentre));
}
