#include "Ad/View/ZRAdMiddlePopupView.h"

#include <QEvent>
#include <QPointer>
#include <QVBoxLayout>

#include "Ad/View/ZRAdImageView.h"
#include "GrowthBizLogUtil.h"
#include "framework/defensive.h"
#include "ui/ZIconButton.h"
#include "ui/ZResource.h"

namespace {

constexpr QSize kImageSize(360, 424);
constexpr double kImageRadius = 8.0;
constexpr int kAboveImage = 65;
constexpr int kBelowImage = 33;
constexpr QSize kCloseSize(32, 32);

}  // namespace

CZRAdMiddlePopupView::CZRAdMiddlePopupView(QWidget* parent, bool /*unused*/) : QWidget(parent) {
    if (parent) {
        parent->installEventFilter(this);
    }
    InitUI();
}

CZRAdMiddlePopupView::~CZRAdMiddlePopupView() = default;

void CZRAdMiddlePopupView::InitUI() {
    setObjectName(QStringLiteral("CZRAdMaskBg"));
    setAttribute(Qt::WA_StyledBackground);
    if (parentWidget()) {
        setFixedSize(parentWidget()->size());
    }
    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addSpacing(kAboveImage);
    m_pImageView = new CZRAdImageView(this, kImageSize);
    m_pImageView->SetRoundedCorner(kImageRadius);
    layout->addWidget(m_pImageView, 0, Qt::AlignCenter);
    layout->addSpacing(kBelowImage);
    auto* closeButton = new ZIconButton(this);
    closeButton->setObjectName(QStringLiteral("CZRAdMiddlePopupViewCloseButton"));
    closeButton->setIconButtonSize(kCloseSize);
    closeButton->setIconMargins(0);
    closeButton->setSvgIconName(ZResource::icon_close_32_normal);
    closeButton->setIconColorStyle(ZIconColorStyle::normal);
    closeButton->setHoverBackground(false);
    layout->addWidget(closeButton, 0, Qt::AlignCenter);
    layout->addStretch();
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pImageView, &CZRAdImageView::ImageLoadSucceeded, this,
                              &CZRAdMiddlePopupView::OnImageLoadSucceeded);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pImageView, &CZRAdImageView::ImageLoadFailed, this,
                              &CZRAdMiddlePopupView::OnImageLoadFailed);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pImageView, &CZRAdImageView::AdClicked, this,
                              &CZRAdMiddlePopupView::OnAdClicked);
    FrameWork::ConnectChecked(kGrowthModuleTag, closeButton, &ZIconButton::clicked, this,
                              &CZRAdMiddlePopupView::OnCloseButtonClicked);
}

void CZRAdMiddlePopupView::SetImageUrl(const QString& url) {
    // The picture may be loaded inside the call, and a receiver of the signal may delete this view.
    const QPointer<CZRAdImageView> image(m_pImageView);
    image->SetImageUrl(url);
    if (image) {
        image->show();
    }
}

void CZRAdMiddlePopupView::SetSchema(const QString& schema) {
    m_pImageView->SetSchema(schema);
}

bool CZRAdMiddlePopupView::eventFilter(QObject* watched, QEvent* event) {
    if (parentWidget() && watched == parentWidget() && event->type() == QEvent::Resize) {
        setFixedSize(parentWidget()->size());
    }
    return QObject::eventFilter(watched, event);
}

void CZRAdMiddlePopupView::OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count) {
    Q_EMIT LoadImageSucceeded(imageUrl, time, count);
}

void CZRAdMiddlePopupView::OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count) {
    Q_EMIT LoadImageFailed(imageUrl, resultContent, time, count);
}

void CZRAdMiddlePopupView::OnAdClicked(bool jumpResult) {
    Q_EMIT ClickAd(jumpResult);
}

void CZRAdMiddlePopupView::OnCloseButtonClicked() {
    Q_EMIT Closed();
}
