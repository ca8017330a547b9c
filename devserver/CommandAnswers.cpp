#include "CommandAnswers.h"

#include <map>

#include "PremiumAnswer.h"
#include "VipAnswer.h"
#include "chat.pb.h"

namespace devserver {
namespace {

CommandAnswer AnswerChatEntry(const Asker& asker, const std::string& body) {
    chat::GetChatEntryReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    chat::GetChatEntryRsp answer;
    if (const auto& aiChat = asker.user.aiChat) {
        answer.set_result_code(aiChat->resultCode);
        answer.set_result_message(aiChat->resultMessage);
        chat::ChatEntryData* data = answer.mutable_data();
        for (const ChatEntry& entry : aiChat->entries) {
            chat::ChatEntry* wireEntry = data->add_entry_list();
            wireEntry->set_scene(entry.scene);
            wireEntry->set_is_all_open(entry.allOpen);
            for (const StockDetail& detail : entry.stockDetails) {
                chat::StockOpenDetail* wireDetail = wireEntry->add_stock_open_details();
                wireDetail->set_detail_type(detail.type);
                wireDetail->set_is_open(detail.open);
                wireDetail->mutable_id_list()->Add(detail.ids.begin(), detail.ids.end());
            }
        }
    }
    return {kErrorNone, answer.SerializeAsString()};
}

using Answer = CommandAnswer (*)(const Asker& asker, const std::string& body);

const std::map<uint32_t, Answer>& Answers() {
    static const std::map<uint32_t, Answer> answers{
        {20637, AnswerPremiumAccess},
        {20831, AnswerVipStatus},
        {20982, AnswerChatEntry},
    };
    return answers;
}

}  // namespace

CommandAnswer AnswerCommand(uint32_t command, const Asker& asker, const std::string& body) {
    const auto found = Answers().find(command);
    return found == Answers().end() ? CommandAnswer{kErrorUnknownCommand, {}} : found->second(asker, body);
}

}  // namespace devserver
