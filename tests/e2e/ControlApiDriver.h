#pragma once

#include <json/value.h>

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QUrl>
#include <map>
#include <string>
#include <vector>

/// Calls the control API of the server under test.
class CControlApiDriver {
public:
    CControlApiDriver(quint16 controlPort, QByteArray token);

    /// The answer's body; a null value, and a failed test, on any status but 200.
    Json::Value Get(const std::string& path);
    Json::Value Put(const std::string& path, const std::string& json);
    Json::Value Post(const std::string& path, const std::string& json);

    /// The requests of `command` so far, on all connections.
    std::vector<Json::Value> Requests(unsigned int command);

    /// The HTTP requests for `path` so far.
    std::vector<Json::Value> HttpTo(const std::string& path);

    /// The number of reported events so far, by name.
    std::map<std::string, int> ReportCounts();
    /// The parameters of the events of that name, in order.
    std::vector<Json::Value> ReportsOf(const std::string& name);

private:
    Json::Value Ask(const char* method, const std::string& path, const std::string& json);

    QNetworkAccessManager m_network;
    const QUrl m_address;
    const QByteArray m_token;
};
