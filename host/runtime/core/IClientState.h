#pragma once

#include <json/value.h>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/lang.h"
#include "core/uniform_resource_slot.h"
#include "core/url_data.h"

/// The client's state as the contract's queries return it. A query that a host does not override returns what the
/// contract returns without a host. Main thread.
class IClientState {
public:
    virtual ~IClientState() = default;

    /// User and session ids of core::login_status_data. 0 while nobody is logged in.
    virtual uint64_t UserId() const { return 0; }
    virtual uint64_t SessionId() const { return 0; }

    /// Markets of core::attr_market.
    virtual std::vector<int> AttributedMarkets() const { return {}; }

    /// Build, edition and device of core::environment. Without a host it is a release, so that internal features
    /// stay disabled.
    virtual bool IsReleaseAppVersion() const { return true; }
    virtual bool IsVelora() const { return false; }
    virtual std::string DeviceId() const { return {}; }

    /// Display language of core::lang.
    virtual int LanguageId() const { return core::lang::kLanguageEnglish; }

    /// Text of core::langx in the display language. Empty if the language has no text with this id.
    virtual std::optional<QString> Text(unsigned int /*textId*/) const { return std::nullopt; }

    /// Value of core::config_common. Null for an unknown name.
    virtual Json::Value ConfigByName(const std::string& /*name*/) const { return {}; }

    /// URL of core::url_data, without a slash at its end. Empty if there is none.
    virtual std::string DomainUrl(const std::string& /*key*/, core::url_data::DomainBizType /*biz*/) const {
        return {};
    }

    /// URL of core::url_linkid. Empty for an unknown id.
    virtual std::string LinkUrl(unsigned long /*linkId*/) const { return {}; }

    /// Answer of core::uniform_resource_slot: whether the user may be shown this kind of interruption.
    virtual bool IsAllowed(ZRUniformResourceSlotType /*type*/) const { return false; }
};
