#pragma once

#include <QPointer>
#include <QWidget>

#include "Ad/Controller/ZRAdController.h"

class CZRAdPopupModel;
class QTimer;

/// Controls an ad that appears by itself over the main window. It checks the display conditions, creates a hidden view,
/// and shows it when its picture is loaded and the conditions are still met. A subclass creates the view.
class CZRAdPopupController : public CZRAdController {
    Q_OBJECT

public:
    explicit CZRAdPopupController(QObject* parent);
    ~CZRAdPopupController() override;

    /// Shows the waiting list if the display conditions are met. Otherwise it keeps the list, or deletes it if no ad in
    /// it can be shown any more.
    void TryShowAdPopup();

    using CZRAdController::CloseAd;
    /// Closes the displayed or loading ad. Without a view only a logout has an effect.
    void CloseAd(ZRAdCloseType closeType);

    void DeleteAdPopupCloseTimer();

    void ShowAd(CZRAdModelList* list) override;
    void OfflineAd(QList<QString>& adIds) override;

    using CZRAdController::OnImageLoadSucceeded;

public Q_SLOTS:
    void OnAdClicked(bool jumpResult, QString const& adId) override;
    void OnCloseButtonClicked(QString const& adId) override;
    void OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count, QString adId, QString pushId);
    void OnImageLoadFailed(QString const& imageUrl, QString const& resultContent, qlonglong time, int count,
                           QString const& adId) override;

protected:
    bool CheckAdIsValid(CZRAdModelList* list) override;
    bool CheckCanShowAd(CZRAdModelList* list) override;

    /// Creates the hidden view of an ad and replaces the current one. This class creates none.
    virtual void AddAdPopupView(CZRAdPopupModel* model, bool enableClose, int showDuration, const QString& adId,
                                const QString& pushId);
    /// Deletes the view and its close timer.
    virtual void DeleteAdPopupView();

    QPointer<QWidget> m_adPopupView;  // on the screen, or being loaded

private:
    bool IsCurrentTabAmong(const QList<ZRAdShowAreaType>& areas, const QString& adId);
    bool IsIntervalOver(CZRAdModelList& list, const QString& adId);
    bool IsSlotFree(const QString& adId);
    bool IsMainFrameFocused(const QString& adId);
    void StartCloseTimer(int seconds);
    void SaveLastShowTime(const QString& adId);

    QTimer* m_pCloseTimer = nullptr;
};
