#pragma once

#include <QObject>
#include <map>
#include <string>

/// URLs of the servers, as the client finds them. Main thread.
class CDomains : public QObject {
    Q_OBJECT

public:
    /// Slashes at the end of `url` are removed. An empty URL removes the server.
    void Set(const std::string& key, std::string url);

    /// URL without a slash at its end. Empty for an unknown key.
    std::string DomainUrl(const std::string& key) const;

Q_SIGNALS:
    void Changed();

private:
    std::map<std::string, std::string> m_urls;
};
