#include "ControlApiDriver.h"

#include <gtest/gtest.h>

#include <QNetworkReply>
#include <QNetworkRequest>
#include <memory>

#include "framework/JsonText.h"
#include "support/RealTime.h"

CControlApiDriver::CControlApiDriver(quint16 controlPort, QByteArray token)
    : m_address(QStringLiteral("http://127.0.0.1:%1").arg(controlPort)), m_token(std::move(token)) {}

Json::Value CControlApiDriver::Ask(const char* method, const std::string& path, const std::string& json) {
    QUrl url = m_address;
    url.setPath(QString::fromStdString(path));
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", "Bearer " + m_token);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const std::unique_ptr<QNetworkReply> reply(
        m_network.sendCustomRequest(request, method, QByteArray::fromStdString(json)));
    EXPECT_TRUE(WaitInRealTime([&reply] { return reply->isFinished(); })) << method << " " << path;
    const std::string body = reply->readAll().toStdString();
    EXPECT_EQ(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200)
        << method << " " << path << ": " << body;
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

Json::Value CControlApiDriver::Get(const std::string& path) {
    return Ask("GET", path, "");
}

Json::Value CControlApiDriver::Put(const std::string& path, const std::string& json) {
    return Ask("PUT", path, json);
}

Json::Value CControlApiDriver::Post(const std::string& path, const std::string& json) {
    return Ask("POST", path, json);
}

std::vector<Json::Value> CControlApiDriver::Requests(unsigned int command) {
    std::vector<Json::Value> requests;
    const Json::Value received = Get("/v1/received");
    for (const Json::Value& frame : received["received"]) {
        if (frame["kind"] == "REQUEST" && frame["command"].asUInt() == command) {
            requests.push_back(frame);
        }
    }
    return requests;
}

std::vector<Json::Value> CControlApiDriver::HttpTo(const std::string& path) {
    std::vector<Json::Value> requests;
    const Json::Value all = Get("/v1/http");
    for (const Json::Value& request : all["http"]) {
        if (request["path"] == path) {
            requests.push_back(request);
        }
    }
    return requests;
}

std::map<std::string, int> CControlApiDriver::ReportCounts() {
    std::map<std::string, int> counts;
    const Json::Value all = Get("/v1/reports");
    for (const Json::Value& report : all["reports"]) {
        ++counts[report["name"].asString()];
    }
    return counts;
}

std::vector<Json::Value> CControlApiDriver::ReportsOf(const std::string& name) {
    std::vector<Json::Value> found;
    const Json::Value all = Get("/v1/reports");
    for (const Json::Value& report : all["reports"]) {
        if (report["name"] == name) {
            found.push_back(report["params"]);
        }
    }
    return found;
}
