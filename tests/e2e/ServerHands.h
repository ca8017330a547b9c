#pragma once

#include <json/value.h>

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QUrl>
#include <map>
#include <string>
#include <vector>

/// The control interface of the server under test: what an operator would do to it.
class CServerHands {
public:
    CServerHands(quint16 controlPort, QByteArray token);

    /// The answer's body; a null value, and a failed test, on any status but 200.
    Json::Value Get(const std::string& path);
    Json::Value Put(const std::string& path, const std::string& json);
    Json::Value Post(const std::string& path, const std::string& json);

    /// The requests of `command` so far, of all connections.
    std::vector<Json::Value> Requests(unsigned int command);

    /// What came to `path` by HTTP so far.
    std::vector<Json::Value> HttpTo(const std::string& path);

    /// Names of the events that were reported so far, with how many there are of each.
    std::map<std::string, int> ReportCounts();
    /// The parameters of each event of that name, in order.
    std::vector<Json::Value> ReportsOf(const std::string& name);

private:
    Json::Value Ask(const char* verb, const std::string& path, const std::string& json);

    QNetworkAccessManager m_network;
    const QUrl m_address;
    const QByteArray m_token;
};
