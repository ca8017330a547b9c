#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class CAds;

/// The place for the banner of an ad position. It is hidden without a banner. It requests one when its page is first
/// shown and again when the ads can have changed. A logout removes the banner, because ads belong to a user.
class CAdBannerSlot : public QWidget {
    Q_OBJECT

public:
    /// Size of a banner: the proportions of the pictures at the width of a page in the initial window. A narrower page
    /// clips it on the right.
    static constexpr QSize kBannerSize{662, 110};

    /// `page` becomes the parent.
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
    qint64 m_nAskedMs = 0;  // server time
    bool m_bPageSeen = false;
};
