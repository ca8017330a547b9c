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

    /// Returns the answer's body. Any status but 200 fails the test and returns a null value.
    Json::Value Get(const std::string& path);
    Json::Value Put(const std::string& path, const std::string& json);
    Json::Value Post(const std::string& path, const std::string& json);

    /// Returns the requests of `command` so far, on all connections.
    std::vector<Json::Value> Requests(unsigned int command);

    /// Returns the HTTP requests for `path` so far.
    std::vector<Json::Value> HttpTo(const std::string& path);

    /// Returns the number of reported events so far, by name.
    std::map<std::string, int> ReportCounts();
    /// Returns the parameters of the events with `name`, in order.
    std::vector<Json::Value> ReportsOf(const std::string& name);

private:
    Json::Value Ask(const char* method, const std::string& path, const std::string& json);

    QNetworkAccessManager m_network;
    const QUrl m_address;
    const QByteArray m_token;
};
