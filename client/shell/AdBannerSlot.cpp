#include "AdBannerSlot.h"

#include <QEvent>
#include <algorithm>

#include "Ads.h"
#include "core/login_status_data.h"
#include "core/time_date.h"

using core::login_status_data::Login_GetUserID;

CAdBannerSlot::CAdBannerSlot(int position, const CAds& ads, QWidget* page) : QWidget(page), m_nPosition(position) {
    setObjectName(QStringLiteral("AdBannerSlot%1").arg(position));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    hide();
    page->installEventFilter(this);
    m_later.setSingleShot(true);
    connect(&m_later, &QTimer::timeout, this, &CAdBannerSlot::Ask);
    connect(&ads, &CAds::Changed, this, &CAdBannerSlot::OnAdsChanged);
}

QSize CAdBannerSlot::sizeHint() const {
    return kBannerSize;
}

QSize CAdBannerSlot::minimumSizeHint() const {
    return {0, kBannerSize.height()};
}

bool CAdBannerSlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Show && !m_bPageSeen) {
        m_bPageSeen = true;
        Ask();
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
    CAds::AskBanner(m_nPosition, kBannerSize, [slot = QPointer<CAdBannerSlot>(this), user](QWidget* banner) {
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
}
