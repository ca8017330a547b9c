// Input: the bytes of the VIP reply, for a user with a status and for a user without one.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include "FuzzTarget.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/ZRVipIds.h"
#include "support/ScriptedHost.h"
#include "vip_base_service.pb.h"

using namespace ::testing;

namespace {

std::string StatusOf(const CZRVipDataHandler& handler) {
    return fmt::format("{} {} {} {} {}", handler.HasVipQualification(), handler.GetVipGrade(), handler.GetVipState(),
                       handler.GetNewVipState(), handler.IsNewVipSystem());
}

// The expected status of a user with or without the qualification; the user's other values do not matter.
std::string Expected(const vip_base_service::GetAppEntryMessageRsp& answer, bool qualified) {
    const auto& data = answer.data();
    if (!data.has_vip_basic_data()) {
        return "false 0 0 0 false";
    }
    const auto& basic = data.vip_basic_data();
    return fmt::format("{} {} {} {} {}", data.has_has_vip_qualification() ? data.has_vip_qualification() : qualified,
                       int(basic.vip_level()), basic.vip_state(), int(basic.new_vip_state()), basic.vip_version() == 1);
}

int ExpectedEngine(const vip_base_service::GetAppEntryMessageRsp& answer) {
    const auto& basic = answer.data().vip_basic_data();
    if (basic.new_vip_state() == 2) {
        return 3;
    }
    if (basic.new_vip_state() != 1) {
        return -1;  // no trade module in this process
    }
    switch (basic.new_vip_sub_state()) {
        case 101:
            return 0;
        case 102:
        case 105:
            return 1;
        case 103:
        case 104:
            return basic.auto_renewal() == 1 ? 1 : 5;
        case 106:
            return 2;
        default:
            return -1;
    }
}

void Answer(CScriptedHost& host, CZRVipDataHandler& handler, const std::string& bytes) {
    handler.RequestVipStatus();
    host.channel.Reply(host.channel.LastSession(), kCmdVipStatus, bytes);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    vip_base_service::GetAppEntryMessageRsp answer;
    const bool good = answer.ParseFromString(bytes);
    CScriptedHost host;
    CZRVipDataHandler handler(nullptr);

    Answer(host, handler, bytes);
    EXPECT_EQ(StatusOf(handler), good ? Expected(answer, false) : "false 0 0 0 false");
    EXPECT_EQ(handler.GetVipEngineStatus(), good ? ExpectedEngine(answer) : -1);
    EXPECT_EQ(host.bus.Sent().size(), good ? 1u : 0u);

    vip_base_service::GetAppEntryMessageRsp member;
    member.mutable_data()->set_has_vip_qualification(true);
    member.mutable_data()->mutable_vip_basic_data()->set_vip_level(3);
    Answer(host, handler, member.SerializeAsString());
    Answer(host, handler, bytes);
    EXPECT_EQ(StatusOf(handler), good ? Expected(answer, true) : "true 3 0 0 false");

    host.log.Forget();
    return 0;
}
