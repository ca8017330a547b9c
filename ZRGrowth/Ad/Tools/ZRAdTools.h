#pragma once

#include <QObject>
#include <QString>

/// Ids that connect the reports of an ad.
class CZRAdTools : public QObject {
    Q_OBJECT

public:
    /// Returns an id for a request to the ad server: device, server time in seconds, random number.
    static QString GenerateAdRequestId();

    /// Returns an id for an exposure or an action: device, server time in seconds, ad. Within one second it is the
    /// same.
    static QString GenerateAdReportId(QString const& adId);
};
