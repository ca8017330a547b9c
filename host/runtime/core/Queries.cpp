#include "core/IAccount.h"
#include "core/ICommonConfig.h"
#include "core/IEnvironment.h"
#include "core/ILanguage.h"
#include "core/IRandom.h"
#include "core/IServerClock.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/login_status_data.h"
#include "core/random.h"
#include "core/time_date.h"
#include "framework/Ports.h"

namespace core {
namespace config_common {

Json::Value GetJsonConfigByName(const std::string& name) {
    const host::PortsLock ports;
    return ports->commonConfig ? ports->commonConfig->ConfigByName(name) : Json::Value();
}

}  // namespace config_common
namespace login_status_data {

uint64_t Login_GetUserID() {
    const host::PortsLock ports;
    return ports->account ? ports->account->UserId() : 0;
}

uint64_t GetSessionId() {
    const host::PortsLock ports;
    return ports->account ? ports->account->SessionId() : 0;
}

}  // namespace login_status_data
namespace attr_market {

std::vector<int> GetCurrentUserAttrMarket() {
    const host::PortsLock ports;
    return ports->account ? ports->account->AttributedMarkets() : std::vector<int>();
}

}  // namespace attr_market
namespace environment {

bool IsReleaseAppVersion() {
    const host::PortsLock ports;
    // With nobody to ask it is a release: what internal builds alone may do stays shut.
    return !ports->environment || ports->environment->IsReleaseAppVersion();
}

bool IsVelora() {
    const host::PortsLock ports;
    return ports->environment && ports->environment->IsVelora();
}

std::string GetDeviceId() {
    const host::PortsLock ports;
    return ports->environment ? ports->environment->DeviceId() : std::string();
}

}  // namespace environment
namespace lang {

int GetLanguageID() {
    const host::PortsLock ports;
    return ports->language ? ports->language->LanguageId() : kLanguageEnglish;
}

bool IsChinese() {
    const int language = GetLanguageID();
    return language == kLanguageSimplifiedChinese || language == kLanguageTraditionalChinese;
}

}  // namespace lang
namespace langx {

QString tr(unsigned int textId, const std::string& fallback) {
    const host::PortsLock ports;
    const std::optional<QString> text = ports->language ? ports->language->Text(textId) : std::nullopt;
    return text ? *text : QString::fromStdString(fallback);
}

}  // namespace langx
namespace time_date {

int64_t GetSvrTimeMillis() {
    const host::PortsLock ports;
    return ports->clock ? ports->clock->ServerTimeMillis() : 0;
}

int64_t GetSvrTimeStamp() {
    const int64_t millis = GetSvrTimeMillis();
    return millis / 1000 - (millis % 1000 < 0 ? 1 : 0);
}

}  // namespace time_date
namespace random {

uint32_t GetRandUInt32() {
    const host::PortsLock ports;
    return ports->random ? ports->random->Next() : 0;
}

}  // namespace random
}  // namespace core
