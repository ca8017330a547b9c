#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QMouseEvent;
class ZSlideshow;

/// Shows the ads of a banner position in turn. Ids, pictures and targets have the same order. The caller who requested
/// the banner owns it and deletes it. Main thread.
class CZRAdBannerView : public QWidget {
    Q_OBJECT

public:
    CZRAdBannerView(QWidget* parent, const QSize& size);
    ~CZRAdBannerView() override;

    /// Sets the height of a strip at the top that ignores clicks, in pixels.
    void SetTopNonClickableAreaHeight(int height) { m_topNonClickableAreaHeight = height; }

    void AddImageUrl(QString url);
    void AddSchema(QString schema);
    void AddAdId(QString adId);

Q_SIGNALS:
    /// `time` is in milliseconds since the creation of the view, for every picture.
    void LoadImageSucceeded(QString imageUrl, qlonglong time, uint count, QString adId);
    void LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, uint count, QString adId);
    void ExposeAdStart(QString adId);
    void ExposeAdEnd(QString adId);
    void ClickAd(bool jumpResult, QString adId);
    /// Emitted by the destructor.
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
