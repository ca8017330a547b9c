#include "PremiumAnswer.h"

#include <map>
#include <vector>

#include "WireFields.h"
#include "premium_svr.pb.h"

namespace devserver {
namespace {

namespace wire = web_premium_access;

void Fill(wire::UiText& ui, const RightTexts& texts) {
    SetText(ui, &wire::UiText::mutable_main_title, texts.mainTitle);
    SetText(ui, &wire::UiText::mutable_main_btn, texts.mainBtn);
    SetText(ui, &wire::UiText::mutable_detail_title, texts.detailTitle);
    SetText(ui, &wire::UiText::mutable_detail_sub_title, texts.detailSubTitle);
    SetText(ui, &wire::UiText::mutable_detail_btn, texts.detailBtn);
    SetText(ui, &wire::UiText::mutable_detail_sub_btn, texts.detailSubBtn);
}

void Fill(wire::JumpUrlID& ui, const RightLinks& links) {
    SetField(ui, &wire::JumpUrlID::set_main_btn_url, links.mainBtn);
    SetField(ui, &wire::JumpUrlID::set_detail_btn_url, links.detailBtn);
    SetField(ui, &wire::JumpUrlID::set_detail_sub_btn_url, links.detailSubBtn);
}

void Fill(wire::UiData& ui, int32_t access, const RightDisplay& display, Language language) {
    ui.set_access(access);
    SetText(ui, &wire::UiData::mutable_ui_type, display.uiType);
    if (const RightTexts* texts = display.TextsIn(language)) {
        Fill(*ui.mutable_ui_text(), *texts);
    }
    if (display.links) {
        Fill(*ui.mutable_jump_url_msg(), *display.links);
    }
    if (display.otherInfo) {
        ui.set_other_info(display.otherInfo->isString() ? display.otherInfo->asString()
                                                        : WriteJson(*display.otherInfo));
    }
}

void Fill(wire::AccessData& state, const UserRight& right) {
    state.set_access(right.access);
    SetField(state, &wire::AccessData::set_has_permission, right.hasPermission);
    SetField(state, &wire::AccessData::set_activation_type, right.activationType);
    SetField(state, &wire::AccessData::set_days_left, right.daysLeft);
    SetField(state, &wire::AccessData::set_activation_source, right.activationSource);
}

void Fill(wire::UiDataAndAccessData& element, const UserRight& right, const Asker& asker) {
    element.set_access(right.access);
    const RightCatalogue& catalogue = asker.scenario.Rights();
    const auto display = catalogue.find(right.access);
    if (right.display && display != catalogue.end()) {
        Fill(*element.mutable_ui_data(), right.access, display->second, asker.language);
    }
    if (right.state) {
        Fill(*element.mutable_access_data(), right);
    }
}

// In the scenario's order, or in that of the list.
std::vector<const UserRight*> Wanted(const wire::GetUiMsgAndPremiumAccessReq& request,
                                     const std::vector<UserRight>& rights) {
    std::vector<const UserRight*> wanted;
    if (request.need_all_access()) {
        for (const UserRight& right : rights) {
            wanted.push_back(&right);
        }
        return wanted;
    }
    std::map<int32_t, const UserRight*> byAccess;
    for (const UserRight& right : rights) {
        byAccess.emplace(right.access, &right);
    }
    for (const int32_t access : request.access_list()) {
        if (const auto found = byAccess.find(access); found != byAccess.end()) {
            wanted.push_back(found->second);
        }
    }
    return wanted;
}

}  // namespace

CommandAnswer AnswerPremiumAccess(const Asker& asker, const std::string& body) {
    wire::GetUiMsgAndPremiumAccessReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    wire::GetUiMsgAndPremiumAccessRsp answer;
    const std::optional<Premium>& premium = asker.user.premium;
    const AnswerHead head = premium ? premium->head : AnswerHead();
    SetField(answer, &wire::GetUiMsgAndPremiumAccessRsp::set_code, head.code);
    SetText(answer, &wire::GetUiMsgAndPremiumAccessRsp::mutable_message, head.message);
    if (!premium || !premium->data) {
        return {kErrorNone, answer.SerializeAsString()};
    }
    wire::GetUiMsgAndPremiumAccessData* data = answer.mutable_data();
    // A list of two bytes a mention can ask for more than any memory holds.
    size_t bytes = 0;
    for (const UserRight* right : Wanted(request, premium->rights)) {
        wire::UiDataAndAccessData* element = data->add_ui_data_and_access_data();
        Fill(*element, *right, asker);
        bytes += element->ByteSizeLong();
        if (bytes > kMaxAnswerBytes) {
            return {kErrorTooLarge, {}};
        }
    }
    return {kErrorNone, answer.SerializeAsString()};
}

}  // namespace devserver
