#include "VipAnswer.h"

#include "WireFields.h"
#include "vip_base_service.pb.h"

namespace devserver {
namespace {

namespace wire = vip_base_service;

void Fill(wire::VipBasicData& data, const VipBasic& basic) {
    SetField(data, &wire::VipBasicData::set_vip_state, basic.state);
    SetField(data, &wire::VipBasicData::set_vip_level, basic.level);
    SetField(data, &wire::VipBasicData::set_vip_version, basic.version);
    SetField(data, &wire::VipBasicData::set_new_vip_state, basic.newState);
    SetField(data, &wire::VipBasicData::set_new_vip_sub_state, basic.newSubState);
    SetField(data, &wire::VipBasicData::set_auto_renewal, basic.autoRenewal);
}

std::string* Field(ZRStringDefine::LocaleString& text, Language language) {
    switch (language) {
        case Language::SimplifiedChinese:
            return text.mutable_simplified_chinese();
        case Language::TraditionalChinese:
            return text.mutable_traditional_chinese();
        case Language::English:
            break;
        case Language::Japanese:
            return text.mutable_japanese();
        case Language::French:
            return text.mutable_french();
    }
    return text.mutable_english();
}

void Fill(ZRStringDefine::LocaleString& text, const ByLanguage<std::string>& title) {
    for (const auto& [language, words] : title) {
        *Field(text, language) = words;
    }
}

void Fill(wire::AppEntryMessage& message, const VipEntry& entry) {
    if (entry.mainTitle) {
        Fill(*message.mutable_entry_main_title(), *entry.mainTitle);
    }
    if (entry.btnTitle) {
        Fill(*message.mutable_entry_btn_title(), *entry.btnTitle);
    }
}

}  // namespace

CommandAnswer AnswerVipStatus(const Asker& asker, const std::string& body) {
    wire::GetAppEntryMessageReq request;
    if (!request.ParseFromString(body)) {
        return {kErrorBadBody, {}};
    }
    wire::GetAppEntryMessageRsp answer;
    const std::optional<Vip>& vip = asker.user.vip;
    const AnswerHead head = vip ? vip->head : AnswerHead();
    SetField(answer, &wire::GetAppEntryMessageRsp::set_code, head.code);
    SetText(answer, &wire::GetAppEntryMessageRsp::mutable_message, head.message);
    if (vip) {
        wire::AppEntryMessageData& data = *answer.mutable_data();
        SetField(data, &wire::AppEntryMessageData::set_has_vip_qualification, vip->qualification);
        if (vip->basic) {
            Fill(*data.mutable_vip_basic_data(), *vip->basic);
        }
        if (vip->entry) {
            Fill(*data.mutable_app_entry_message(), *vip->entry);
        }
    }
    return {kErrorNone, answer.SerializeAsString()};
}

}  // namespace devserver
