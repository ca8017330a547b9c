#include "Premium/PremiumTest.h"

#include <ostream>
#include <tuple>

namespace {

auto Fields(const CPremiumUIData& display) {
    return std::tie(display.enUIAccess, display.strUIType, display.strOtherInfo, display.strMainTitle,
                    display.strMainBtn, display.strDetailTitle, display.strDetailBtn, display.strDetailSubBtn,
                    display.strDetailSubTitle, display.nMainBtnUrlID, display.nDetailBtnUrlID,
                    display.nDetailSubBtnUrlID);
}

auto Fields(const CPremiumAccessData& state) {
    return std::tie(state.nDaysLeft, state.enAccess, state.bHasPermission, state.nActivationType,
                    state.nActivationSource);
}

// With letters of two and of three bytes.
std::string Text(const char* field, int right, int version) {
    return std::string("Titré 权 ") + field + " " + std::to_string(right) + "." + std::to_string(version);
}

QString Shown(const char* field, int right, int version) {
    return QString::fromStdString(Text(field, right, version));
}

}  // namespace

bool operator==(const CPremiumUIData& left, const CPremiumUIData& right) {
    return Fields(left) == Fields(right);
}

bool operator==(const CPremiumAccessData& left, const CPremiumAccessData& right) {
    return Fields(left) == Fields(right);
}

bool operator==(const CPremiumUIAccessData& left, const CPremiumUIAccessData& right) {
    return static_cast<const CPremiumUIData&>(left) == static_cast<const CPremiumUIData&>(right) &&
           static_cast<const CPremiumAccessData&>(left) == static_cast<const CPremiumAccessData&>(right);
}

std::ostream& operator<<(std::ostream& stream, const CPremiumUIData& display) {
    stream << "display of " << int(display.enUIAccess);
    for (const QString* text :
         {&display.strUIType, &display.strOtherInfo, &display.strMainTitle, &display.strMainBtn,
          &display.strDetailTitle, &display.strDetailBtn, &display.strDetailSubBtn, &display.strDetailSubTitle}) {
        stream << ", " << ::testing::PrintToString(text->left(60).toStdString());
    }
    return stream << ", " << display.nMainBtnUrlID << ", " << display.nDetailBtnUrlID << ", "
                  << display.nDetailSubBtnUrlID;
}

std::ostream& operator<<(std::ostream& stream, const CPremiumAccessData& state) {
    return stream << "state of " << int(state.enAccess) << ", permission " << state.bHasPermission << ", type "
                  << state.nActivationType << ", source " << state.nActivationSource << ", days " << state.nDaysLeft;
}

std::ostream& operator<<(std::ostream& stream, const CPremiumUIAccessData& record) {
    return stream << static_cast<const CPremiumUIData&>(record) << "; "
                  << static_cast<const CPremiumAccessData&>(record);
}

CPremiumUIAccessData Record(int right, int version) {
    CPremiumUIAccessData record;
    record.enUIAccess = Right(right);
    record.strUIType = Shown("type", right, version);
    record.strOtherInfo = Shown("info", right, version);
    record.strMainTitle = Shown("main title", right, version);
    record.strMainBtn = Shown("main button", right, version);
    record.strDetailTitle = Shown("detail title", right, version);
    record.strDetailBtn = Shown("detail button", right, version);
    record.strDetailSubBtn = Shown("detail sub button", right, version);
    record.strDetailSubTitle = Shown("detail sub title", right, version);
    record.nMainBtnUrlID = version * 10 + 1;
    record.nDetailBtnUrlID = version * 10 + 2;
    record.nDetailSubBtnUrlID = version * 10 + 3;
    record.enAccess = Right(right);
    record.bHasPermission = true;
    record.nDaysLeft = version * 10 + 4;
    record.nActivationType = version * 10 + 5;
    record.nActivationSource = version * 10 + 6;
    return record;
}

void Write(int right, int version, PremiumElement& element) {
    element.set_access(right);
    web_premium_access::UiData& display = *element.mutable_ui_data();
    display.set_access(right);
    display.set_ui_type(Text("type", right, version));
    display.set_other_info(Text("info", right, version));
    web_premium_access::UiText& texts = *display.mutable_ui_text();
    texts.set_main_title(Text("main title", right, version));
    texts.set_main_btn(Text("main button", right, version));
    texts.set_detail_title(Text("detail title", right, version));
    texts.set_detail_btn(Text("detail button", right, version));
    texts.set_detail_sub_btn(Text("detail sub button", right, version));
    texts.set_detail_sub_title(Text("detail sub title", right, version));
    display.mutable_jump_url_msg()->set_main_btn_url(version * 10 + 1);
    display.mutable_jump_url_msg()->set_detail_btn_url(version * 10 + 2);
    display.mutable_jump_url_msg()->set_detail_sub_btn_url(version * 10 + 3);
    web_premium_access::AccessData& state = *element.mutable_access_data();
    state.set_access(right);
    state.set_has_permission(true);
    state.set_days_left(version * 10 + 4);
    state.set_activation_type(version * 10 + 5);
    state.set_activation_source(version * 10 + 6);
}

PremiumAnswer Answer(const std::vector<int>& rights, int version) {
    PremiumAnswer answer;
    answer.set_code(0);
    for (const int right : rights) {
        Write(right, version, *answer.mutable_data()->add_ui_data_and_access_data());
    }
    return answer;
}

PremiumTable Table(const std::vector<int>& rights, int version) {
    PremiumTable table;
    for (const int right : rights) {
        table.insert(Right(right), Record(right, version));
    }
    return table;
}

// Written out here once more, so that the bytes of the tests are not those of the code under test.
std::string SavedBytes(const PremiumTable& table) {
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    for (auto it = table.begin(); it != table.end(); ++it) {
        PremiumElement& element = *saved.add_ui_data_and_access_data();
        element.set_access(it.key());
        if (it->enUIAccess != 0) {
            web_premium_access::UiData& display = *element.mutable_ui_data();
            display.set_access(it->enUIAccess);
            display.set_ui_type(it->strUIType.toStdString());
            display.set_other_info(it->strOtherInfo.toStdString());
            web_premium_access::UiText& texts = *display.mutable_ui_text();
            texts.set_main_title(it->strMainTitle.toStdString());
            texts.set_main_btn(it->strMainBtn.toStdString());
            texts.set_detail_title(it->strDetailTitle.toStdString());
            texts.set_detail_sub_title(it->strDetailSubTitle.toStdString());
            texts.set_detail_btn(it->strDetailBtn.toStdString());
            texts.set_detail_sub_btn(it->strDetailSubBtn.toStdString());
            display.mutable_jump_url_msg()->set_main_btn_url(it->nMainBtnUrlID);
            display.mutable_jump_url_msg()->set_detail_btn_url(it->nDetailBtnUrlID);
            display.mutable_jump_url_msg()->set_detail_sub_btn_url(it->nDetailSubBtnUrlID);
        }
        if (it->enAccess != 0) {
            web_premium_access::AccessData& state = *element.mutable_access_data();
            state.set_access(it->enAccess);
            state.set_has_permission(it->bHasPermission);
            state.set_activation_type(it->nActivationType);
            state.set_days_left(it->nDaysLeft);
        }
    }
    return saved.SerializeAsString();
}

std::vector<int> Rights(const PremiumTable& table) {
    const auto keys = table.keys();
    return {keys.begin(), keys.end()};
}

PremiumTest::PremiumTest() {
    account.Set(kUser);
    manager->Init();
    // If a process runs several cases, the last handler is the current one.
    handler = manager->findChildren<CZRPremiumDataHandler*>().last();
    log.Forget();
}

unsigned long PremiumTest::ServerAnswers(const PremiumAnswer& answer, bool serverPush) {
    const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(serverPush);
    channel.Reply(session, kRequest, answer);
    return session;
}

void PremiumTest::TableHolds(const std::vector<int>& rights) {
    ServerAnswers(Answer(rights));
    ASSERT_EQ(manager->GetUIAccessData(), Table(rights));
    Forget();
}

void PremiumTest::Forget() {
    channel.Forget();
    bus.Forget();
    store.Forget();
    log.Forget();
    poster.Forget();
}
