#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include "ui/ZRWebImageWidget.h"

class QMouseEvent;

/// The clickable picture of a popup. It makes up to three attempts to load the picture. A click on a loaded picture
/// opens the target of the ad. Main thread.
class CZRAdImageView : public QWidget {
    Q_OBJECT

public:
    CZRAdImageView(QWidget* parent, const QSize& size);
    ~CZRAdImageView() override;

    virtual void SetImageUrl(const QString& url);

    /// Sets the target of a click; empty for none.
    virtual void SetSchema(const QString& schema);

    /// In pixels.
    void SetRoundedCorner(double radius);

public Q_SLOTS:
    virtual void OnImageLoadStatus(const QString& imageUrl, ZRImageLoadStatus status);

Q_SIGNALS:
    void AdClicked(bool jumpResult);
    /// `time` is in milliseconds since SetImageUrl; `count` is the number of notifications since then.
    void ImageLoadSucceeded(QString imageUrl, qlonglong time, int count);
    void ImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void OpenSchema();

    QPointer<ZRWebImageWidget> m_pImageWidget;
    ZRImageLoadStatus m_loadStatus{};  // set at the first success, and never back
    QString m_imageUrl;
    QString m_schema;
    qint64 m_loadStart = 0;  // server milliseconds
    uint32_t m_loadCount = 0;
};
