#include "AdServerTest.h"

#include <QNetworkRequest>

#include "support/RealTime.h"

std::unique_ptr<QNetworkReply> AdServerTest::Start(const char* method, const QString& path, const std::string& body,
                                                   const Headers& headers) {
    QNetworkRequest request(QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(server.HttpPort()).arg(path)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    for (const auto& [name, value] : headers) {
        request.setRawHeader(name, value);
    }
    return std::unique_ptr<QNetworkReply>(
        m_network.sendCustomRequest(request, method, QByteArray::fromStdString(body)));
}

WebReply AdServerTest::Finish(QNetworkReply& reply) {
    EXPECT_TRUE(WaitInRealTime([&reply] { return reply.isFinished(); }));
    WebReply web;
    web.error = reply.error();
    web.status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    web.type = reply.rawHeader("Content-Type");
    web.location = reply.rawHeader("Location");
    web.announced = reply.hasRawHeader("Content-Length") ? reply.rawHeader("Content-Length").toLongLong() : -1;
    web.body = reply.readAll().toStdString();
    return web;
}

WebReply AdServerTest::Web(const char* method, const QString& path, const std::string& body, const Headers& headers) {
    return Finish(*Start(method, path, body, headers));
}

std::vector<std::string> AdServerTest::Found(const QByteArray& session) {
    const Headers headers = session.isNull() ? Headers{} : Headers{{"x-orvi-client-sessionid", session}};
    const Json::Value answer = FromJson(Web("POST", QStringLiteral("/ad/search"), kSearch, headers).body);
    std::vector<std::string> ids;
    for (const Json::Value& ad : answer["data"]["ad"]) {
        ids.push_back(ad["ad_id"].asString());
    }
    return ids;
}

void AdServerTest::SetBanners(const std::string& campaigns) {
    EXPECT_EQ(
        Http("PUT", "/v1/ads", R"([{"adType":3,"adPosition":7,"enableClose":true,"campaigns":[)" + campaigns + "]}]")
            .status,
        200);
}

std::string AdServerTest::Report(const std::string& id) {
    return R"({"events":[{"id":")" + id +
           R"(","name":"N","code":1,"params":{},"broker":0,"user":1,"device":"d","atMs":5}]})";
}
