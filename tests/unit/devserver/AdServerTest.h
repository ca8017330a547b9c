#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <functional>

#include "DevServerTest.h"

struct WebReply {
    QNetworkReply::NetworkError error = QNetworkReply::UnknownNetworkError;
    int status = 0;
    QByteArray type;
    QByteArray location;
    qint64 announced = -1;  // the length of the body
    std::string body;
};

/// The server with its ads, on a clock that stands at no special time, and ways to ask for them.
class AdServerTest : public DevServerTest {
protected:
    /// Sent, and not waited for. Aborted when it goes.
    std::unique_ptr<QNetworkReply> Start(const char* method, const QString& path, const std::string& body = {},
                                         const Headers& headers = {});
    /// What came, once all of it has.
    static WebReply Finish(QNetworkReply& reply);

    WebReply Web(const char* method, const QString& path, const std::string& body = {}, const Headers& headers = {});

    /// The ids that a search at banner position 7 finds for the session of this number.
    std::vector<std::string> Found(const QByteArray& session = {});

    /// Replaces the ads of the server by banners at position 7.
    void SetBanners(const std::string& campaigns);

    static constexpr const char* kSearch = R"({"ad_type":3,"ad_position":7,"request_id":"r"})";
    static constexpr const char* kExposure =
        R"({"ad_type":3,"ad_position":7,"ad_id":["a"],"expose_id":"e","expose_duration":5})";

    static std::string Report(const std::string& id);

private:
    QNetworkAccessManager m_network;
};
