#include "AdAnswer.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::AdQuery;
using devserver::AnswerAdCheck;
using devserver::AnswerAdSearch;
using devserver::Audience;
using devserver::CScenario;
using devserver::Errors;
using devserver::Exposure;
using devserver::Language;
using devserver::WriteJson;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int64_t kNow = 1'700'000'000;

class AdAnswerTest : public testing::Test {
protected:
    static AdQuery Query(int32_t type, int32_t position, const std::vector<std::string>& ids = {}) {
        AdQuery query;
        query.set_ad_type(type);
        query.set_ad_position(position);
        *query.mutable_ad_id() = {ids.begin(), ids.end()};
        return query;
    }

    static CScenario WithSlots(const std::string& slots) {
        Errors errors;
        auto scenario =
            CScenario::FromText(R"({"schema":1,"users":[],"commonConfig":{},"ads":[)" + slots + "]}", errors);
        EXPECT_THAT(errors, IsEmpty());
        return std::move(scenario).value();
    }

    static CScenario WithCampaigns(const std::string& campaigns) {
        return WithSlots(R"({"adType":3,"adPosition":7,"enableClose":true,"campaigns":[)" + campaigns + "]}");
    }

    static std::string Campaign(const std::string& id, const std::string& window, const std::string& more = {}) {
        return R"({"id":")" + id + R"(","image":"a.png","schema":"s",)" + more + window + "}";
    }

    static std::vector<std::string> Ids(const Json::Value& answer) {
        std::vector<std::string> ids;
        for (const Json::Value& ad : answer["data"]["ad"]) {
            ids.push_back(ad["ad_id"].asString());
        }
        return ids;
    }

    static std::vector<std::string> Found(const CScenario& scenario, const Audience& audience = {}) {
        return Ids(AnswerAdSearch(Query(3, 7), audience, {scenario, kNow, "http://a/"}));
    }
};

TEST_F(AdAnswerTest, PopupHasAllTheFieldsOfTheWire) {
    const CScenario scenario = WithSlots(R"({"adType":2,"adPosition":42,"showDuration":10,"showInterval":3600,
        "showIntervalType":1,"enableClose":true,"campaigns":[{"id":"18088","name":"open_account","pushId":"p",
        "startInS":-5,"end":1800000000,"expireInS":60,"image":"card.png","schema":"zrclient://a","popupType":3,
        "showAreas":[508,500]}]})");

    EXPECT_EQ(WriteJson(AnswerAdSearch(Query(2, 42), {}, {scenario, kNow, "http://a/pictures/"})),
              R"({"code":0,"data":{"ad":[{"ad_id":"18088","end_time":1800000000,"expire_time":1700000060,)"
              R"("name":"open_account","popup_ad":{"bottom_popup":{"img":"http://a/pictures/card.png",)"
              R"("schema":"zrclient://a"},"popup_type":3,"show_areas":[508,500]},"push_id":"p",)"
              R"("start_time":1699999995}],"ad_position":42,"ad_type":2,"enable_close":true,"show_duration":10,)"
              R"("show_interval":3600,"show_interval_type":1},"message":""})");
}

TEST_F(AdAnswerTest, BannerHasAllTheFieldsOfTheWireAndAWholeUrlStaysAsItIs) {
    const CScenario scenario = WithSlots(R"({"adType":3,"adPosition":7,"enableClose":false,"bannerPosition":
        {"bannerType":2,"carouselInterval":5,"materialScale":"6:1","materialCorner":"8"},"campaigns":[
        {"id":"1","start":1,"endInS":0,"expireInS":0,"image":"https://a.example/b.png","schema":"s"}]})");

    EXPECT_EQ(WriteJson(AnswerAdSearch(Query(3, 7), {}, {scenario, kNow, "http://a/"})),
              R"({"code":0,"data":{"ad":[{"ad_id":"1","banner_ad":{"img":"https://a.example/b.png","schema":"s"},)"
              R"("end_time":1700000000,"expire_time":1700000000,"start_time":1}],"ad_position":7,"ad_type":3,)"
              R"("banner_position":{"banner_type":2,"carousel_interval":5,"material_corner":"8",)"
              R"("material_scale":"6:1"},"enable_close":false},"message":""})");
}

TEST_F(AdAnswerTest, PlaceThatTheScenarioDoesNotHaveIsEmptyAndWhole) {
    const CScenario scenario = WithCampaigns(Campaign("a", R"("start":0,"endInS":0,"expireInS":0)"));
    const std::string empty = R"({"code":0,"data":{"ad":[],"ad_position":7,"ad_type":2,"enable_close":false,)"
                              R"("show_duration":0,"show_interval":0,"show_interval_type":0},"message":""})";

    EXPECT_EQ(WriteJson(AnswerAdSearch(Query(2, 7), {}, {scenario, kNow, ""})), empty);
    EXPECT_EQ(WriteJson(AnswerAdCheck(Query(2, 7, {"a"}), {scenario, kNow, ""})), empty);
}

TEST_F(AdAnswerTest, SearchFindsWhatIsInItsThreeWindowsEndsIncluded) {
    const CScenario scenario =
        WithCampaigns(Campaign("atItsStart", R"("startInS":0,"endInS":9,"expireInS":9)") + "," +
                      Campaign("early", R"("startInS":1,"endInS":9,"expireInS":9)") + "," +
                      Campaign("atItsEnd", R"("startInS":-9,"end":1700000000,"expireInS":9)") + "," +
                      Campaign("over", R"("startInS":-9,"end":1699999999,"expireInS":9)") + "," +
                      Campaign("atItsExpiry", R"("startInS":-9,"endInS":9,"expireInS":0)") + "," +
                      Campaign("expired", R"("startInS":-9,"endInS":9,"expireInS":-1)"));

    EXPECT_THAT(Found(scenario), ElementsAre("atItsStart", "atItsEnd", "atItsExpiry"));
}

TEST_F(AdAnswerTest, SearchFindsWhatIsForTheAudience) {
    const std::string due = R"("startInS":0,"endInS":9,"expireInS":9)";
    const CScenario scenario =
        WithCampaigns(Campaign("all", due) + "," + Campaign("french", due, R"("languages":["ja","fr"],)") + "," +
                      Campaign("ann", due, R"("users":[1,3],)") + "," +
                      Campaign("frenchAnn", due, R"("languages":["fr"],"users":[1],)"));

    EXPECT_THAT(Found(scenario), ElementsAre("all"));
    EXPECT_THAT(Found(scenario, {1, Language::English}), ElementsAre("all", "ann"));
    EXPECT_THAT(Found(scenario, {2, Language::Japanese}), ElementsAre("all", "french"));
    EXPECT_THAT(Found(scenario, {1, Language::French}), ElementsAre("all", "french", "ann", "frenchAnn"));
}

TEST_F(AdAnswerTest, CheckFindsWhatIsNamedInItsOrderWheneverAndForWhomeverItIs) {
    const CScenario scenario =
        WithCampaigns(Campaign("over", R"("startInS":-9,"endInS":-1,"expireInS":-1)") + "," +
                      Campaign("due", R"("startInS":-9,"endInS":9,"expireInS":9)") + "," +
                      Campaign("ann", R"("startInS":-9,"endInS":9,"expireInS":9)", R"("users":[1],)"));
    const auto check = [&](const std::vector<std::string>& ids) {
        return Ids(AnswerAdCheck(Query(3, 7, ids), {scenario, kNow, ""}));
    };

    EXPECT_THAT(check({"ann", "nowhere", "over"}), ElementsAre("ann", "over"));
    EXPECT_THAT(check({"due", "due"}), ElementsAre("due", "due"));
    EXPECT_THAT(check({}), IsEmpty());
}

struct BadRow {
    const char* name;
    const char* text;
    const char* error;
};

class BadAdQueryTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadAdQueryTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(devserver::ReadText<AdQuery>(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadAdQueryTest,
    testing::Values(
        BadRow{"NoType", R"({"ad_position":1,"request_id":"r"})", "ad_type: missing"},
        BadRow{"PositionText", R"({"ad_type":1,"ad_position":"x","request_id":"r"})",
               "ad_position: must be a whole number from -2147483648 to 2147483647"},
        BadRow{"RequestIdEmpty", R"({"ad_type":1,"ad_position":1,"request_id":""})", "request_id: must not be empty"},
        BadRow{"IdNumber", R"({"ad_type":1,"ad_position":1,"request_id":"r","ad_id":[18088]})",
               "ad_id[0]: must be a text"},
        BadRow{"UnknownKey", R"({"ad_type":1,"ad_position":1,"request_id":"r","ad_ids":[]})", "ad_ids: unknown key"}),
    RowName());

TEST(AdExposureTest, HasTheAdsThatWereExposed) {
    Errors errors;

    const auto exposure =
        devserver::ReadText<Exposure>(R"({"ad_type":2,"ad_position":42,"ad_id":["a","b"],"expose_id":"","push_id":["p"],
                                  "expose_duration":-9223372036854775808})",
                                      errors);

    ASSERT_TRUE(exposure) << testing::PrintToString(errors);
    EXPECT_THAT(exposure->ad_id(), ElementsAre("a", "b"));
}

class BadExposureTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadExposureTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(devserver::ReadText<Exposure>(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadExposureTest,
    testing::Values(BadRow{"NoDuration", R"({"ad_type":1,"ad_position":1,"expose_id":"e"})",
                           "expose_duration: missing"},
                    BadRow{"IdNumber", R"({"ad_type":1,"ad_position":1,"expose_id":5,"expose_duration":1})",
                           "expose_id: must be a text"},
                    BadRow{"DurationFraction", R"({"ad_type":1,"ad_position":1,"expose_id":"e","expose_duration":0.5})",
                           "expose_duration: must be a whole number from -9223372036854775808 to 9223372036854775807"}),
    RowName());

}  // namespace
