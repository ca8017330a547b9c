#pragma once

#include "Ad/View/ZRAdImageView.h"

constexpr QSize kAdBottomPopupSize(360, 120);

/// The card at the lower left of the main window: an ad's picture, and a close button if the ad allows it. It does not
/// follow the window by itself. Main thread.
class CZRAdBottomPopupView : public CZRAdImageView {
    Q_OBJECT

public:
    CZRAdBottomPopupView(QWidget* parent, bool enableClose, const QSize& size, const QString& adId,
                         const QString& pushId);
    ~CZRAdBottomPopupView() override;

Q_SIGNALS:
    void LoadImageSucceeded(QString imageUrl, qlonglong time, int count, QString adId, QString pushId);
    void LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, int count, QString adId);
    void ClickAd(bool jumpResult, QString adId);
    void CloseButtonClicked(QString adId);

public Q_SLOTS:
    void OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count);
    void OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count);
    void OnAdClicked(bool jumpResult);
    void OnCloseButtonClicked();

    /// Moves the card to its place for the current size and navigation of the window.
    void UpdateCoordinates();

private:
    void AddCloseButton();

    const QString m_adId;
    const QString m_pushId;
};
