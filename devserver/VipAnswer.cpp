#include "VipAnswer.h"

#include "vip_base_service.pb.h"

namespace devserver {

CommandAnswer AnswerVipStatus(const RequestContext& context, const std::string& body) {
    if (!vip_base_service::GetAppEntryMessageReq().ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    vip_base_service::GetAppEntryMessageRsp answer;
    Vip vip = context.user.vip();
    if (const auto code = AnswerCode(vip.code())) {
        answer.set_code(*code);
    }
    if (vip.has_message()) {
        answer.set_message(vip.message());
    }
    if (context.user.has_vip()) {
        vip.clear_code();
        vip.clear_message();
        // The schemas share their field numbers.
        answer.mutable_data()->ParseFromString(vip.SerializeAsString());
    }
    return {kErrorNone, answer.SerializeAsString()};
}

}  // namespace devserver
