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
    qint64 announced = -1;  // length of the body
    std::string body;
};

/// A server with ads, and requests to its HTTP interface.
class AdServerTest : public DevServerTest {
protected:
    /// Sends a request without waiting. Destroying the reply aborts it.
    std::unique_ptr<QNetworkReply> Start(const char* method, const QString& path, const std::string& body = {},
                                         const Headers& headers = {});
    /// Waits for the reply and returns it.
    static WebReply Finish(QNetworkReply& reply);

    WebReply Web(const char* method, const QString& path, const std::string& body = {}, const Headers& headers = {});

    /// Returns the ids that a search at banner position 7 finds for the session.
    std::vector<std::string> Found(const QByteArray& session = {});

    /// Replaces the server's ads with banners at position 7.
    void SetBanners(const std::string& campaigns);

    static constexpr const char* kSearch = R"({"ad_type":3,"ad_position":7,"request_id":"r"})";
    static constexpr const char* kExposure =
        R"({"ad_type":3,"ad_position":7,"ad_id":["a"],"expose_id":"e","expose_duration":5})";

    static std::string Report(const std::string& id);

private:
    QNetworkAccessManager m_network;
};
