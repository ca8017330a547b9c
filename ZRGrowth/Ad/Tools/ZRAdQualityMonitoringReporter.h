#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include "Ad/Model/ZRAdTypes.h"

/// Reports the quality of requests, exposure calls and picture loads by result code. Main thread. A report that the
/// host refuses is not retried.
class CZRAdQualityMonitoringReporter : public QObject {
    Q_OBJECT

public:
    explicit CZRAdQualityMonitoringReporter(QObject* parent);
    ~CZRAdQualityMonitoringReporter() override;

    /// `requestTime` is in milliseconds; 0 for a request that was not sent.
    void ReportAdPullDataResult(ZRAdType adType, QString const& resultCode, QString const& errorContent,
                                long long requestTime, QList<QString> const& adIds);
    void ReportAdExposureResult(ZRAdType adType, QString const& resultCode, QString const& errorContent,
                                QList<QString> const& adIds);

    /// `time` is in milliseconds; `count` is the number of the attempt, from 1.
    void ReportAdImageResourceDownloadResult(ZRAdType adType, QString const& requestUrl, QString const& resultCode,
                                             QString const& errorContent, QString const& adId, long long time,
                                             int count);
};
