#include "Ad/View/ZRAdBannerView.h"

#include <QMouseEvent>

#include "GrowthBizLogUtil.h"
#include "core/time_date.h"
#include "core/urlhandler.h"
#include "framework/defensive.h"
#include "ui/ZSlideshow.h"
#include "webview/ZRWebWindowInfo.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr auto kBusiness = core::urlhandler::kBusinessAdClick;

}  // namespace

CZRAdBannerView::CZRAdBannerView(QWidget* parent, const QSize& size)
    : QWidget(parent), m_pSlideshow(new ZSlideshow(this, ZSlideshowBase::kRatioFree)) {
    setObjectName(QStringLiteral("CZRAdBannerView"));
    setFixedSize(size);
    m_pSlideshow->setObjectName(QStringLiteral("CZRAdBannerViewSlideshow"));
    m_pSlideshow->m_bAutomatic = true;
    m_pSlideshow->setAutoSwitch(true);
    m_pSlideshow->setKeepRatio(false);
    m_pSlideshow->move(0, 0);
    m_pSlideshow->setFixedSize(size);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pSlideshow, &ZSlideshow::webImageLoadSucess, this,
                              &CZRAdBannerView::OnImageLoadSucceeded);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pSlideshow, &ZSlideshow::webImageLoadFinalFailed, this,
                              &CZRAdBannerView::OnImageLoadFailed);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pSlideshow, &ZSlideshowBase::currentChanged, this,
                              &CZRAdBannerView::OnCurrentIndexChanged);
    m_createTime = core::time_date::GetSvrTimeMillis();
}

// The end of the exposure is not reported here, but by the code that closes the ad.
CZRAdBannerView::~CZRAdBannerView() {
    if (HasAd(m_currentIndex)) {
        Q_EMIT CloseAd(m_adIds[m_currentIndex]);
    }
    // The slideshow is destroyed after this object and may still emit signals.
    if (m_pSlideshow) {
        disconnect(m_pSlideshow, &ZSlideshow::webImageLoadSucess, this, &CZRAdBannerView::OnImageLoadSucceeded);
        disconnect(m_pSlideshow, &ZSlideshow::webImageLoadFinalFailed, this, &CZRAdBannerView::OnImageLoadFailed);
        disconnect(m_pSlideshow, &ZSlideshowBase::currentChanged, this, &CZRAdBannerView::OnCurrentIndexChanged);
    }
}

void CZRAdBannerView::AddImageUrl(QString url) {
    LogInfo("Set banner image url, imageUrl = {}", url.toStdString());
    if (m_pSlideshow) {
        m_pSlideshow->addWebImageOrGif(url, QString(), ZSlideshow::kMoving);
    }
}

void CZRAdBannerView::AddSchema(QString schema) {
    m_schemas.append(schema);
}

void CZRAdBannerView::AddAdId(QString adId) {
    m_adIds.append(adId);
}

void CZRAdBannerView::OnImageLoadSucceeded(QString imageUrl, int index, uint loadCount) {
    if (HasAd(index)) {
        Q_EMIT LoadImageSucceeded(imageUrl, core::time_date::GetSvrTimeMillis() - m_createTime, loadCount,
                                  m_adIds[index]);
    }
}

void CZRAdBannerView::OnImageLoadFailed(QString imageUrl, int index, uint failedCount) {
    if (HasAd(index)) {
        Q_EMIT LoadImageFailed(imageUrl, QString(), core::time_date::GetSvrTimeMillis() - m_createTime, failedCount,
                               m_adIds[index]);
    }
}

// Every change counts, also in a hidden banner.
void CZRAdBannerView::OnCurrentIndexChanged(int newIndex, int oldIndex) {
    const QPointer<CZRAdBannerView> alive(this);
    m_currentIndex = newIndex;
    if (HasAd(oldIndex)) {
        Q_EMIT ExposeAdEnd(m_adIds[oldIndex]);
    }
    if (alive && HasAd(newIndex)) {
        Q_EMIT ExposeAdStart(m_adIds[newIndex]);
    }
}

bool CZRAdBannerView::IsInTopStrip(const QMouseEvent& event) const {
    return m_topNonClickableAreaHeight > 0 &&
           QRect(0, 0, width(), m_topNonClickableAreaHeight).contains(event.localPos().toPoint());
}

void CZRAdBannerView::Click() {
    if (!HasAd(m_currentIndex) || m_currentIndex >= m_schemas.size()) {
        return;
    }
    const QString schema = m_schemas[m_currentIndex];
    const QString adId = m_adIds[m_currentIndex];
    // The tag is that of another view. It is intended, since logs are searched for it.
    if (schema.isEmpty()) {
        LogInfo("[CZRAdImageView] Open schema failed, schema is empty, adId = {}", adId.toStdString());
        return;
    }
    // The host may open another page and delete the page of this view.
    const QPointer<CZRAdBannerView> alive(this);
    const QVariant window = QVariant::fromValue(core::webview::ZRWebWindowInfo());
    const bool jumped =
        core::urlhandler::DispatchUrl(schema, kBusiness, nullptr, window, core::urlhandler::kFallbackWeb);
    LogInfo("[CZRAdImageView] Open schema {}, schema = {}, adId = {}", jumped ? "success" : "failed",
            schema.toStdString(), adId.toStdString());
    if (alive) {
        Q_EMIT ClickAd(jumped, adId);
    }
}

void CZRAdBannerView::mousePressEvent(QMouseEvent* event) {
    const QPointer<CZRAdBannerView> alive(this);
    if (event->button() == Qt::LeftButton && !IsInTopStrip(*event)) {
        Click();
    }
    // The owner may delete the view at a click.
    if (alive) {
        QWidget::mousePressEvent(event);
    }
}
