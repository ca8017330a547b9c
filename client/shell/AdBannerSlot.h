#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class CAds;

/// A page's place for the banner of an ad position; without a banner it takes no room. Asks for one when its page is
/// first shown, and again when other ads may be due. An ad is for one user, and goes when he logs out.
class CAdBannerSlot : public QWidget {
    Q_OBJECT

public:
    /// In the banners' proportions, and a page's width in the window's first size. Where the page is narrower, the
    /// right end is cut.
    static constexpr QSize kBannerSize{662, 110};

    /// Shown and hidden with `page`, its parent.
    CAdBannerSlot(int position, const CAds& ads, QWidget* page);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnAdsChanged();
    void Ask();
    void Take(QWidget* banner);

    const int m_nPosition;
    QTimer m_later;
    QPointer<QWidget> m_pBanner;
    qint64 m_nAskedMs = 0;  // on the server's clock
    bool m_bPageSeen = false;
};
