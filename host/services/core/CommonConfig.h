#pragma once

#include <json/value.h>

#include <QObject>
#include <map>
#include <string>

class ILocalStore;

/// The server's common configuration by name. The last one is saved in the store, for a start without the server.
/// Main thread.
class CCommonConfig : public QObject {
    Q_OBJECT

public:
    explicit CCommonConfig(ILocalStore& store);

    /// Null for an unknown name.
    Json::Value ConfigByName(const std::string& name) const;

    /// Replaces the configuration by a JSON object with one member per name. Other input is logged and ignored.
    void Receive(const std::string& json);

    /// Reads the members of such an object. Returns false, with the reason, for other input.
    static bool Decode(const std::string& json, std::map<std::string, Json::Value>& configs, std::string& error);

Q_SIGNALS:
    /// Emitted after the values have changed.
    void Changed();

private:
    ILocalStore& m_store;
    std::map<std::string, Json::Value> m_configs;
};
