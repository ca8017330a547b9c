#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QMouseEvent;
class ZSlideshow;

/// The ads of a banner's position, one after the other. Ids, pictures and targets belong together by their order.
/// Its owner is who asked for the banner; its end is its deletion. Main thread.
class CZRAdBannerView : public QWidget {
    Q_OBJECT

public:
    CZRAdBannerView(QWidget* parent, const QSize& size);
    ~CZRAdBannerView() override;

    /// A strip at the top, in pixels, where a click does nothing.
    void SetTopNonClickableAreaHeight(int height) { m_topNonClickableAreaHeight = height; }

    void AddImageUrl(QString url);
    void AddSchema(QString schema);
    void AddAdId(QString adId);

Q_SIGNALS:
    /// `time` is in milliseconds since the view was made, for every picture.
    void LoadImageSucceeded(QString imageUrl, qlonglong time, uint count, QString adId);
    void LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, uint count, QString adId);
    void ExposeAdStart(QString adId);
    void ExposeAdEnd(QString adId);
    void ClickAd(bool jumpResult, QString adId);
    /// From the destructor.
    void CloseAd(QString adId);

public Q_SLOTS:
    void OnImageLoadSucceeded(QString imageUrl, int index, uint loadCount);
    void OnImageLoadFailed(QString imageUrl, int index, uint failedCount);
    void OnCurrentIndexChanged(int newIndex, int oldIndex);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool HasAd(int index) const { return index >= 0 && index < m_adIds.size(); }
    bool IsInTopStrip(const QMouseEvent& event) const;
    void Click();

    QPointer<ZSlideshow> m_pSlideshow;
    int m_currentIndex = -1;
    QList<QString> m_adIds;
    QList<QString> m_schemas;
    int m_topNonClickableAreaHeight = 0;
    qint64 m_createTime;  // server milliseconds
};
