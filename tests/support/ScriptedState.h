#pragma once

#include <QString>
#include <deque>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/IClientState.h"
#include "core/ITimeAndRandom.h"
#include "support/Failing.h"
#include "support/VirtualTime.h"

/// Nobody is logged in until the test sets a user.
class CScriptedAccount : public IClientState {
public:
    void Set(uint64_t userId, uint64_t sessionId = 0, std::vector<int> markets = {});

    uint64_t UserId() const override { return m_nUserId; }
    uint64_t SessionId() const override { return m_nSessionId; }
    std::vector<int> AttributedMarkets() const override { return m_markets; }

private:
    uint64_t m_nUserId = 0;
    uint64_t m_nSessionId = 0;
    std::vector<int> m_markets;
};

/// A release of the main edition, on the device "test-device".
class CScriptedEnvironment : public IClientState {
public:
    void SetRelease(bool release) { m_bRelease = release; }
    void SetVelora(bool velora) { m_bVelora = velora; }
    void SetDeviceId(std::string id) { m_strDeviceId = std::move(id); }

    bool IsReleaseAppVersion() const override { return m_bRelease; }
    bool IsVelora() const override { return m_bVelora; }
    std::string DeviceId() const override { return m_strDeviceId; }

private:
    bool m_bRelease = true;
    bool m_bVelora = false;
    std::string m_strDeviceId = "test-device";
};

/// English without texts: each query returns its fallback.
class CScriptedLanguage : public IClientState {
public:
    void Set(int id) { m_nLanguage = id; }
    void SetText(unsigned int id, const QString& text) { m_texts[id] = text; }

    int LanguageId() const override { return m_nLanguage; }
    std::optional<QString> Text(unsigned int textId) const override;

private:
    int m_nLanguage = core::lang::kLanguageEnglish;
    std::map<unsigned int, QString> m_texts;
};

/// Common configuration. A name that was not set is unknown.
class CScriptedConfig : public IClientState {
public:
    void Set(const std::string& name, const Json::Value& value) { m_values[name] = value; }

    /// The reads that `which` selects return null.
    void RefuseReads(Failing which) { m_refusedReads = which; }

    Json::Value ConfigByName(const std::string& name) const override;

private:
    std::map<std::string, Json::Value> m_values;
    mutable Failing m_refusedReads = Failing::Never();
};

/// URLs of the servers: only "api", at https://ads.test, until the test sets others.
class CScriptedDomains : public IClientState {
public:
    void Set(const std::string& key, const std::string& url) { m_urls[key] = url; }

    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const override;

private:
    std::map<std::string, std::string> m_urls{{"api", "https://ads.test"}};
};

/// The link table. An id that was not set is unknown.
class CScriptedLinks : public IClientState {
public:
    void Set(unsigned long linkId, const std::string& url) { m_urls[linkId] = url; }

    /// The ids of all queries, in order.
    const std::vector<unsigned long>& Asked() const { return m_asked; }

    std::string LinkUrl(unsigned long linkId) const override;

private:
    std::map<unsigned long, std::string> m_urls;
    mutable std::vector<unsigned long> m_asked;
};

/// Random numbers: first the values that the test set, then the same sequence in every run. Any thread.
class CScriptedRandom : public ITimeAndRandom {
public:
    void WillReturn(const std::vector<uint32_t>& values);

    uint32_t RandomNumber() override;

private:
    std::mutex m_mutex;
    std::deque<uint32_t> m_next;
    std::mt19937 m_sequence;
};

/// Every interruption slot is allowed until the test forbids it.
class CScriptedSlots : public IClientState {
public:
    void Allow(ZRUniformResourceSlotType type, bool allowed);

    /// Number of queries.
    int AskedCount() const { return m_nAsked; }

    bool IsAllowed(ZRUniformResourceSlotType type) const override;

private:
    std::set<int> m_forbidden;
    mutable int m_nAsked = 0;
};

/// The scripted client state. Each part answers the queries of its own kind and can be passed alone to a service that
/// needs no other.
class CScriptedState : public IClientState {
public:
    CScriptedAccount account;
    CScriptedEnvironment environment;
    CScriptedLanguage language;
    CScriptedConfig config;
    CScriptedDomains domains;
    CScriptedLinks links;
    CScriptedSlots slots;

    uint64_t UserId() const override { return account.UserId(); }
    uint64_t SessionId() const override { return account.SessionId(); }
    std::vector<int> AttributedMarkets() const override { return account.AttributedMarkets(); }
    bool IsReleaseAppVersion() const override { return environment.IsReleaseAppVersion(); }
    bool IsVelora() const override { return environment.IsVelora(); }
    std::string DeviceId() const override { return environment.DeviceId(); }
    int LanguageId() const override { return language.LanguageId(); }
    std::optional<QString> Text(unsigned int textId) const override { return language.Text(textId); }
    Json::Value ConfigByName(const std::string& name) const override { return config.ConfigByName(name); }
    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const override {
        return domains.DomainUrl(key, biz);
    }
    std::string LinkUrl(unsigned long linkId) const override { return links.LinkUrl(linkId); }
    bool IsAllowed(ZRUniformResourceSlotType type) const override { return slots.IsAllowed(type); }
};

/// The server time of virtual time and the scripted random numbers. Any thread.
class CScriptedTimeAndRandom : public ITimeAndRandom {
public:
    explicit CScriptedTimeAndRandom(const CVirtualTime& time) : m_time(time) {}

    CScriptedRandom random;

    int64_t ServerTimeMs() const override { return m_time.ServerTimeMs(); }
    uint32_t RandomNumber() override { return random.RandomNumber(); }

private:
    const CVirtualTime& m_time;
};
