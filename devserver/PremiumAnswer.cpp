#include "PremiumAnswer.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <vector>

#include "Links.h"
#include "premium_svr.pb.h"

namespace devserver {
namespace {

namespace wire = web_premium_access;

// The schemas share their field numbers, apart from fields that the wire does not have.
void Fill(wire::UiDataAndAccessData& element, const UserRight& right, const RequestContext& context) {
    element.set_access(right.access());
    const RightDisplay* display = context.scenario.FindRight(right.access());
    if (right.display() && display) {
        RightDisplay ui = *display;
        ui.clear_texts();
        if (ui.has_otherinfo()) {
            ui.set_otherinfo(WithOrigin(ui.otherinfo(), context.origin));
        }
        element.mutable_ui_data()->ParseFromString(ui.SerializeAsString());
        if (display->has_texts()) {
            const RightText& text = TextIn(display->texts(), context.language);
            element.mutable_ui_data()->mutable_ui_text()->ParseFromString(text.SerializeAsString());
        }
    }
    if (right.state()) {
        UserRight state = right;
        state.clear_display();
        state.clear_state();
        element.mutable_access_data()->ParseFromString(state.SerializeAsString());
    }
}

// In the scenario's order, or in the order of the request's list.
std::vector<const UserRight*> Wanted(const wire::GetUiMsgAndPremiumAccessReq& request,
                                     const google::protobuf::RepeatedPtrField<UserRight>& rights) {
    std::vector<const UserRight*> wanted;
    if (request.need_all_access()) {
        std::transform(rights.begin(), rights.end(), std::back_inserter(wanted),
                       [](const UserRight& right) { return &right; });
        return wanted;
    }
    std::map<int32_t, const UserRight*> byAccess;
    for (const UserRight& right : rights) {
        byAccess.emplace(right.access(), &right);
    }
    for (const int32_t access : request.access_list()) {
        if (const auto found = byAccess.find(access); found != byAccess.end()) {
            wanted.push_back(found->second);
        }
    }
    return wanted;
}

}  // namespace

CommandAnswer AnswerPremiumAccess(const RequestContext& context, const std::string& body) {
    wire::GetUiMsgAndPremiumAccessReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    wire::GetUiMsgAndPremiumAccessRsp answer;
    const Premium& premium = context.user.premium();
    if (const auto code = AnswerCode(premium.code())) {
        answer.set_code(*code);
    }
    if (premium.has_message()) {
        answer.set_message(premium.message());
    }
    if (!context.user.has_premium() || !premium.data()) {
        return {kErrorNone, answer.SerializeAsString()};
    }
    wire::GetUiMsgAndPremiumAccessData* data = answer.mutable_data();
    // A request of two bytes per right could otherwise exhaust the memory.
    size_t bytes = 0;
    for (const UserRight* right : Wanted(request, premium.rights())) {
        wire::UiDataAndAccessData* element = data->add_ui_data_and_access_data();
        Fill(*element, *right, context);
        bytes += element->ByteSizeLong();
        if (bytes > kMaxAnswerBytes) {
            return {kErrorTooLarge, {}};
        }
    }
    return {kErrorNone, answer.SerializeAsString()};
}

}  // namespace devserver
