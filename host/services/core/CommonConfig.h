#pragma once

#include <QObject>
#include <map>
#include <string>

#include "core/ICommonConfig.h"

class ILocalStore;

/// The server's configuration by name: what it told last, kept in the store for a start without it.
class CCommonConfig : public QObject, public ICommonConfig {
    Q_OBJECT

public:
    explicit CCommonConfig(ILocalStore& store);

    Json::Value ConfigByName(const std::string& name) const override;

    /// Takes a JSON object with one member per name. Anything else is logged and changes nothing.
    void Receive(const std::string& json);

    /// The members of such an object; false, with the reason, on anything else.
    static bool Decode(const std::string& json, std::map<std::string, Json::Value>& configs, std::string& error);

Q_SIGNALS:
    /// The values have changed already.
    void Changed();

private:
    ILocalStore& m_store;
    std::map<std::string, Json::Value> m_configs;
};
