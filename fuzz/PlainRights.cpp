#include "PlainRights.h"

#include <fmt/format.h>

namespace {

// The text as the client decodes it.
std::string Read(const std::string& bytes) {
    return QString::fromUtf8(bytes.data(), int(bytes.size())).toStdString();
}

std::string Display(int access, const std::string& type, const std::string& info, const std::string& texts,
                    const std::string& links) {
    return fmt::format("display {} | {} | {} | {} | {}", access, type, info, texts, links);
}

std::string State(int access, bool permission, int type, int days, int source) {
    return fmt::format("state {} {} {} {} {}", access, permission, type, days, source);
}

std::string NoDisplay() {
    return Display(0, "", "", " |  |  |  |  | ", "0 0 0");
}

}  // namespace

PlainRights ExpectedRights(
    const google::protobuf::RepeatedPtrField<web_premium_access::UiDataAndAccessData>& elements) {
    PlainRights rights;
    for (const auto& element : elements) {
        const auto& display = element.ui_data();
        const auto& state = element.access_data();
        const bool displayFits =
            !element.has_ui_data() || (display.has_access() && display.access() == element.access());
        const bool stateFits = !element.has_access_data() || (state.has_access() && state.access() == element.access());
        if (!element.has_access() || !displayFits || !stateFits) {
            continue;
        }
        const auto& texts = display.ui_text();
        const auto& links = display.jump_url_msg();
        const std::string displayText =
            Display(display.access(), Read(display.ui_type()), Read(display.other_info()),
                    fmt::format("{} | {} | {} | {} | {} | {}", Read(texts.main_title()), Read(texts.main_btn()),
                                Read(texts.detail_title()), Read(texts.detail_sub_title()), Read(texts.detail_btn()),
                                Read(texts.detail_sub_btn())),
                    fmt::format("{} {} {}", links.main_btn_url(), links.detail_btn_url(), links.detail_sub_btn_url()));
        rights[element.access()] = (element.has_ui_data() ? displayText : NoDisplay()) + " / " +
                                   State(state.access(), state.has_permission(), state.activation_type(),
                                         state.days_left(), state.activation_source());
    }
    return rights;
}

PlainRights ActualRights(const QMap<EnPremiumAccess, CPremiumUIAccessData>& table) {
    PlainRights rights;
    for (auto right = table.begin(); right != table.end(); ++right) {
        const CPremiumUIAccessData& record = right.value();
        const std::string texts = fmt::format("{} | {} | {} | {} | {} | {}", record.strMainTitle.toStdString(),
                                              record.strMainBtn.toStdString(), record.strDetailTitle.toStdString(),
                                              record.strDetailSubTitle.toStdString(), record.strDetailBtn.toStdString(),
                                              record.strDetailSubBtn.toStdString());
        rights[right.key()] =
            Display(record.enUIAccess, record.strUIType.toStdString(), record.strOtherInfo.toStdString(), texts,
                    fmt::format("{} {} {}", record.nMainBtnUrlID, record.nDetailBtnUrlID, record.nDetailSubBtnUrlID)) +
            " / " +
            State(record.enAccess, record.bHasPermission, record.nActivationType, record.nDaysLeft,
                  record.nActivationSource);
    }
    return rights;
}
