#pragma once

#include "core/Domains.h"
#include "core/Environment.h"
#include "core/IClientState.h"
#include "core/InterruptionSlots.h"
#include "core/Language.h"
#include "core/LoginSession.h"
#include "core/ServerDocument.h"

/// Answers the contract's queries from the services that own the state. They must outlive it. Main thread.
class CClientState : public IClientState {
public:
    struct Sources {
        const CLoginSession& session;
        const CEnvironment& environment;
        const CLanguage& language;
        const CCommonConfig& commonConfig;
        const CLinkTable& linkTable;
        const CDomains& domains;
        const CInterruptionSlots& interruptionSlots;
    };

    explicit CClientState(const Sources& sources) : m_sources(sources) {}

    uint64_t UserId() const override { return m_sources.session.UserId(); }
    uint64_t SessionId() const override { return m_sources.session.SessionId(); }
    std::vector<int> AttributedMarkets() const override { return m_sources.session.AttributedMarkets(); }
    bool IsReleaseAppVersion() const override { return m_sources.environment.IsReleaseAppVersion(); }
    bool IsVelora() const override { return m_sources.environment.IsVelora(); }
    std::string DeviceId() const override { return m_sources.environment.DeviceId(); }
    int LanguageId() const override { return m_sources.language.LanguageId(); }
    std::optional<QString> Text(unsigned int textId) const override { return m_sources.language.Text(textId); }
    Json::Value ConfigByName(const std::string& name) const override { return m_sources.commonConfig.Member(name); }
    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType /*biz*/) const override {
        return m_sources.domains.DomainUrl(key);
    }
    std::string LinkUrl(unsigned long linkId) const override { return m_sources.linkTable.Url(linkId); }
    bool IsAllowed(ZRUniformResourceSlotType type) const override {
        return m_sources.interruptionSlots.IsAllowed(type);
    }

private:
    const Sources m_sources;
};
