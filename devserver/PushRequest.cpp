#include "PushRequest.h"

#include <limits>

#include "WireFields.h"
#include "premium_svr.pb.h"
#include "vip_base_service.pb.h"

namespace devserver {
namespace {

constexpr uint32_t kPushPremiumChange = 20837;
constexpr uint32_t kPushVipChange = 20832;

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

}  // namespace

PushRequest ReadPushRequest(const CJsonNode& node) {
    const CJsonNode bytes = node.Member("bodyHex");
    const CJsonNode premiumChange = node.Member("premiumChange");
    const CJsonNode vipChange = node.Member("vipChange");
    const bool isByFields = premiumChange.Present() || vipChange.Present();
    if (isByFields) {
        // The fields tell the command.
        node.Keys({}, {"user", "bodyHex", "premiumChange", "vipChange"});
    } else {
        node.Keys({"command"}, {"user", "bodyHex"});
    }
    if (int(bytes.Present()) + int(premiumChange.Present()) + int(vipChange.Present()) != 1) {
        node.Refuse("must hold exactly one of bodyHex, premiumChange, vipChange");
    }
    PushRequest push;
    push.user = ReadUserId(node);
    if (premiumChange.Present()) {
        push.command = kPushPremiumChange;
        push.body = ReadPremiumChange(premiumChange);
    } else if (vipChange.Present()) {
        push.command = kPushVipChange;
        push.body = ReadVipChange(vipChange);
    } else {
        push.command = uint32_t(node.Member("command").Unsigned(1, std::numeric_limits<uint32_t>::max()));
        push.body = bytes.HexBytes();
    }
    return push;
}

std::optional<uint64_t> ReadUserId(const CJsonNode& node) {
    const CJsonNode user = node.Member("user");
    return user.Present() ? std::optional<uint64_t>(user.Unsigned(1, std::numeric_limits<uint64_t>::max()))
                          : std::nullopt;
}

}  // namespace devserver
