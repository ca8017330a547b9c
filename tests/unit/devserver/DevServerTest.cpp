#include "DevServerTest.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include "support/RealTime.h"

namespace {

devserver::CScenario TestScenario() {
    devserver::Errors errors;
    auto scenario = devserver::CScenario::FromText(R"({
        "schema": 1,
        "users": [
            {"id": 1, "name": "Ann", "markets": [2, 5], "aiChat": {"resultCode": 3, "resultMessage": "fine",
             "entries": [{"scene": 4, "allOpen": true, "stockDetails": [{"type": 1, "open": true, "ids": [7, 8]}]}]}},
            {"id": 2, "name": "Bob"},
            {"id": 3, "name": "Cid", "refuseLogin": "closed account"}],
        "commonConfig": {"ai_chat": {"url_string": "https://chat.example/"}}})",
                                                   errors);
    return scenario.value();
}

}  // namespace

Json::Value FromJson(const std::string& text) {
    devserver::Errors errors;
    return devserver::ParseJson(text, errors).value_or(Json::Value());
}

HttpAnswer HttpTo(quint16 port, const QVector<QPair<QByteArray, QByteArray>>& headers, const char* method,
                  const char* path, const std::string& body) {
    QNetworkAccessManager network;
    QNetworkRequest request(QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port).arg(QLatin1String(path))));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    for (const auto& [name, value] : headers) {
        request.setRawHeader(name, value);
    }
    const std::unique_ptr<QNetworkReply> reply(
        network.sendCustomRequest(request, QByteArray(method), QByteArray::fromStdString(body)));
    HttpAnswer answer;
    if (WaitInRealTime([&] { return reply->isFinished(); })) {
        answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.body = FromJson(reply->readAll().toStdString());
    }
    return answer;
}

DevServerTest::DevServerTest() : server(TestScenario(), kToken) {
    std::string error;
    EXPECT_TRUE(server.Listen({}, error)) << error;
}

std::unique_ptr<ChannelClient> DevServerTest::Connected() {
    auto client = std::make_unique<ChannelClient>(server.ChannelPort(), kToken);
    EXPECT_TRUE(client->Take(channel::Frame::CONFIG));
    return client;
}

std::unique_ptr<ChannelClient> DevServerTest::LoggedIn(uint64_t user) {
    auto client = Connected();
    const auto answer = client->Login(user);
    EXPECT_TRUE(answer && answer->accepted());
    return client;
}

HttpAnswer DevServerTest::HttpWith(const Headers& headers, const char* method, const char* path,
                                   const std::string& body) {
    return HttpTo(server.ControlPort(), headers, method, path, body);
}

HttpAnswer DevServerTest::Http(const char* method, const char* path, const std::string& body) {
    return HttpWith({{"Authorization", QByteArray("Bearer ") + kToken}}, method, path, body);
}
