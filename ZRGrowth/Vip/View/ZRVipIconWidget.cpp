#include "Vip/View/ZRVipIconWidget.h"

#include <QHBoxLayout>
#include <QLabel>

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipViewTools.h"
#include "premium_svr.pb.h"
#include "ui/ZResource.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;

}  // namespace

CZRVipIconWidget::CZRVipIconWidget(EnPremiumAccess access, QWidget* parent)
    : CZRVipBaseWidget(access, QString(), parent), m_pLabel(new QLabel(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_pLabel->setScaledContents(true);
    layout->addWidget(m_pLabel);
    CZRVipIconWidget::RefreshUI();
}

CZRVipIconWidget::~CZRVipIconWidget() = default;

bool CZRVipIconWidget::IsVipIconEnabled(EnPremiumAccess access) {
    if (CZRVipManager::Singleton()->IsNewVipSystem()) {
        LogInfo("Vip Icon Disabled, New Vip System, Premium Access = {}", int(access));
        return false;
    }
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(access);
    if (record.nActivationSource != web_premium_access::VipRule) {
        LogInfo("Vip Icon Disabled, Activation Source Not Vip, Premium Access = {}, Activation Source = {}",
                int(access), record.nActivationSource);
        return false;
    }
    if (record.nActivationType == 0) {
        LogInfo("Vip Icon Disabled, Unknown Activation Type, Premium Access = {}", int(access));
        return false;
    }
    return true;
}

QString CZRVipIconWidget::GetIconImageName(bool icon) {
    if (CZRVipManager::Singleton()->IsNewVipSystem()) {
        return QString();
    }
    return icon ? ZResource::icon_vip_16_normal : ZResource::img_vip_16_normal;
}

QSize CZRVipIconWidget::GetIconImageSize() {
    return CZRVipManager::Singleton()->IsNewVipSystem() ? QSize(0, 0) : QSize(16, 16);
}

void CZRVipIconWidget::UpdateUIData(EnPremiumAccess /*access*/, ZRVipUIDataType /*dataType*/) {
    RefreshUI();
}

void CZRVipIconWidget::ReportExposeStart() {}

void CZRVipIconWidget::ReportExposeEnd() {}

void CZRVipIconWidget::RefreshUI() {
    const QSize size = GetIconImageSize();
    setFixedSize(size);
    m_pLabel->setFixedSize(size);
    const QString name = GetIconImageName(false);
    if (name.isEmpty()) {
        m_pLabel->clear();
        return;
    }
    m_pLabel->setPixmap(vip_view::ScaledImage(name, size, this));
}
