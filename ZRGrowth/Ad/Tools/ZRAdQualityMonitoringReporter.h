#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include "Ad/Model/ZRAdTypes.h"

/// Reports how the machinery of ads did: pulls, exposure calls and pictures, by result code. Main thread. A report
/// that the host refuses is not tried again.
class CZRAdQualityMonitoringReporter : public QObject {
    Q_OBJECT

public:
    explicit CZRAdQualityMonitoringReporter(QObject* parent);
    ~CZRAdQualityMonitoringReporter() override;

    /// `requestTime` in milliseconds, 0 for a request that did not leave.
    void ReportAdPullDataResult(ZRAdType adType, QString const& resultCode, QString const& errorContent,
                                long long requestTime, QList<QString> const& adIds);
    void ReportAdExposureResult(ZRAdType adType, QString const& resultCode, QString const& errorContent,
                                QList<QString> const& adIds);

    /// `time` in milliseconds; `count` is the number of the attempt, from 1.
    void ReportAdImageResourceDownloadResult(ZRAdType adType, QString const& requestUrl, QString const& resultCode,
                                             QString const& errorContent, QString const& adId, long long time,
                                             int count);
};
