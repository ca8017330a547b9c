#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class CAds;

/// The place for the banner of an ad position, as wide as its page. It is hidden without a banner. It requests one when
/// its page is first shown, and again when the ads can have changed or the page has another width: a banner keeps its
/// size. A logout removes the banner, because ads belong to a user.
class CAdBannerSlot : public QWidget {
    Q_OBJECT

public:
    /// Proportions of the pictures.
    static constexpr QSize kPictureSize{662, 110};
    static constexpr int kMaxHeight = 150;

    /// `page` becomes the parent.
    CAdBannerSlot(int position, const CAds& ads, QWidget* page);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSize WantedSize() const;
    void OnAdsChanged();
    void Ask();
    void Take(QWidget* banner);

    const int m_nPosition;
    QTimer m_later;
    QPointer<QWidget> m_pBanner;
    QSize m_asked;          // for the banner, or the last request
    qint64 m_nAskedMs = 0;  // server time
    bool m_bPageSeen = false;
};
