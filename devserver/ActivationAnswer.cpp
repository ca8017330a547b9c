#include "ActivationAnswer.h"

#include <google/protobuf/util/json_util.h>

#include <set>

#include "premium_svr.pb.h"

namespace devserver {
namespace {

namespace wire = web_premium_access;

constexpr uint32_t kPremiumChangePush = 20837;

Json::Value ToJson(const Premium& premium) {
    std::string text;
    google::protobuf::util::MessageToJsonString(premium, &text);
    Errors errors;
    return ParseJson(text, errors).value_or(Json::objectValue);
}

// Nothing for an unknown operation.
std::optional<int32_t> ActivationType(int32_t operation) {
    switch (operation) {
        case wire::READY_TO_FULL:
            return wire::FULL_ACTIVATION;
        case wire::READY_TO_LIMITED:
            return wire::LIMITED_TIME_ACTIVATION;
        default:
            return std::nullopt;
    }
}

CommandEffect Activated(const User& user, const std::set<int32_t>& rights, int32_t type) {
    Premium premium = user.premium();
    for (UserRight& right : *premium.mutable_rights()) {
        if (rights.count(right.access()) == 0) {
            continue;
        }
        right.set_haspermission(true);
        right.set_activationtype(type);
        if (type == wire::LIMITED_TIME_ACTIVATION) {
            right.set_daysleft(user.activation().daysleft());
        }
    }
    CommandEffect effect;
    effect.premium = ToJson(premium);
    wire::PremiumChangePush push;
    push.set_delay_seconds(0);
    push.set_need_all_access(false);
    push.mutable_access_list()->Add(rights.begin(), rights.end());
    effect.pushCommand = kPremiumChangePush;
    effect.pushBody = push.SerializeAsString();
    return effect;
}

}  // namespace

CommandAnswer AnswerActivation(const RequestContext& context, const std::string& body) {
    wire::ActivePermissionStateReq request;
    const bool isRead = request.ParseFromString(body);
    const auto type = ActivationType(request.operate());
    if (!isRead || !type) {
        return {kErrorBadBody, {}};
    }
    const Activation& activation = context.user.activation();
    if (activation.error() != kErrorNone) {
        return {activation.error(), {}};
    }
    const std::set<int32_t> wanted(request.access_list().begin(), request.access_list().end());
    std::set<int32_t> ready;
    for (const UserRight& right : context.user.premium().rights()) {
        if (right.activationtype() == wire::READY_ACTIVATION && wanted.count(right.access()) != 0) {
            ready.insert(right.access());
        }
    }
    std::optional<int32_t> code = ready.empty() ? wire::ACTIVE_PERMISSION_STATE_REPEAT : wire::SUCCESS;
    if (activation.has_code()) {
        code = AnswerCode(activation.code());
    }
    wire::ActivePermissionStateRsp answer;
    if (code) {
        answer.set_code(*code);
    }
    if (activation.has_message()) {
        answer.set_message(activation.message());
    }
    CommandAnswer result{kErrorNone, answer.SerializeAsString()};
    result.silent = activation.silent();
    if (code == wire::SUCCESS && !ready.empty()) {
        result.effect = Activated(context.user, ready, *type);
    }
    return result;
}

}  // namespace devserver
