#include "PushRequest.h"

#include <limits>
#include <vector>

#include "WireFields.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"
#include "premium_svr.pb.h"
#include "vip_base_service.pb.h"

namespace devserver {
namespace {

std::string ReadPremiumChange(const CJsonNode& node) {
    using web_premium_access::PremiumChangePush;
    node.Keys({}, {"delaySeconds", "needAll", "access"});
    PremiumChangePush push;
    SetField(push, &PremiumChangePush::set_delay_seconds, node.Member("delaySeconds").Maybe(&CJsonNode::UInt32));
    SetField(push, &PremiumChangePush::set_need_all_access, node.Member("needAll").Maybe(&CJsonNode::Bool));
    for (const CJsonNode& access : node.Member("access").Items()) {
        push.add_access_list(access.Int32());
    }
    return push.SerializeAsString();
}

std::string ReadVipChange(const CJsonNode& node) {
    using vip_base_service::UserVipStateChangePush;
    node.Keys({}, {"windowSeconds"});
    UserVipStateChangePush push;
    SetField(push, &UserVipStateChangePush::set_refresh_window_seconds,
             node.Member("windowSeconds").Maybe(&CJsonNode::UInt32));
    return push.SerializeAsString();
}

// What the three pushes of ads begin with.
template <class Push>
void ReadAdPlace(const CJsonNode& node, Push& push) {
    SetField(push, &Push::set_ad_type, node.Member("adType").Maybe(&CJsonNode::UInt32));
    SetField(push, &Push::set_ad_position, node.Member("adPosition").Maybe(&CJsonNode::UInt32));
    SetField(push, &Push::set_delay, node.Member("delay").Maybe(&CJsonNode::UInt32));
}

std::string ReadAdChange(const CJsonNode& node) {
    node.Keys({}, {"adType", "adPosition", "delay", "offlineAdIds"});
    ad_manage_oss::AdPush push;
    ReadAdPlace(node, push);
    for (const CJsonNode& id : node.Member("offlineAdIds").Items()) {
        push.add_offline_ad_id(id.Text());
    }
    return push.SerializeAsString();
}

std::string ReadAdCheck(const CJsonNode& node) {
    node.Keys({}, {"adType", "adPosition", "delay", "adIds"});
    ad_manage_oss::AdCheckPush push;
    ReadAdPlace(node, push);
    for (const CJsonNode& id : node.Member("adIds").Items()) {
        push.add_ad_id(id.Text());
    }
    return push.SerializeAsString();
}

std::string ReadAdNew(const CJsonNode& node) {
    node.Keys({}, {"adType", "adPosition", "delay"});
    ads_service::AdPush push;
    ReadAdPlace(node, push);
    return push.SerializeAsString();
}

struct PushForm {
    const char* key;
    uint32_t command;
    std::string (*read)(const CJsonNode& node);
};

const std::vector<PushForm>& Forms() {
    static const std::vector<PushForm> forms{
        {"premiumChange", 20837, ReadPremiumChange},
        {"vipChange", 20832, ReadVipChange},
        {"adChange", 20145, ReadAdChange},
        {"adCheck", 20170, ReadAdCheck},
        {"adNew", 20171, ReadAdNew},
    };
    return forms;
}

}  // namespace

PushRequest ReadPushRequest(const CJsonNode& node) {
    const CJsonNode bytes = node.Member("bodyHex");
    std::vector<std::string> keys{"user", "bodyHex"};
    std::vector<const PushForm*> given;
    for (const PushForm& form : Forms()) {
        keys.push_back(form.key);
        if (node.Member(form.key).Present()) {
            given.push_back(&form);
        }
    }
    if (given.empty()) {
        node.Keys({"command"}, {"user", "bodyHex"});
    } else {
        // The form tells the command.
        node.Keys({}, keys);
    }
    if (given.size() + size_t(bytes.Present()) != 1) {
        node.Refuse("must hold exactly one of bodyHex, premiumChange, vipChange, adChange, adCheck, adNew");
    }
    PushRequest push;
    push.user = ReadUserId(node);
    if (given.empty()) {
        push.command = uint32_t(node.Member("command").Unsigned(1, std::numeric_limits<uint32_t>::max()));
        push.body = bytes.HexBytes();
    } else {
        push.command = given.front()->command;
        push.body = given.front()->read(node.Member(given.front()->key));
    }
    return push;
}

std::optional<uint64_t> ReadUserId(const CJsonNode& node) {
    const CJsonNode user = node.Member("user");
    return user.Present() ? std::optional<uint64_t>(user.Unsigned(1, std::numeric_limits<uint64_t>::max()))
                          : std::nullopt;
}

}  // namespace devserver
