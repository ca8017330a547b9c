#include "Vip/View/ZRVipTitleBarEntryWidget.h"

#include <QHBoxLayout>

#include "GrowthBizLogUtil.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipViewTools.h"
#include "core/lang.h"
#include "ui/ZResource.h"
#include "ui/ZSvgWidget.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;

}  // namespace

CZRVipTitleBarEntryWidget::CZRVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged)
    : QWidget(parent), m_pSvgWidget(new ZSvgWidget(this)), m_fnChanged(fnChanged) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pSvgWidget);
    vip_view::BindStatus(GROWTH_HERE, this);
    RefreshState();
}

CZRVipTitleBarEntryWidget::~CZRVipTitleBarEntryWidget() {
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
}

void CZRVipTitleBarEntryWidget::RefreshState() {
    const bool isMember = CZRVipManager::Singleton()->IsVipMember();
    setVisible(isMember);
    if (!isMember) {
        LogInfo("Vip Title Bar Entry Hidden");
        return;
    }
    const bool isNew = CZRVipManager::Singleton()->IsNewVipSystem();
    const int legacyWidth = core::lang::IsChinese() ? 42 : 70;
    const QSize size(isNew ? 36 : legacyWidth, 16);
    setFixedSize(size);
    m_pSvgWidget->setFixedSize(size);
    m_pSvgWidget->setSvgIconName(isNew ? ZResource::icon_engine_36x16_normal : ZResource::icon_viptab_normal);
    LogInfo("Vip Title Bar Entry Refreshed, Is New Vip System = {}", isNew);
}

void CZRVipTitleBarEntryWidget::OnStateChanged(unsigned int /*messageId*/, unsigned long /*param*/,
                                               std::shared_ptr<core::CMessageBody> /*body*/) {
    RefreshState();
    // A copy, because the function may delete this.
    const CSafeFunction<void()> changed = m_fnChanged;
    if (changed) {
        changed();
    }
}
