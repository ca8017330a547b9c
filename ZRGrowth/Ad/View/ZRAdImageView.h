#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include "ui/ZRWebImageWidget.h"

class QMouseEvent;

/// The clickable picture of a popup: loads a picture with up to three attempts, and opens an ad's target when a
/// picture that has loaded is clicked. Main thread.
class CZRAdImageView : public QWidget {
    Q_OBJECT

public:
    CZRAdImageView(QWidget* parent, const QSize& size);
    ~CZRAdImageView() override;

    virtual void SetImageUrl(const QString& url);

    /// Where a click leads; empty: nowhere.
    virtual void SetSchema(const QString& schema);

    /// In pixels.
    void SetRoundedCorner(double radius);

public Q_SLOTS:
    virtual void OnImageLoadStatus(const QString& imageUrl, ZRImageLoadStatus status);

Q_SIGNALS:
    void AdClicked(bool jumpResult);
    /// `time` is in milliseconds since SetImageUrl; `count` is how many notices the picture has given since then.
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
