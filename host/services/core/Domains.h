#pragma once

#include <QObject>
#include <map>

#include "core/IDomains.h"

/// Where the servers are, as the client learns it. Main thread.
class CDomains : public QObject, public IDomains {
    Q_OBJECT

public:
    /// `url` may end in slashes; an empty one takes the server away.
    void Set(const std::string& key, std::string url);

    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const override;

Q_SIGNALS:
    void Changed();

private:
    std::map<std::string, std::string> m_urls;
};
