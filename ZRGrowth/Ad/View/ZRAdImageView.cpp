#include "Ad/View/ZRAdImageView.h"

#include <QMouseEvent>

#include "GrowthBizLogUtil.h"
#include "core/time_date.h"
#include "core/urlhandler.h"
#include "framework/defensive.h"
#include "webview/ZRWebWindowInfo.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr uint32_t kMostNotices = 3;
constexpr auto kBusiness = core::urlhandler::kBusinessDefault;

}  // namespace

CZRAdImageView::CZRAdImageView(QWidget* parent, const QSize& size)
    : QWidget(parent), m_pImageWidget(new ZRWebImageWidget(this)) {
    setFixedSize(size);
    m_pImageWidget->setObjectName(QStringLiteral("CZRAdImageViewImage"));
    m_pImageWidget->setFixedSize(size);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pImageWidget, &ZRWebImageWidget::ImageLoadStatusSignal, this,
                              &CZRAdImageView::OnImageLoadStatus);
}

CZRAdImageView::~CZRAdImageView() = default;

void CZRAdImageView::SetRoundedCorner(double radius) {
    if (m_pImageWidget) {
        m_pImageWidget->SetRoundedCorner(kCornersAll, radius, radius);
    }
}

// The load status stays, so that the view can be clicked while another picture is loading.
void CZRAdImageView::SetImageUrl(const QString& url) {
    LogInfo("Set image url, imageUrl = {}", url.toStdString());
    m_loadStart = core::time_date::GetSvrTimeMillis();
    m_loadCount = 0;
    // The picture may be loaded inside the call, and a receiver of the signal may delete this view.
    const QPointer<CZRAdImageView> alive(this);
    if (m_pImageWidget) {
        m_pImageWidget->SetUrl(url, QString());
    }
    if (alive) {
        m_imageUrl = url;
    }
}

void CZRAdImageView::SetSchema(const QString& schema) {
    LogInfo("Set schema, schema = {}", schema.toStdString());
    m_schema = schema;
}

// Every notification counts, also one of progress. The third one ends the attempts.
void CZRAdImageView::OnImageLoadStatus(const QString& imageUrl, ZRImageLoadStatus status) {
    ++m_loadCount;
    if (status == kImageLoadSucceeded) {
        m_loadStatus = kImageLoadSucceeded;
        Q_EMIT ImageLoadSucceeded(imageUrl, core::time_date::GetSvrTimeMillis() - m_loadStart, int(m_loadCount));
    } else if (status == kImageLoadFailed) {
        LogInfo("Load failed, reset image url, imageUrl = {}, loadCount = {}", imageUrl.toStdString(), m_loadCount);
        if (m_loadCount < kMostNotices) {
            if (m_pImageWidget) {
                m_pImageWidget->SetUrl(imageUrl, QString());
            }
        } else {
            Q_EMIT ImageLoadFailed(imageUrl, QString(), core::time_date::GetSvrTimeMillis() - m_loadStart,
                                   int(m_loadCount));
        }
    }
}

// The host may open another page and delete the page of this view.
void CZRAdImageView::OpenSchema() {
    const QPointer<CZRAdImageView> alive(this);
    const QString schema = m_schema;
    const QVariant window = QVariant::fromValue(core::webview::ZRWebWindowInfo());
    const bool jumped =
        core::urlhandler::DispatchUrl(schema, kBusiness, nullptr, window, core::urlhandler::kFallbackWeb);
    LogInfo("Open schema {}, schema = {}", jumped ? "success" : "failed", schema.toStdString());
    if (alive) {
        Q_EMIT AdClicked(jumped);
    }
}

// A slot may delete this view; the event is passed on only if the view still exists.
void CZRAdImageView::mousePressEvent(QMouseEvent* event) {
    const QPointer<CZRAdImageView> alive(this);
    if (m_loadStatus != kImageLoadSucceeded) {
        LogInfo("Click ad image, load status is not success");
    } else if (event->button() == Qt::LeftButton) {
        if (m_schema.isEmpty()) {
            LogInfo("Open schema failed, schema is empty");
        } else {
            OpenSchema();
        }
    }
    if (alive) {
        QWidget::mousePressEvent(event);
    }
}
