#include "Ad/View/ZRAdBottomPopupView.h"

#include <algorithm>

#include "GrowthBizLogUtil.h"
#include "framework/defensive.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "ui/ZIconButton.h"
#include "ui/ZResource.h"

namespace {

constexpr double kRadius = 4.0;
constexpr QSize kCloseSize(24, 24);
constexpr int kCloseMargin = 4;
constexpr QPoint kClosePlace(324, 12);
constexpr int kLeftCollapsed = 84;
constexpr int kLeftExpanded = 160;
constexpr int kAboveLowerEdge = 48;

}  // namespace

CZRAdBottomPopupView::CZRAdBottomPopupView(QWidget* parent, bool enableClose, const QSize& size, const QString& adId,
                                           const QString& pushId)
    : CZRAdImageView(parent, size), m_adId(adId), m_pushId(pushId) {
    SetRoundedCorner(kRadius);
    if (enableClose) {
        AddCloseButton();
    }
    FrameWork::ConnectChecked(kGrowthModuleTag, this, &CZRAdImageView::AdClicked, this,
                              &CZRAdBottomPopupView::OnAdClicked);
    FrameWork::ConnectChecked(kGrowthModuleTag, this, &CZRAdImageView::ImageLoadSucceeded, this,
                              &CZRAdBottomPopupView::OnImageLoadSucceeded);
    FrameWork::ConnectChecked(kGrowthModuleTag, this, &CZRAdImageView::ImageLoadFailed, this,
                              &CZRAdBottomPopupView::OnImageLoadFailed);
    UpdateCoordinates();
}

CZRAdBottomPopupView::~CZRAdBottomPopupView() = default;

void CZRAdBottomPopupView::AddCloseButton() {
    auto* button = new ZIconButton(this);
    button->setObjectName(QStringLiteral("CZRAdBottomPopupViewCloseButton"));
    button->setIconButtonSize(kCloseSize);
    button->setIconMargins(kCloseMargin);
    button->setSvgIconName(ZResource::icon_close_16);
    button->setIconColorStyle(ZIconColorStyle::onPicture);
    button->setHoverBackground(false);
    button->move(kClosePlace);
    FrameWork::ConnectChecked(kGrowthModuleTag, button, &ZIconButton::clicked, this,
                              &CZRAdBottomPopupView::OnCloseButtonClicked);
}

void CZRAdBottomPopupView::OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count) {
    Q_EMIT LoadImageSucceeded(imageUrl, time, count, m_adId, m_pushId);
}

void CZRAdBottomPopupView::OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count) {
    Q_EMIT LoadImageFailed(imageUrl, resultContent, time, count, m_adId);
}

void CZRAdBottomPopupView::OnAdClicked(bool jumpResult) {
    Q_EMIT ClickAd(jumpResult, m_adId);
}

void CZRAdBottomPopupView::OnCloseButtonClicked() {
    Q_EMIT CloseButtonClicked(m_adId);
}

void CZRAdBottomPopupView::UpdateCoordinates() {
    const auto mainFrame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    const int x = mainFrame && mainFrame->IsNavigationCollapsed() ? kLeftCollapsed : kLeftExpanded;
    if (!parentWidget()) {
        return;
    }
    move(x, std::max(0, parentWidget()->height() - height() - kAboveLowerEdge));
}
