#pragma once

#include <QObject>
#include <QString>

/// The ids that tie the reports of an ad together.
class CZRAdTools : public QObject {
    Q_OBJECT

public:
    /// Of a request to the ad server: device, server seconds and chance.
    static QString GenerateAdRequestId();

    /// Of an exposure or an action: device, server seconds and ad. Two of one ad within a second are the same.
    static QString GenerateAdReportId(QString const& adId);
};
