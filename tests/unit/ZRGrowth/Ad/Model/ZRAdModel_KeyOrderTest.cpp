// If several keys are invalid, the log names only the first in the model's order.
#include <gmock/gmock.h>

#include "Ad/AdSamples.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

/// A key, and the log line when it is invalid. A key follows its parent.
struct Step {
    std::vector<const char*> path;  // "0" is the first element of an array
    Matcher<LogLine> line;
};

Json::Value& Place(Json::Value& root, const std::vector<const char*>& path) {
    Json::Value* place = &root;
    for (const char* key : path) {
        place = std::string(key) == "0" ? &(*place)[0] : &(*place)[key];
    }
    return *place;
}

/// The good value with the keys from `first` on bad. A fraction is good for none.
Json::Value Spoilt(const Json::Value& good, const std::vector<Step>& steps, size_t first) {
    Json::Value value = good;
    for (size_t i = steps.size(); i > first; --i) {
        Place(value, steps[i - 1].path) = 1.5;
    }
    return value;
}

class AdKeyOrderTest : public ScriptedHostTest {
protected:
    /// With every key bad, and then one after the other mended.
    template <class Model>
    void ExpectOrder(const Json::Value& good, const std::vector<Step>& steps) {
        for (size_t mended = 0; mended < steps.size(); ++mended) {
            SCOPED_TRACE("mended: " + std::to_string(mended));
            Model model(nullptr);
            EXPECT_FALSE(model.Decode(Spoilt(good, steps, mended)));
            EXPECT_THAT(log.Lines(), ElementsAre(steps[mended].line));
            log.Forget();
        }
        Model model(nullptr);
        EXPECT_TRUE(model.Decode(good));
        EXPECT_THAT(log.Lines(), IsEmpty());
    }

    /// The keys of every ad, and then those of its kind.
    static std::vector<Step> OfAnAd(const std::vector<Step>& others) {
        std::vector<Step> steps = {
            {{"ad_id"}, Info("[Ad] CZRAdModel decode failed, ad_id is unvalid")},
            {{"start_time"}, Info("[Ad] CZRAdModel decode failed, start_time is unvalid")},
            {{"end_time"}, Info("[Ad] CZRAdModel decode failed, end_time is unvalid")},
            {{"expire_time"}, Info("[Ad] CZRAdModel decode failed, expire_time is unvalid")},
        };
        steps.insert(steps.end(), others.begin(), others.end());
        return steps;
    }
};

TEST_F(AdKeyOrderTest, AnswerReadsItsKeysInOrder) {
    Json::Value good = PopupAnswer();
    good["data"]["ad_type"] = 2.5;  // the list of a good answer would be this test's to delete

    for (const char* code : {"1.5", "0"}) {
        CZRAdResponseModel answer(nullptr);
        Json::Value value = good;
        value["code"] = JsonOf(code);
        value["data"] = 1.5;
        EXPECT_FALSE(answer.Decode(value));
    }
    CZRAdResponseModel answer(nullptr);
    EXPECT_FALSE(answer.Decode(good));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] CZRAdResponseModel decode failed, code is unvalid"),
                                         Error("[Ad] CZRAdResponseModel decode failed, data is unvalid"),
                                         Error("[Ad] CZRAdModelList decode failed, ad_type is unvalid")));
}

TEST_F(AdKeyOrderTest, ListOfPopupsReadsItsKeysInOrder) {
    Json::Value good = PopupAnswer()["data"];
    good["banner_position"] = BannerData()["banner_position"];

    ExpectOrder<CZRAdModelList>(
        good,
        {{{"ad_type"}, Error("[Ad] CZRAdModelList decode failed, ad_type is unvalid")},
         {{"ad_position"}, Error("[Ad] CZRAdModelList decode failed, ad_position is unvalid")},
         {{"show_duration"}, Error("[Ad] CZRAdModelList decode failed, show_duration is unvalid")},
         {{"show_interval"}, Error("[Ad] CZRAdModelList decode failed, show_interval is unvalid")},
         {{"show_interval_type"}, Error("[Ad] CZRAdModelList decode failed, show_interval_type is unvalid")},
         {{"enable_close"}, Error("[Ad] CZRAdModelList decode failed, enable_close is unvalid")},
         {{"banner_position", "banner_type"}, Info("[Ad] CZRAdBannerPosition decode failed, banner_type is unvalid")},
         {{"ad", "0"}, Error("[Ad] CZRAdModelList decode failed, item of ad is unvalid")},
         {{"ad", "0", "ad_id"}, Info("[Ad] CZRAdModel decode failed, ad_id is unvalid")}});
}

TEST_F(AdKeyOrderTest, ListOfBannersReadsItsKeysInOrder) {
    ExpectOrder<CZRAdModelList>(
        BannerAnswer()["data"],
        {{{"ad_type"}, Error("[Ad] CZRAdModelList decode failed, ad_type is unvalid")},
         {{"ad_position"}, Error("[Ad] CZRAdModelList decode failed, ad_position is unvalid")},
         {{"enable_close"}, Error("[Ad] CZRAdModelList decode failed, enable_close is unvalid")},
         {{"banner_position", "banner_type"}, Info("[Ad] CZRAdBannerPosition decode failed, banner_type is unvalid")},
         {{"ad", "0"}, Error("[Ad] CZRAdModelList decode failed, item of ad is unvalid")},
         {{"ad", "0", "ad_id"}, Info("[Ad] CZRAdModel decode failed, ad_id is unvalid")}});
}

TEST_F(AdKeyOrderTest, BannerPositionReadsItsKeysInOrder) {
    ExpectOrder<CZRAdBannerPosition>(
        BannerData()["banner_position"],
        {{{"banner_type"}, Info("[Ad] CZRAdBannerPosition decode failed, banner_type is unvalid")},
         {{"material_scale"}, Info("[Ad] CZRAdBannerPosition decode failed, material_scale is unvalid")},
         {{"material_corner"}, Info("[Ad] CZRAdBannerPosition decode failed, material_corner is unvalid")}});
}

TEST_F(AdKeyOrderTest, AdReadsItsKeysInOrder) {
    ExpectOrder<CZRAdModel>(PopupAd(), OfAnAd({}));
}

TEST_F(AdKeyOrderTest, BannerReadsItsKeysInOrder) {
    ExpectOrder<CZRAdBannerModel>(
        BannerAd(),
        OfAnAd({{{"banner_ad"}, Error("[Ad] CZRAdBannerModel decode failed, banner_ad is unvalid")},
                {{"banner_ad", "img"}, Error("[Ad] CZRAdBannerModel decode failed, img is unvalid")},
                {{"banner_ad", "schema"}, Error("[Ad] CZRAdBannerModel decode failed, schema is unvalid")}}));
}

TEST_F(AdKeyOrderTest, PopupReadsItsKeysInOrder) {
    ExpectOrder<CZRAdPopupModel>(
        PopupAd(),
        OfAnAd({{{"popup_ad"}, Error("[Ad] CZRAdPopupModel decode failed, popup_ad is unvalid")},
                {{"popup_ad", "popup_type"}, Error("[Ad] CZRAdPopupModel decode failed, popup_type is unvalid")},
                {{"popup_ad", "show_areas"}, Error("[Ad] CZRAdPopupModel decode failed, show_areas is unvalid")},
                {{"popup_ad", "show_areas", "0"},
                 Error("[Ad] CZRAdPopupModel decode failed, item of show_areas is unvalid")},
                {{"popup_ad", "bottom_popup"}, Error("[Ad] CZRAdPopupModel decode failed, bottom_popup is unvalid")},
                {{"popup_ad", "bottom_popup", "img"},
                 Error("[Ad] CZRAdBottomPopupModel decode failed, img is unvalid")}}));
}

TEST_F(AdKeyOrderTest, OfABottomPopupsCard) {
    ExpectOrder<CZRAdBottomPopupModel>(
        PopupAd()["popup_ad"]["bottom_popup"],
        {{{"img"}, Error("[Ad] CZRAdBottomPopupModel decode failed, img is unvalid")},
         {{"schema"}, Error("[Ad] CZRAdBottomPopupModel decode failed, schema is unvalid")}});
}

}  // namespace
