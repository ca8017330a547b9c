#include "ServerHands.h"

#include <gtest/gtest.h>

#include <QNetworkReply>
#include <QNetworkRequest>
#include <memory>

#include "framework/JsonText.h"
#include "support/RealTime.h"

CServerHands::CServerHands(quint16 controlPort, QByteArray token)
    : m_address(QStringLiteral("http://127.0.0.1:%1").arg(controlPort)), m_token(std::move(token)) {}

Json::Value CServerHands::Ask(const char* verb, const std::string& path, const std::string& json) {
    QUrl url = m_address;
    url.setPath(QString::fromStdString(path));
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", "Bearer " + m_token);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const std::unique_ptr<QNetworkReply> reply(
        m_network.sendCustomRequest(request, verb, QByteArray::fromStdString(json)));
    EXPECT_TRUE(WaitInRealTime([&reply] { return reply->isFinished(); })) << verb << " " << path;
    const std::string body = reply->readAll().toStdString();
    EXPECT_EQ(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200)
        << verb << " " << path << ": " << body;
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

Json::Value CServerHands::Get(const std::string& path) {
    return Ask("GET", path, "");
}

Json::Value CServerHands::Put(const std::string& path, const std::string& json) {
    return Ask("PUT", path, json);
}

Json::Value CServerHands::Post(const std::string& path, const std::string& json) {
    return Ask("POST", path, json);
}

std::vector<Json::Value> CServerHands::Requests(unsigned int command) {
    std::vector<Json::Value> requests;
    const Json::Value received = Get("/v1/received");
    for (const Json::Value& frame : received["received"]) {
        if (frame["kind"] == "REQUEST" && frame["command"].asUInt() == command) {
            requests.push_back(frame);
        }
    }
    return requests;
}

std::vector<Json::Value> CServerHands::HttpTo(const std::string& path) {
    std::vector<Json::Value> requests;
    const Json::Value all = Get("/v1/http");
    for (const Json::Value& request : all["http"]) {
        if (request["path"] == path) {
            requests.push_back(request);
        }
    }
    return requests;
}

std::map<std::string, int> CServerHands::ReportCounts() {
    std::map<std::string, int> counts;
    const Json::Value all = Get("/v1/reports");
    for (const Json::Value& report : all["reports"]) {
        ++counts[report["name"].asString()];
    }
    return counts;
}

std::vector<Json::Value> CServerHands::ReportsOf(const std::string& name) {
    std::vector<Json::Value> found;
    const Json::Value all = Get("/v1/reports");
    for (const Json::Value& report : all["reports"]) {
        if (report["name"] == name) {
            found.push_back(report["params"]);
        }
    }
    return found;
}
