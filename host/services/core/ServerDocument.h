#pragma once

#include <json/value.h>

#include <QObject>
#include <map>
#include <string>

class ILocalStore;

/// A JSON object of the server. The last one is saved in the store, for a start without the server. Main thread.
class CServerDocument : public QObject {
    Q_OBJECT

public:
    /// Each document has its own `storeKey`. `name` is for log lines.
    CServerDocument(ILocalStore& store, std::string storeKey, std::string name);

    /// Null for an unknown member.
    Json::Value Member(const std::string& name) const;

    /// Replaces the document. Input other than a JSON object is logged and ignored.
    void Receive(const std::string& json);

    /// Reads the members of a JSON object. Returns false, with the reason, for other input.
    static bool Decode(const std::string& json, std::map<std::string, Json::Value>& members, std::string& error);

Q_SIGNALS:
    /// Emitted after the members have changed.
    void Changed();

private:
    ILocalStore& m_store;
    const std::string m_strStoreKey;
    const std::string m_strName;
    std::map<std::string, Json::Value> m_members;
};

/// One member per configuration name.
struct CCommonConfig : CServerDocument {
    explicit CCommonConfig(ILocalStore& store)
        : CServerDocument(store, "Host_CommonConfig", "The common configuration") {}
};

/// One member per link id, in decimal: its URL.
struct CLinkTable : CServerDocument {
    explicit CLinkTable(ILocalStore& store) : CServerDocument(store, "Host_LinkTable", "The link table") {}

    /// Empty for an unknown link.
    std::string Url(unsigned long linkId) const;
};
