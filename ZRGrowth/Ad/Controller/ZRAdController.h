#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include "Ad/Model/ZRAdModel.h"
#include "modules/ZRTabFrameKey.h"

class CZRAdApiClient;
class CZRAdQualityMonitoringReporter;
class CZRAdReporter;

/// Controls one ad position: requests its ads, limits the rate, removes ads outside their time window, owns the
/// current list, and reports. A subclass defines appearance and display conditions.
/// Main thread. The order of the virtual operations is fixed.
class CZRAdController : public QObject {
    Q_OBJECT

public:
    explicit CZRAdController(QObject* parent);
    ~CZRAdController() override;

    int GetAdPosition() const { return m_adPosition; }

    /// Requests a search, or a check of these ads. Within ten seconds of the last sent request it is refused and
    /// reported.
    virtual void RequestAd(ZRAdApiType apiType, int adPosition, QList<QString> const& adIdList);

    /// Clears the current list and the displayed ad.
    virtual void ClearAd();

    virtual void ShowAd(CZRAdModelList* list);

    /// Reports the end of the exposure and clears the ad. Does nothing without an ad id.
    virtual void CloseAd(ZRAdCloseType closeType, QString const& adId, QString const& pushId);

    /// Removes these ads, which the server took offline.
    virtual void OfflineAd(QList<QString>& adIds);

    virtual CZRAdModelList* GetAdModelList();  // may be null; stays the controller's

    /// Takes ownership of the list and destroys the current one.
    virtual void SetAdModelList(CZRAdModelList* list);

    static ZRAdShowAreaType ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey key);

protected:
    /// Takes ownership of the list. `time` is the duration of the exchange in milliseconds.
    virtual void OnRequestAdSucceeded(CZRAdModelList* list, long long time);
    virtual void OnRequestAdFailed(QString const& resultCode, QString const& errorContent, long long time);
    virtual void OnExposeAdSuccess(QList<QString> const& adIds);
    virtual void OnExposeAdFailed(QString const& resultCode, QString const& errorContent, QList<QString> const& adIds);

    /// Returns whether the list is for this position and has current ads. It removes ads outside their time window.
    virtual bool CheckAdIsValid(CZRAdModelList* list);

    /// Returns whether the display conditions are met now.
    virtual bool CheckCanShowAd(CZRAdModelList* list);

    virtual void ReportSendAdRequest(int adPosition, QList<QString> const& adIds, unsigned long time);
    virtual void ReportExposeAdStart(QString const& adId);
    virtual void ReportExposeAdEnd(QString const& adId, QString const& pushId);
    virtual void ReportClickAd(ZRAdActionType actionType, QString const& adId, bool jumpResult);

public Q_SLOTS:
    virtual void OnImageLoadSucceeded(QString const& imageUrl, qlonglong time, int count, QString const& adId);
    virtual void OnImageLoadFailed(QString const& imageUrl, QString const& resultContent, qlonglong time, int count,
                                   QString const& adId);
    virtual void OnAdClicked(bool jumpResult, QString const& adId);
    virtual void OnCloseButtonClicked(QString const& adId);

protected:
    static QString GetFirstAdIdFromDataModel(CZRAdModelList* list);
    static QList<QString> GetAllAdIdFromDataModel(CZRAdModelList* list);

    /// Returns the store key of the last show time, by user, position and interval type.
    QString GetAdLastShowTimeStampKey(int adPosition, int showIntervalType);

    /// Returns the id of the latest request.
    QString GetAdRequestId();

    ZRAdType m_adType{};
    int m_adPosition = 0;
    CZRAdModelList* m_adModelList = nullptr;  // without a parent
    QString m_adId;                           // of the ad on screen
    QString m_pushId;                         // of the ad on screen
    CZRAdApiClient* m_adApiClient = nullptr;
    qint64 m_lastRequestTimeStamp = 0;
    CZRAdReporter* m_adReporter = nullptr;
    CZRAdQualityMonitoringReporter* m_adQualityMonitoringReporter = nullptr;

private:
    bool IsDue(CZRAdModel& ad, qint64 now) const;
};
