#include "AdBannerSlot.h"

#include <QEvent>
#include <QLayout>
#include <algorithm>

#include "Ads.h"
#include "core/login_status_data.h"
#include "core/time_date.h"

using core::login_status_data::Login_GetUserID;

namespace {

constexpr int kSettledMs = 500;  // after the last change of the page's width

}  // namespace

CAdBannerSlot::CAdBannerSlot(int position, const CAds& ads, QWidget* page) : QWidget(page), m_nPosition(position) {
    setObjectName(QStringLiteral("AdBannerSlot%1").arg(position));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    hide();
    page->installEventFilter(this);
    m_later.setSingleShot(true);
    connect(&m_later, &QTimer::timeout, this, &CAdBannerSlot::Ask);
    connect(&ads, &CAds::Changed, this, &CAdBannerSlot::OnAdsChanged);
}

// The slot is not laid out while it is hidden, but its page is.
QSize CAdBannerSlot::WantedSize() const {
    const QWidget* page = parentWidget();
    const int width = page->layout() ? page->layout()->contentsRect().width() : page->contentsRect().width();
    const int height = width * kPictureSize.height() / kPictureSize.width();
    return {std::max(width, 1), qBound(kPictureSize.height(), height, kMaxHeight)};
}

QSize CAdBannerSlot::sizeHint() const {
    return m_pBanner ? m_pBanner->size() : kPictureSize;
}

QSize CAdBannerSlot::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

bool CAdBannerSlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Show && !m_bPageSeen) {
        m_bPageSeen = true;
        m_later.start(0);  // the page gets its size first
    } else if (watched == parent() && event->type() == QEvent::Resize && m_pBanner && WantedSize() != m_asked) {
        m_later.start(kSettledMs);
    }
    return QWidget::eventFilter(watched, event);
}

void CAdBannerSlot::OnAdsChanged() {
    if (Login_GetUserID() == 0) {
        Take(nullptr);
    } else if (m_bPageSeen) {
        Ask();
    }
}

void CAdBannerSlot::Ask() {
    const uint64_t user = Login_GetUserID();
    if (user == 0) {
        return;
    }
    const qint64 now = core::time_date::GetSvrTimeMillis();
    const qint64 rest = m_nAskedMs + CAds::kPauseMs - now;
    if (rest > 0) {
        m_later.start(int(std::min(rest, CAds::kPauseMs)));  // limited, because the clock can be set back meanwhile
        return;
    }
    m_nAskedMs = now;
    m_asked = WantedSize();
    CAds::AskBanner(m_nPosition, m_asked, [slot = QPointer<CAdBannerSlot>(this), user](QWidget* banner) {
        if (slot && Login_GetUserID() == user) {
            slot->Take(banner);
        } else {
            delete banner;
        }
    });
}

void CAdBannerSlot::Take(QWidget* banner) {
    if (m_pBanner) {
        // Runs later, because the end deletes a banner that the module can be about to pass on.
        m_pBanner->hide();
        m_pBanner->deleteLater();
    }
    m_pBanner = banner;
    if (banner) {
        banner->setParent(this);
        banner->move(0, 0);
        banner->show();
    }
    setVisible(banner != nullptr);
    updateGeometry();
}
