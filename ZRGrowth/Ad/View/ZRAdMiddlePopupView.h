#pragma once

#include <QString>
#include <QWidget>

class CZRAdImageView;

/// A picture in the centre of its parent, above a mask that covers the parent, with a close button below.
/// Main thread.
class CZRAdMiddlePopupView : public QWidget {
    Q_OBJECT

public:
    /// The second argument has no effect.
    CZRAdMiddlePopupView(QWidget* parent, bool);
    ~CZRAdMiddlePopupView() override;

    void SetImageUrl(const QString& url);
    void SetSchema(const QString& schema);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void ClickAd(bool jumpResult);
    void Closed();
    void LoadImageSucceeded(QString imageUrl, qlonglong time, int count);
    void LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, int count);

public Q_SLOTS:
    void OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count);
    void OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count);
    void OnAdClicked(bool jumpResult);
    void OnCloseButtonClicked();

private:
    void InitUI();

    CZRAdImageView* m_pImageView = nullptr;
};
