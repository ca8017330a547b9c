#include "core/IClientState.h"
#include "core/ITimeAndRandom.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/environment.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/random.h"
#include "core/time_date.h"
#include "core/url_linkid.h"
#include "framework/Ports.h"

namespace {

// Never destroyed: a static destructor may still call the contract.
const IClientState& State(const host::PortsLock& ports) {
    static const auto* none = new IClientState;
    return ports->state ? *ports->state : *none;
}

}  // namespace

Json::Value core::config_common::GetJsonConfigByName(const std::string& name) {
    return State(host::PortsLock()).ConfigByName(name);
}

uint64_t core::login_status_data::Login_GetUserID() {
    return State(host::PortsLock()).UserId();
}

uint64_t core::login_status_data::GetSessionId() {
    return State(host::PortsLock()).SessionId();
}

std::vector<int> core::attr_market::GetCurrentUserAttrMarket() {
    return State(host::PortsLock()).AttributedMarkets();
}

bool core::environment::IsReleaseAppVersion() {
    return State(host::PortsLock()).IsReleaseAppVersion();
}

bool core::environment::IsVelora() {
    return State(host::PortsLock()).IsVelora();
}

std::string core::environment::GetDeviceId() {
    return State(host::PortsLock()).DeviceId();
}

int core::lang::GetLanguageID() {
    return State(host::PortsLock()).LanguageId();
}

bool core::lang::IsChinese() {
    const int language = GetLanguageID();
    return language == kLanguageSimplifiedChinese || language == kLanguageTraditionalChinese;
}

QString core::langx::tr(unsigned int textId, const std::string& fallback) {
    return State(host::PortsLock()).Text(textId).value_or(QString::fromStdString(fallback));
}

std::string core::url_data::GetDomainUrl(const std::string& key, DomainBizType biz) {
    return State(host::PortsLock()).DomainUrl(key, biz);
}

std::string core::url_linkid::GetLinkUrlWithTargetLinkId(unsigned long linkId, CSBrokerId /*broker*/) {
    return State(host::PortsLock()).LinkUrl(linkId);
}

bool core::uniform_resource_slot::IsAllowedToShowUniformResourceSlot(ZRUniformResourceSlotType type) {
    return State(host::PortsLock()).IsAllowed(type);
}

int64_t core::time_date::GetSvrTimeMillis() {
    const host::PortsLock ports;
    return ports->timeAndRandom ? ports->timeAndRandom->ServerTimeMs() : 0;
}

int64_t core::time_date::GetSvrTimeStamp() {
    const int64_t millis = GetSvrTimeMillis();
    return millis / 1000 - (millis % 1000 < 0 ? 1 : 0);
}

uint32_t core::random::GetRandUInt32() {
    const host::PortsLock ports;
    return ports->timeAndRandom ? ports->timeAndRandom->RandomNumber() : 0;
}
