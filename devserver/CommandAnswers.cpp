#include "CommandAnswers.h"

#include <map>

#include "chat.pb.h"

namespace devserver {
namespace {

CommandAnswer AnswerChatEntry(const User& user, const std::string& body) {
    chat::GetChatEntryReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    chat::GetChatEntryRsp answer;
    if (user.aiChat) {
        answer.set_result_code(user.aiChat->resultCode);
        answer.set_result_message(user.aiChat->resultMessage);
        chat::ChatEntryData* data = answer.mutable_data();
        for (const ChatEntry& entry : user.aiChat->entries) {
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

using Answer = CommandAnswer (*)(const User& user, const std::string& body);

const std::map<uint32_t, Answer>& Answers() {
    static const std::map<uint32_t, Answer> answers{
        {20982, AnswerChatEntry},
    };
    return answers;
}

}  // namespace

CommandAnswer AnswerCommand(uint32_t command, const User& user, const std::string& body) {
    const auto found = Answers().find(command);
    return found == Answers().end() ? CommandAnswer{kErrorUnknownCommand, {}} : found->second(user, body);
}

}  // namespace devserver
