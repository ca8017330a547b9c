#include "Premium/Model/ZRPremiumWire.h"

#include "premium_svr.pb.h"

namespace premium_wire {
namespace {

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), int(text.size()));
}

void ReadState(const web_premium_access::AccessData& wire, CPremiumAccessData& state) {
    state.enAccess = EnPremiumAccess(wire.access());
    if (wire.has_has_permission()) {
        state.bHasPermission = wire.has_permission();
    }
    if (wire.has_days_left()) {
        state.nDaysLeft = wire.days_left();
    }
    if (wire.has_activation_type()) {
        state.nActivationType = wire.activation_type();
    }
    if (wire.has_activation_source()) {
        state.nActivationSource = wire.activation_source();
    }
}

void ReadTexts(const web_premium_access::UiText& wire, CPremiumUIData& display) {
    if (wire.has_main_title()) {
        display.strMainTitle = FromUtf8(wire.main_title());
    }
    if (wire.has_main_btn()) {
        display.strMainBtn = FromUtf8(wire.main_btn());
    }
    if (wire.has_detail_title()) {
        display.strDetailTitle = FromUtf8(wire.detail_title());
    }
    if (wire.has_detail_sub_title()) {
        display.strDetailSubTitle = FromUtf8(wire.detail_sub_title());
    }
    if (wire.has_detail_btn()) {
        display.strDetailBtn = FromUtf8(wire.detail_btn());
    }
    if (wire.has_detail_sub_btn()) {
        display.strDetailSubBtn = FromUtf8(wire.detail_sub_btn());
    }
}

void ReadLinks(const web_premium_access::JumpUrlID& wire, CPremiumUIData& display) {
    if (wire.has_main_btn_url()) {
        display.nMainBtnUrlID = wire.main_btn_url();
    }
    if (wire.has_detail_btn_url()) {
        display.nDetailBtnUrlID = wire.detail_btn_url();
    }
    if (wire.has_detail_sub_btn_url()) {
        display.nDetailSubBtnUrlID = wire.detail_sub_btn_url();
    }
}

void ReadDisplay(const web_premium_access::UiData& wire, CPremiumUIData& display) {
    display.enUIAccess = EnPremiumAccess(wire.access());
    if (wire.has_ui_type()) {
        display.strUIType = FromUtf8(wire.ui_type());
    }
    if (wire.has_other_info()) {
        display.strOtherInfo = FromUtf8(wire.other_info());
    }
    if (wire.has_ui_text()) {
        ReadTexts(wire.ui_text(), display);
    }
    if (wire.has_jump_url_msg()) {
        ReadLinks(wire.jump_url_msg(), display);
    }
}

void WriteDisplay(const CPremiumUIData& display, web_premium_access::UiData& wire) {
    wire.set_access(display.enUIAccess);
    wire.set_ui_type(display.strUIType.toStdString());
    wire.set_other_info(display.strOtherInfo.toStdString());
    web_premium_access::UiText& texts = *wire.mutable_ui_text();
    texts.set_main_title(display.strMainTitle.toStdString());
    texts.set_main_btn(display.strMainBtn.toStdString());
    texts.set_detail_title(display.strDetailTitle.toStdString());
    texts.set_detail_sub_title(display.strDetailSubTitle.toStdString());
    texts.set_detail_btn(display.strDetailBtn.toStdString());
    texts.set_detail_sub_btn(display.strDetailSubBtn.toStdString());
    web_premium_access::JumpUrlID& links = *wire.mutable_jump_url_msg();
    links.set_main_btn_url(display.nMainBtnUrlID);
    links.set_detail_btn_url(display.nDetailBtnUrlID);
    links.set_detail_sub_btn_url(display.nDetailSubBtnUrlID);
}

// It is intended that the source of an activation is not saved: only the server reports it.
void WriteState(const CPremiumAccessData& state, web_premium_access::AccessData& wire) {
    wire.set_access(state.enAccess);
    wire.set_has_permission(state.bHasPermission);
    wire.set_activation_type(state.nActivationType);
    wire.set_days_left(state.nDaysLeft);
}

// Returns whether a half that is present belongs to the same right as its element.
template <class Half>
bool IsOfRight(const Half& half, int32_t access) {
    return half.has_access() && half.access() == access;
}

}  // namespace

std::optional<CPremiumUIAccessData> ReadRecord(const web_premium_access::UiDataAndAccessData& element) {
    if (!element.has_access()) {
        return std::nullopt;
    }
    if (element.has_access_data() && !IsOfRight(element.access_data(), element.access())) {
        return std::nullopt;
    }
    if (element.has_ui_data() && !IsOfRight(element.ui_data(), element.access())) {
        return std::nullopt;
    }
    std::optional<CPremiumUIAccessData> record(std::in_place);
    if (element.has_access_data()) {
        ReadState(element.access_data(), *record);
    }
    if (element.has_ui_data()) {
        ReadDisplay(element.ui_data(), *record);
    }
    return record;
}

void WriteRecord(EnPremiumAccess access, const CPremiumUIAccessData& record,
                 web_premium_access::UiDataAndAccessData& element) {
    element.set_access(access);
    if (record.enUIAccess != 0) {
        WriteDisplay(record, *element.mutable_ui_data());
    }
    if (record.enAccess != 0) {
        WriteState(record, *element.mutable_access_data());
    }
}

}  // namespace premium_wire
