#pragma once

#include <QString>
#include <deque>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/IAccount.h"
#include "core/ICommonConfig.h"
#include "core/IDomains.h"
#include "core/IEnvironment.h"
#include "core/ILanguage.h"
#include "core/IRandom.h"
#include "core/ISlots.h"
#include "core/lang.h"
#include "support/Failing.h"

/// Nobody is logged in until the test says so.
class CScriptedAccount : public IAccount {
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
class CScriptedEnvironment : public IEnvironment {
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

/// English, without any texts: each shows its fallback.
class CScriptedLanguage : public ILanguage {
public:
    void Set(int id) { m_nLanguage = id; }
    void SetText(unsigned int id, const QString& text) { m_texts[id] = text; }

    int LanguageId() const override { return m_nLanguage; }
    std::optional<QString> Text(unsigned int textId) const override;

private:
    int m_nLanguage = core::lang::kLanguageEnglish;
    std::map<unsigned int, QString> m_texts;
};

/// Common configuration; a name that was not set is unknown.
class CScriptedConfig : public ICommonConfig {
public:
    void Set(const std::string& name, const Json::Value& value) { m_values[name] = value; }

    /// The reads that `which` names give null.
    void RefuseReads(Failing which) { m_refusedReads = which; }

    Json::Value ConfigByName(const std::string& name) const override;

private:
    std::map<std::string, Json::Value> m_values;
    mutable Failing m_refusedReads = Failing::Never();
};

/// Where the servers are: "api" alone, at https://ads.test, until the test says something else.
class CScriptedDomains : public IDomains {
public:
    void Set(const std::string& key, const std::string& url) { m_urls[key] = url; }

    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const override;

private:
    std::map<std::string, std::string> m_urls{{"api", "https://ads.test"}};
};

/// The same sequence in every run, after the values that the test asked for.
class CScriptedRandom : public IRandom {
public:
    void WillReturn(const std::vector<uint32_t>& values);

    uint32_t Next() override;

private:
    std::mutex m_mutex;
    std::deque<uint32_t> m_next;
    std::mt19937 m_sequence;
};

/// Every slot is allowed until the test forbids it.
class CScriptedSlots : public ISlots {
public:
    void Allow(ZRUniformResourceSlotType type, bool allowed);

    /// How often a slot was asked for.
    int AskedCount() const { return m_nAsked; }

    bool IsAllowed(ZRUniformResourceSlotType type) const override;

private:
    std::set<int> m_forbidden;
    mutable int m_nAsked = 0;
};
