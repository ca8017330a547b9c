#include "CommandAnswers.h"

#include <map>

#include "ActivationAnswer.h"
#include "PremiumAnswer.h"
#include "VipAnswer.h"
#include "chat.pb.h"

namespace devserver {
namespace {

CommandAnswer AnswerChatEntry(const RequestContext& context, const std::string& body) {
    chat::GetChatEntryReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    chat::GetChatEntryRsp answer;
    if (context.user.has_aichat()) {
        const AiChat& aiChat = context.user.aichat();
        answer.set_result_code(aiChat.resultcode());
        answer.set_result_message(aiChat.resultmessage());
        chat::ChatEntryData* data = answer.mutable_data();
        for (const ChatEntry& entry : aiChat.entries()) {
            chat::ChatEntry* wireEntry = data->add_entry_list();
            wireEntry->set_scene(entry.scene());
            wireEntry->set_is_all_open(entry.allopen());
            for (const StockDetail& detail : entry.stockdetails()) {
                chat::StockOpenDetail* wireDetail = wireEntry->add_stock_open_details();
                wireDetail->set_detail_type(detail.type());
                wireDetail->set_is_open(detail.open());
                wireDetail->mutable_id_list()->Add(detail.ids().begin(), detail.ids().end());
            }
        }
    }
    return {kErrorNone, answer.SerializeAsString()};
}

using Answer = CommandAnswer (*)(const RequestContext& context, const std::string& body);

const std::map<uint32_t, Answer>& Answers() {
    static const std::map<uint32_t, Answer> answers{
        {20637, AnswerPremiumAccess},
        {20831, AnswerVipStatus},
        {20981, AnswerActivation},
        {20982, AnswerChatEntry},
    };
    return answers;
}

}  // namespace

CommandAnswer AnswerCommand(uint32_t command, const RequestContext& context, const std::string& body) {
    const auto found = Answers().find(command);
    return found == Answers().end() ? CommandAnswer{kErrorUnknownCommand, {}} : found->second(context, body);
}

}  // namespace devserver
