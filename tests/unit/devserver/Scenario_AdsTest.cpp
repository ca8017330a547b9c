#include "Scenario.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::CScenario;
using devserver::Errors;
using devserver::WriteJson;
using testing::ElementsAre;

std::string WithAds(const std::string& ads) {
    return R"({"ads":)" + ads + R"(,"commonConfig":{},"schema":1,"users":[]})";
}

std::string Banner(const std::string& campaigns, const std::string& more = {}) {
    return R"([{"adPosition":7,"adType":3,)" + more + R"("campaigns":[)" + campaigns + R"(],"enableClose":true}])";
}

std::string Popup(const std::string& campaigns) {
    return R"([{"adPosition":42,"adType":2,"campaigns":[)" + campaigns +
           R"(],"enableClose":false,"showDuration":10,"showInterval":9223372036854775807,"showIntervalType":-1}])";
}

std::string Campaign(const std::string& more, const std::string& id = "a") {
    return R"({"endInS":1,"expire":2,"id":")" + id + R"(","image":"a.png",)" + more + R"("schema":"s","startInS":-1})";
}

struct BadRow {
    const char* name;
    std::string ads;
    std::string error;
};

class BadAdsTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadAdsTest, AreRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(WithAds(GetParam().ads), errors));

    EXPECT_THAT(errors, ElementsAre(GetParam().error));
}

const std::string kOfCampaign = "ads[0].campaigns[0].";

INSTANTIATE_TEST_SUITE_P(
    Rows, BadAdsTest,
    testing::Values(
        BadRow{"NoList", "{}", "ads: must be a list of objects"},
        BadRow{"SlotNoObject", "[1]", "ads: must be a list of objects"},
        BadRow{
            "PopupWithoutDuration",
            R"([{"adPosition":1,"adType":2,"campaigns":[],"enableClose":true,"showInterval":1,"showIntervalType":1}])",
            "ads[0].showDuration: missing"},
        BadRow{"BannerWithoutClose", R"([{"adPosition":1,"adType":3,"campaigns":[]}])", "ads[0].enableClose: missing"},
        BadRow{"UnknownKey", Banner("", R"("banner":1,)"), "ads[0].banner: unknown key"},
        BadRow{"TypePastTheRange", R"([{"adPosition":1,"adType":2147483648,"campaigns":[],"enableClose":true}])",
               "ads[0].adType: must be a whole number from -2147483648 to 2147483647"},
        BadRow{"CloseNumber", R"([{"adPosition":1,"adType":3,"campaigns":[],"enableClose":1}])",
               "ads[0].enableClose: must be true or false"},
        BadRow{"TwoSlotsOfOnePlace",
               R"([{"adPosition":1,"adType":3,"campaigns":[],"enableClose":true},)"
               R"({"adPosition":1,"adType":4,"campaigns":[],"enableClose":true},)"
               R"({"adPosition":1,"adType":3,"campaigns":[],"enableClose":true}])",
               "ads[2].adPosition: another slot has this type and position"},
        BadRow{"BannerTypeMissing", Banner("", R"("bannerPosition":{"materialScale":"a","materialCorner":"b"},)"),
               "ads[0].bannerPosition.bannerType: missing"},
        BadRow{"ScaleEmpty",
               Banner("", R"("bannerPosition":{"bannerType":1,"materialScale":"","materialCorner":"b"},)"),
               "ads[0].bannerPosition.materialScale: must not be empty"},
        BadRow{"CornerNumber",
               Banner("", R"("bannerPosition":{"bannerType":1,"materialScale":"a","materialCorner":8},)"),
               "ads[0].bannerPosition.materialCorner: must be a text"},
        BadRow{"IdEmpty", Banner(Campaign("", "")), kOfCampaign + "id: must not be empty"},
        BadRow{"IdTwice", Banner(Campaign("") + "," + Campaign("", "b") + "," + Campaign("")),
               "ads[0].campaigns[2].id: another campaign of the slot has this id"},
        BadRow{"StartTwice", Banner(Campaign(R"("start":1,)")),
               "ads[0].campaigns[0]: must hold either start or startInS"},
        BadRow{"NoEnd", Banner(R"({"expireInS":1,"id":"a","image":"a","schema":"s","startInS":0})"),
               "ads[0].campaigns[0]: must hold either end or endInS"},
        BadRow{"StartPastTheRange",
               Banner(R"({"endInS":1,"expireInS":1,"id":"a","image":"a","schema":"s","start":1000000000001})"),
               kOfCampaign + "start: must be a whole number from -1000000000000 to 1000000000000"},
        BadRow{"LanguageUnknown", Banner(Campaign(R"("languages":["en","de"],)")),
               kOfCampaign + "languages[1]: must be one of en, zh-Hans, zh-Hant, ja, fr"},
        BadRow{"UserZero", Banner(Campaign(R"("users":[0],)")),
               kOfCampaign + "users[0]: must be a whole number from 1 to 18446744073709551615"},
        BadRow{"ImageWithAPath",
               Banner(R"({"endInS":1,"expireInS":1,"id":"a","image":"../a","schema":"s","startInS":0})"),
               kOfCampaign + "image: must be an absolute URL, or a name of ASCII letters, digits, '-', '_' and '.'"},
        BadRow{"SchemaEmpty", Banner(R"({"endInS":1,"expireInS":1,"id":"a","image":"a","schema":"","startInS":0})"),
               kOfCampaign + "schema: must not be empty"},
        BadRow{"AreasOfABanner", Banner(Campaign(R"("showAreas":[500],)")),
               kOfCampaign + "showAreas: only a popup has any"},
        BadRow{"PopupTypeOfABanner", Banner(Campaign(R"("popupType":2,)")),
               kOfCampaign + "popupType: only a popup has one"}),
    RowName());

class SoundAdsTest : public testing::TestWithParam<std::string> {};

TEST_P(SoundAdsTest, AreWrittenAsTheyWereRead) {
    const std::string text = WithAds(GetParam());
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    EXPECT_EQ(WriteJson(scenario->ToJson()), text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SoundAdsTest,
    testing::Values(
        Banner(""), Banner(Campaign("")), Banner(Campaign(R"("languages":["en","zh-Hans","zh-Hant","ja","fr"],)")),
        Banner(Campaign(R"("name":"","pushId":"p",)")),
        R"([{"adPosition":-1,"adType":7,"bannerPosition":{"bannerType":0,"carouselInterval":5,"materialCorner":"b",)"
        R"("materialScale":"a"},"campaigns":[{"end":-1000000000000,"expireInS":0,"id":"a","image":"https://a.example/b c",)"
        R"("schema":"s","start":1000000000000,"users":[18446744073709551615]}],"enableClose":true,"showDuration":-5}])",
        Popup(R"({"endInS":1,"expire":2,"id":"a","image":"a.png","popupType":-3,"schema":"s",)"
              R"("showAreas":[0,508,-1,508],"startInS":-1})")));

TEST(ScenarioAdsTest, PopupIsOfTheBottomAndShowsNowhereUnlessTheScenarioSaysSo) {
    Errors errors;
    const auto scenario = CScenario::FromText(WithAds(Popup(Campaign(""))), errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    const devserver::Campaign& campaign = scenario->Ads().at(0).campaigns(0);

    EXPECT_EQ(campaign.popuptype(), 2);
    EXPECT_THAT(campaign.showareas(), testing::IsEmpty());
}

}  // namespace
