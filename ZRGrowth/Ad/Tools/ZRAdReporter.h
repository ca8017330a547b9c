#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <memory>
#include <string>

#include "Ad/Model/ZRAdTypes.h"

/// Reports requests, exposures and clicks of one ad position, and keeps its open exposures. Main thread. A report that
/// the host refuses is not retried.
class CZRAdReporter : public QObject {
    Q_OBJECT

public:
    explicit CZRAdReporter(QObject* parent);
    ~CZRAdReporter() override;

    void ReportSendAdRequest(QString const& requestId, int adPosition, QList<QString> const& adIds);
    void ReportAdDisplayFilter(QString const& requestId, QList<QString> const& adIds, QList<QString> const& filters);

    /// Starts an exposure, which replaces an open one of the same ad.
    void ReportExposeAdStart(QString const& requestId, QString const& adId);

    /// Reports the exposure with its duration and removes it.
    void ReportExposeAdEnd(QString const& requestId, QString const& adId);

    /// A click without an open exposure is not reported.
    void ReportClickAd(QString const& requestId, ZRAdActionType actionType, QString const& adId, bool jumpResult);

    /// Returns the id of the ad's open exposure; empty if there is none.
    QString GetExposeId(QString const& adId);

    /// Milliseconds since the start of the ad's open exposure; 0 if there is none.
    long long GetAdExposeDuration(QString const& adId);

private:
    QMap<QString, std::shared_ptr<std::string>> m_exposeAdEvent;
    QMap<QString, QString> m_exposeId;
    QMap<QString, qint64> m_exposeStartTime;
};
