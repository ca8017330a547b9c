#include "PremiumAnswer.h"

#include <gmock/gmock.h>

#include "RowName.h"
#include "premium_svr.pb.h"

namespace {

using namespace web_premium_access;
using devserver::AnswerCommand;
using devserver::CommandAnswer;
using devserver::CScenario;
using devserver::Errors;
using devserver::Language;
using testing::ElementsAre;

constexpr uint32_t kCommand = 20637;

// Right 13 is shown in all languages, 15 in English only, 4 without texts; 99 is not in the catalogue.
constexpr const char* kCatalogue = R"([
    {"access": 13, "uiType": "D", "otherInfo": {"b": [1, "é"], "a": null},
     "links": {"mainBtn": 11, "detailBtn": 0, "detailSubBtn": -3},
     "texts": {"en": {"mainTitle": "title", "mainBtn": "button", "detailTitle": "detail", "detailSubTitle": "sub",
                      "detailBtn": "detail button", "detailSubBtn": "sub button"},
               "zh-Hans": {"mainTitle": "简"}, "zh-Hant": {"mainTitle": "繁"}, "ja": {"mainTitle": "日"},
               "fr": {"mainTitle": "fr", "mainBtn": ""}}},
    {"access": 15, "otherInfo": "{not JSON", "links": {"detailBtn": 5}, "texts": {"en": {"mainTitle": "fifteen"}}},
    {"access": 4}])";

constexpr const char* kRights = R"({"rights": [
    {"access": 99, "hasPermission": false, "activationType": 1, "daysLeft": 0, "activationSource": 2},
    {"access": 13, "hasPermission": true, "activationType": -1, "daysLeft": -2, "activationSource": -3},
    {"access": 15, "display": false, "activationType": 3},
    {"access": 4, "state": false, "hasPermission": true, "daysLeft": 9}]})";

class PremiumAnswerTest : public testing::Test {
protected:
    PremiumAnswerTest() { Use(kRights); }

    // Sets or removes the premium member of the user.
    void Use(const std::string& premium) {
        const std::string member = premium.empty() ? "" : ",\"premium\":" + premium;
        Errors errors;
        scenario = CScenario::FromText(R"({"schema":1,"rights":)" + std::string(kCatalogue) +
                                           R"(,"users":[{"id":1,"name":"Ann")" + member + R"(}],"commonConfig":{}})",
                                       errors);
        ASSERT_TRUE(scenario) << testing::PrintToString(errors);
    }

    CommandAnswer AnswerBytes(const std::string& body, Language language = Language::English) {
        return AnswerCommand(kCommand, {*scenario, scenario->Users()[0], language}, body);
    }

    GetUiMsgAndPremiumAccessRsp AnswerTo(const std::string& body, Language language = Language::English) {
        const CommandAnswer bytes = AnswerBytes(body, language);
        EXPECT_EQ(bytes.error, 0);
        GetUiMsgAndPremiumAccessRsp answer;
        EXPECT_TRUE(answer.ParseFromString(bytes.body));
        return answer;
    }

    std::vector<int> RightsFor(const std::string& body) {
        const GetUiMsgAndPremiumAccessRsp answer = AnswerTo(body);
        EXPECT_TRUE(answer.has_data());
        std::vector<int> rights;
        for (const UiDataAndAccessData& element : answer.data().ui_data_and_access_data()) {
            rights.push_back(element.access());
        }
        return rights;
    }

    UiDataAndAccessData OnlyElement(int32_t access, Language language = Language::English) {
        GetUiMsgAndPremiumAccessReq request;
        request.add_access_list(access);
        const GetUiMsgAndPremiumAccessRsp answer = AnswerTo(request.SerializeAsString(), language);
        EXPECT_EQ(answer.data().ui_data_and_access_data_size(), 1);
        return answer.data().ui_data_and_access_data(0);
    }

    std::optional<CScenario> scenario;
};

TEST_F(PremiumAnswerTest, AllRightsComeInTheScenariosOrderWhateverTheListSays) {
    EXPECT_THAT(RightsFor("\x08\x01"), ElementsAre(99, 13, 15, 4));
    EXPECT_THAT(RightsFor("\x08\x01\x10\x0d"), ElementsAre(99, 13, 15, 4));
}

TEST_F(PremiumAnswerTest, AListIsAnsweredInItsOwnOrderOncePerMentionAndWithoutWhatTheUserLacks) {
    GetUiMsgAndPremiumAccessReq request;
    for (const int access : {15, 7, 13, 15, -1, 99}) {
        request.add_access_list(access);
    }

    EXPECT_THAT(RightsFor(request.SerializeAsString()), ElementsAre(15, 13, 15, 99));
    request.set_need_all_access(false);
    EXPECT_THAT(RightsFor(request.SerializeAsString()), ElementsAre(15, 13, 15, 99));
}

TEST_F(PremiumAnswerTest, APackedListIsReadAsWell) {
    EXPECT_THAT(RightsFor(std::string("\x08\x00\x12\x02\x04\x0d", 6)), ElementsAre(4, 13));
}

TEST_F(PremiumAnswerTest, NothingAskedForIsAnsweredByEmptyData) {
    EXPECT_THAT(RightsFor(""), ElementsAre());
}

TEST_F(PremiumAnswerTest, ARightThatTheUserHasTwiceComesTwiceInAllAndAsTheFirstInAList) {
    Use(R"({"rights":[{"access":4,"daysLeft":1},{"access":4,"daysLeft":2}]})");

    EXPECT_THAT(RightsFor("\x08\x01"), ElementsAre(4, 4));
    EXPECT_EQ(OnlyElement(4).access_data().days_left(), 1);
}

TEST_F(PremiumAnswerTest, AnElementHoldsTheStateAndWhatTheCatalogueShows) {
    const UiDataAndAccessData element = OnlyElement(13);

    const AccessData& state = element.access_data();
    EXPECT_EQ(state.access(), 13);
    EXPECT_TRUE(state.has_permission());
    EXPECT_EQ(state.activation_type(), -1);
    EXPECT_EQ(state.days_left(), -2);
    EXPECT_EQ(state.activation_source(), -3);
    const UiData& ui = element.ui_data();
    EXPECT_EQ(ui.access(), 13);
    EXPECT_EQ(ui.ui_type(), "D");
    EXPECT_EQ(ui.other_info(), R"({"a":null,"b":[1,"é"]})");
    EXPECT_EQ(ui.jump_url_msg().main_btn_url(), 11);
    EXPECT_TRUE(ui.jump_url_msg().has_detail_btn_url());
    EXPECT_EQ(ui.jump_url_msg().detail_btn_url(), 0);
    EXPECT_EQ(ui.jump_url_msg().detail_sub_btn_url(), -3);
    EXPECT_EQ(ui.ui_text().main_title(), "title");
    EXPECT_EQ(ui.ui_text().main_btn(), "button");
    EXPECT_EQ(ui.ui_text().detail_title(), "detail");
    EXPECT_EQ(ui.ui_text().detail_sub_title(), "sub");
    EXPECT_EQ(ui.ui_text().detail_btn(), "detail button");
    EXPECT_EQ(ui.ui_text().detail_sub_btn(), "sub button");
}

TEST_F(PremiumAnswerTest, WhatTheScenarioLeavesOutIsAbsent) {
    const UiDataAndAccessData unknown = OnlyElement(99);
    EXPECT_FALSE(unknown.has_ui_data());
    EXPECT_TRUE(unknown.access_data().has_has_permission());
    EXPECT_TRUE(unknown.access_data().has_days_left());

    const UiDataAndAccessData notShown = OnlyElement(15);
    EXPECT_FALSE(notShown.has_ui_data());
    EXPECT_FALSE(notShown.access_data().has_has_permission());
    EXPECT_TRUE(notShown.access_data().has_activation_type());
    EXPECT_FALSE(notShown.access_data().has_days_left());
    EXPECT_FALSE(notShown.access_data().has_activation_source());

    const UiDataAndAccessData stateless = OnlyElement(4);
    EXPECT_FALSE(stateless.has_access_data());
    EXPECT_EQ(stateless.ui_data().SerializeAsString(), "\x08\x04");
}

TEST_F(PremiumAnswerTest, ATextAsOtherInfoGoesOutAsItStandsAndAbsentLinksStayAbsent) {
    Use(R"({"rights":[{"access":15}]})");

    const UiData ui = OnlyElement(15).ui_data();

    EXPECT_EQ(ui.other_info(), "{not JSON");
    EXPECT_FALSE(ui.has_ui_type());
    EXPECT_FALSE(ui.jump_url_msg().has_main_btn_url());
    EXPECT_EQ(ui.jump_url_msg().detail_btn_url(), 5);
    EXPECT_FALSE(ui.jump_url_msg().has_detail_sub_btn_url());
}

struct TitleRow {
    const char* name;
    const char* state;
    int vipVersion;
    Language language;
    const char* title;
    const char* detailTitle;
};

class PremiumTitleTest : public PremiumAnswerTest, public testing::WithParamInterface<TitleRow> {};

TEST_P(PremiumTitleTest, TitleEndsForTheDaysThatAnOlderClientAppends) {
    const TitleRow& row = GetParam();
    Use(R"({"rights":[{"access":13,)" + std::string(row.state) + R"(}]},"vip":{"basic":{"version":)" +
        std::to_string(row.vipVersion) + "}}");

    const UiText text = OnlyElement(13, row.language).ui_data().ui_text();

    EXPECT_EQ(text.main_title(), row.title);
    EXPECT_EQ(text.detail_title(), row.detailTitle);
    EXPECT_EQ(text.has_detail_sub_title(), row.language == Language::English);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PremiumTitleTest,
    testing::Values(
        TitleRow{"limited", R"("activationType":1,"daysLeft":0)", 0, Language::English, "title: ", "detail: "},
        TitleRow{"French", R"("activationType":1,"daysLeft":5)", 0, Language::French, "fr : ", ""},
        TitleRow{"Japanese", R"("activationType":1,"daysLeft":5)", 0, Language::Japanese, "日：", ""},
        TitleRow{"withoutDays", R"("activationType":1,"daysLeft":-1)", 0, Language::English, "title", "detail"},
        TitleRow{"otherType", R"("activationType":2,"daysLeft":5)", 0, Language::English, "title", "detail"},
        TitleRow{"newerSystem", R"("activationType":1,"daysLeft":5)", 1, Language::English, "title", "detail"},
        TitleRow{"noState", R"("state":false,"activationType":1,"daysLeft":5)", 0, Language::English, "title",
                 "detail"}),
    RowName());

struct LanguageRow {
    const char* name;
    Language language;
    const char* title;
    bool hasButton;
};

class PremiumLanguageTest : public PremiumAnswerTest, public testing::WithParamInterface<LanguageRow> {};

TEST_P(PremiumLanguageTest, TextsAreInTheLanguageOrInEnglish) {
    const LanguageRow& row = GetParam();

    const UiText text = OnlyElement(13, row.language).ui_data().ui_text();
    EXPECT_EQ(text.main_title(), row.title);
    // English replaces a missing language, not a missing text.
    EXPECT_EQ(text.has_main_btn(), row.hasButton);
    EXPECT_EQ(text.has_detail_sub_btn(), row.language == Language::English);

    Use(R"({"rights":[{"access":15}]})");
    EXPECT_EQ(OnlyElement(15, row.language).ui_data().ui_text().main_title(), "fifteen");
}

INSTANTIATE_TEST_SUITE_P(Rows, PremiumLanguageTest,
                         testing::Values(LanguageRow{"English", Language::English, "title", true},
                                         LanguageRow{"SimplifiedChinese", Language::SimplifiedChinese, "简", false},
                                         LanguageRow{"TraditionalChinese", Language::TraditionalChinese, "繁", false},
                                         LanguageRow{"Japanese", Language::Japanese, "日", false},
                                         LanguageRow{"French", Language::French, "fr", true}),
                         RowName());

struct HeadRow {
    const char* name;
    const char* premium;
    const char* body;  // bytes of the answer
    size_t size;
};

class PremiumHeadTest : public PremiumAnswerTest, public testing::WithParamInterface<HeadRow> {};

TEST_P(PremiumHeadTest, IsAsTheScenarioSays) {
    Use(GetParam().premium);

    const CommandAnswer answer = AnswerBytes("\x08\x01");

    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.body, std::string(GetParam().body, GetParam().size));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PremiumHeadTest,
    testing::Values(HeadRow{"NoPremium", "", "\x08\x00", 2}, HeadRow{"Empty", "{}", "\x08\x00\x1a\x00", 4},
                    HeadRow{"EmptyRights", R"({"rights":[]})", "\x08\x00\x1a\x00", 4},
                    HeadRow{"NoCode", R"({"code":null})", "\x1a\x00", 2},
                    HeadRow{"NoCodeNoData", R"({"code":null,"data":false})", "", 0},
                    HeadRow{"Code", R"({"code":5,"data":false})", "\x08\x05", 2},
                    HeadRow{"NegativeCode", R"({"code":-1,"data":false})",
                            "\x08\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", 11},
                    HeadRow{"Message", R"({"message":"m","data":false})", "\x08\x00\x12\x01m", 5},
                    HeadRow{"EmptyMessage", R"({"message":"","data":false})", "\x08\x00\x12\x00", 4},
                    HeadRow{"NoDataInSpiteOfRights", R"({"data":false,"rights":[{"access":1}]})", "\x08\x00", 2}),
    RowName());

TEST_F(PremiumAnswerTest, ABodyThatIsNoRequestIsRefused) {
    EXPECT_EQ(AnswerBytes("\xff").error, devserver::kErrorBadBody);
}

TEST_F(PremiumAnswerTest, AListThatAsksForMoreThanAnAnswerMayHoldIsRefused) {
    GetUiMsgAndPremiumAccessReq request;
    for (int i = 0; i < 2'000'000; ++i) {
        request.add_access_list(13);
    }

    const CommandAnswer answer = AnswerBytes(request.SerializeAsString());

    EXPECT_EQ(answer.error, devserver::kErrorTooLarge);
    EXPECT_EQ(answer.body, "");
}

}  // namespace
