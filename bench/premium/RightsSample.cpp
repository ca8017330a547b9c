#include "RightsSample.h"

#include "premium_svr.pb.h"

namespace {

void FillDisplay(int access, web_premium_access::UiData& display) {
    display.set_access(access);
    display.set_ui_type("A");
    display.set_other_info(R"({"active_premium_popup_info":{"target_url":"https://pay.zrgrowth.example/rights/)" +
                           std::to_string(access) + R"("},"tag":"live"})");
    web_premium_access::UiText& texts = *display.mutable_ui_text();
    texts.set_main_title("Live market data, level two, for right " + std::to_string(access));
    texts.set_main_btn("Activate now and pay later");
    texts.set_detail_title("See the whole book as it moves, without delay");
    texts.set_detail_sub_title("Ten price levels on each side of the book");
    texts.set_detail_btn("Compare the plans and prices");
    texts.set_detail_sub_btn("Read about the exchanges");
    web_premium_access::JumpUrlID& links = *display.mutable_jump_url_msg();
    links.set_main_btn_url(202011700 + access);
    links.set_detail_btn_url(202011800 + access);
    links.set_detail_sub_btn_url(202011900 + access);
}

void FillState(int access, web_premium_access::AccessData& state) {
    state.set_access(access);
    state.set_has_permission(access % 2 == 0);
    state.set_activation_type(web_premium_access::LIMITED_TIME_ACTIVATION);
    state.set_days_left(access % 30);
    state.set_activation_source(web_premium_access::VipRule);
}

}  // namespace

std::string AnswerWithAllRights() {
    web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
    answer.set_code(web_premium_access::SUCCESS);
    for (int access = 1; access <= web_premium_access::PremiumAccess_MAX; ++access) {
        if (web_premium_access::PremiumAccess_IsValid(access)) {
            auto* element = answer.mutable_data()->add_ui_data_and_access_data();
            element->set_access(access);
            FillDisplay(access, *element->mutable_ui_data());
            FillState(access, *element->mutable_access_data());
        }
    }
    return answer.SerializeAsString();
}
