#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <string>

#include "Ad/Model/ZRAdModel.h"
#include "core/network/http.h"

/// The HTTP client of the ad server: requests ads and reports exposures, without retries. Main thread.
/// Its signals are for queued connections.
class CZRAdApiClient : public QObject {
    Q_OBJECT

public:
    explicit CZRAdApiClient(QObject* parent);
    ~CZRAdApiClient() override;

    /// Asks for ads; an answer that is still out is superseded and never delivered. Where no exchange can be
    /// started no signal follows.
    void RequestAd(ZRAdApiType apiType, ZRAdType adType, int adPosition, QList<QString> const& adIdList);

    /// Reports an exposure of `exposeDuration` milliseconds. Any number of these requests may run at the same time.
    void ExposeAd(ZRAdType adType, int adPosition, QList<QString> const& adIdList, QString const& exposeId,
                  long long exposeDuration, QList<QString> const& pushIdList);

    /// Returns the id of the latest request for ads; empty before the first.
    QString GetAdRequestId() { return m_adRequestId; }

Q_SIGNALS:
    /// `adData` belongs to the receiver. `time` is the exchange's length in milliseconds.
    void RequestAdSucceeded(CZRAdModelList* adData, qlonglong time);
    void RequestAdFailed(QString resultCode, QString errorContent, qlonglong time);
    void ExposeAdSuccess(QList<QString> adIdList);
    void ExposeAdFailed(QString resultCode, QString errorContent, QList<QString> adIdList);

protected Q_SLOTS:
    void OnRequestAdCallback(qulonglong taskId, HttpRspInfo const& stRspInfo, std::string const& path, ZRAdType adType,
                             int adPosition, QString const& requestId, qulonglong requestStartTimestamp);
    void OnExposeAdCallback(qulonglong taskId, HttpRspInfo const& stRspInfo, std::string const& path, ZRAdType adType,
                            int adPosition, QString const& exposeId, QList<QString> const& adIdList,
                            QString const& adIdListStr);

private:
    void TakeAdAnswer(HttpRspInfo const& stRspInfo, Json::Value const& value, std::string const& path, ZRAdType adType,
                      int adPosition, QString const& requestId, qlonglong time);

    quint64 m_requestTaskId = 0;
    QString m_adRequestId;
};
