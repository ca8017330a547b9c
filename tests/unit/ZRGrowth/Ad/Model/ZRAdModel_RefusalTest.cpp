// Refusals of an answer: each key in turn missing, of another type, null and empty.
#include <gmock/gmock.h>

#include "Ad/AdSamples.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

/// The required type of a key.
enum class Rule { Int, Int64, Bool, Text, Object, Array };

struct Row {
    const char* name;
    bool banner;                    // in an answer with a banner, else one with a popup
    std::vector<const char*> path;  // to the key from the answer's root; "0" is the first element of an array
    Rule rule;
    ZRLogType severity;
    const char* words;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.name;
}

constexpr auto kError = kZRLogError;
constexpr auto kInfo = kZRLogInfo;

const Row kRows[] = {
    {"Code", false, {"code"}, Rule::Int, kError, "CZRAdResponseModel decode failed, code is unvalid"},
    {"Data", false, {"data"}, Rule::Object, kError, "CZRAdResponseModel decode failed, data is unvalid"},
    {"AdType", false, {"data", "ad_type"}, Rule::Int, kError, "CZRAdModelList decode failed, ad_type is unvalid"},
    {"AdPosition",
     false,
     {"data", "ad_position"},
     Rule::Int,
     kError,
     "CZRAdModelList decode failed, ad_position is unvalid"},
    {"ShowDuration",
     false,
     {"data", "show_duration"},
     Rule::Int,
     kError,
     "CZRAdModelList decode failed, show_duration is unvalid"},
    {"ShowInterval",
     false,
     {"data", "show_interval"},
     Rule::Int64,
     kError,
     "CZRAdModelList decode failed, show_interval is unvalid"},
    {"ShowIntervalType",
     false,
     {"data", "show_interval_type"},
     Rule::Int,
     kError,
     "CZRAdModelList decode failed, show_interval_type is unvalid"},
    {"EnableCloseOfAPopup",
     false,
     {"data", "enable_close"},
     Rule::Bool,
     kError,
     "CZRAdModelList decode failed, enable_close is unvalid"},
    {"EnableCloseOfABanner",
     true,
     {"data", "enable_close"},
     Rule::Bool,
     kError,
     "CZRAdModelList decode failed, enable_close is unvalid"},
    {"BannerType",
     true,
     {"data", "banner_position", "banner_type"},
     Rule::Int,
     kInfo,
     "CZRAdBannerPosition decode failed, banner_type is unvalid"},
    {"MaterialScale",
     true,
     {"data", "banner_position", "material_scale"},
     Rule::Text,
     kInfo,
     "CZRAdBannerPosition decode failed, material_scale is unvalid"},
    {"MaterialCorner",
     true,
     {"data", "banner_position", "material_corner"},
     Rule::Text,
     kInfo,
     "CZRAdBannerPosition decode failed, material_corner is unvalid"},
    {"AdId", false, {"data", "ad", "0", "ad_id"}, Rule::Text, kInfo, "CZRAdModel decode failed, ad_id is unvalid"},
    {"StartTime",
     false,
     {"data", "ad", "0", "start_time"},
     Rule::Int64,
     kInfo,
     "CZRAdModel decode failed, start_time is unvalid"},
    {"EndTime",
     true,
     {"data", "ad", "0", "end_time"},
     Rule::Int64,
     kInfo,
     "CZRAdModel decode failed, end_time is unvalid"},
    {"ExpireTime",
     false,
     {"data", "ad", "0", "expire_time"},
     Rule::Int64,
     kInfo,
     "CZRAdModel decode failed, expire_time is unvalid"},
    {"BannerAd",
     true,
     {"data", "ad", "0", "banner_ad"},
     Rule::Object,
     kError,
     "CZRAdBannerModel decode failed, banner_ad is unvalid"},
    {"BannerImage",
     true,
     {"data", "ad", "0", "banner_ad", "img"},
     Rule::Text,
     kError,
     "CZRAdBannerModel decode failed, img is unvalid"},
    {"BannerSchema",
     true,
     {"data", "ad", "0", "banner_ad", "schema"},
     Rule::Text,
     kError,
     "CZRAdBannerModel decode failed, schema is unvalid"},
    {"PopupAd",
     false,
     {"data", "ad", "0", "popup_ad"},
     Rule::Object,
     kError,
     "CZRAdPopupModel decode failed, popup_ad is unvalid"},
    {"PopupType",
     false,
     {"data", "ad", "0", "popup_ad", "popup_type"},
     Rule::Int,
     kError,
     "CZRAdPopupModel decode failed, popup_type is unvalid"},
    {"ShowAreas",
     false,
     {"data", "ad", "0", "popup_ad", "show_areas"},
     Rule::Array,
     kError,
     "CZRAdPopupModel decode failed, show_areas is unvalid"},
    {"BottomPopup",
     false,
     {"data", "ad", "0", "popup_ad", "bottom_popup"},
     Rule::Object,
     kError,
     "CZRAdPopupModel decode failed, bottom_popup is unvalid"},
    {"CardImage",
     false,
     {"data", "ad", "0", "popup_ad", "bottom_popup", "img"},
     Rule::Text,
     kError,
     "CZRAdBottomPopupModel decode failed, img is unvalid"},
    {"CardSchema",
     false,
     {"data", "ad", "0", "popup_ad", "bottom_popup", "schema"},
     Rule::Text,
     kError,
     "CZRAdBottomPopupModel decode failed, schema is unvalid"},
};

/// Values that a rule refuses.
std::vector<std::string> BadValues(Rule rule) {
    switch (rule) {
        case Rule::Int:
            return {"null", "\"1\"", "true", "1.5", "2147483648", "-2147483649", "4294967295", "[]", "{}"};
        case Rule::Int64:
            return {"null", "\"1\"", "true", "1.5", "9223372036854775808", "[]", "{}"};
        case Rule::Bool:
            return {"null", "1", "0", "\"true\"", "[]", "{}"};
        case Rule::Text:
            // the last is a byte-order mark, which reads as nothing
            return {"null", "\"\"", "18088", "true", "[]", "{}", "\"\xEF\xBB\xBF\""};
        case Rule::Object:
            return {"null", "[]", "5", "\"x\"", "true"};
        case Rule::Array:
            return {"null", "{}", "500", "\"x\"", "true"};
    }
    return {};
}

Json::Value& Holder(Json::Value& answer, const std::vector<const char*>& path) {
    Json::Value* holder = &answer;
    for (size_t i = 0; i + 1 < path.size(); ++i) {
        holder = std::string(path[i]) == "0" ? &(*holder)[0] : &(*holder)[path[i]];
    }
    return *holder;
}

/// Returns the source of the class whose name begins the text.
std::string SourceOf(const std::string& words) {
    if (words.find("Popup") != std::string::npos) {
        return "ZRGrowth/Ad/Model/ZRAdPopupModel";
    }
    return words.find("CZRAdBannerModel") == 0 ? "ZRGrowth/Ad/Model/ZRAdBannerModel" : "ZRGrowth/Ad/Model/ZRAdModel";
}

class AdRefusalTest : public ScriptedHostTest, public WithParamInterface<Row> {
protected:
    void ExpectRefused(const Json::Value& answer, const std::string& how) {
        SCOPED_TRACE(how);
        CZRAdResponseModel response(nullptr);
        EXPECT_FALSE(response.Decode(answer));
        const auto lines = log.Lines();
        ASSERT_THAT(lines, SizeIs(1));
        EXPECT_EQ(lines[0].text, std::string("[Ad] ") + GetParam().words);
        EXPECT_EQ(lines[0].severity, GetParam().severity);
        EXPECT_EQ(lines[0].function, "Decode");
        EXPECT_EQ(lines[0].file, SourceOf(GetParam().words));
        EXPECT_EQ(lines[0].module, "ZRGrowth");
        log.Forget();
    }
};

TEST_P(AdRefusalTest, AMissingOrUnfitKeyEndsTheDecodingWithItsLine) {
    const Row& row = GetParam();
    const Json::Value good = row.banner ? BannerAnswer() : PopupAnswer();
    {
        CZRAdResponseModel response(nullptr);
        ASSERT_TRUE(response.Decode(good));
        response.GetData()->setParent(&response);
    }

    Json::Value missing = good;
    Holder(missing, row.path).removeMember(row.path.back());
    ExpectRefused(missing, "missing");
    for (const std::string& bad : BadValues(row.rule)) {
        Json::Value unfit = good;
        Holder(unfit, row.path)[row.path.back()] = JsonOf(bad);
        ExpectRefused(unfit, bad);
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, AdRefusalTest, ValuesIn(kRows),
                         [](const auto& row) { return PrintToString(row.param); });

class AdRootTest : public ScriptedHostTest {
protected:
    template <class Model>
    void ExpectRootIsRefused(const Matcher<LogLine>& line) {
        for (const char* root : {"null", "[]", "[{}]", "5", "\"x\"", "true"}) {
            SCOPED_TRACE(root);
            Model model(nullptr);
            EXPECT_FALSE(model.Decode(JsonOf(root)));
            EXPECT_THAT(log.Lines(), ElementsAre(line));
            log.Forget();
        }
    }
};

TEST_F(AdRootTest, ARootThatIsNoObjectIsRefusedByEachModelAtItsSeverity) {
    ExpectRootIsRefused<CZRAdResponseModel>(Error("[Ad] CZRAdResponseModel decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdModelList>(Error("[Ad] CZRAdModelList decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdBannerModel>(Error("[Ad] CZRAdBannerModel decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdPopupModel>(Error("[Ad] CZRAdPopupModel decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdBottomPopupModel>(Error("[Ad] CZRAdBottomPopupModel decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdModel>(Info("[Ad] CZRAdModel decode failed, json is unvalid"));
    ExpectRootIsRefused<CZRAdBannerPosition>(Info("[Ad] CZRAdBannerPosition decode failed, json is unvalid"));
}

class AdElementTest : public ScriptedHostTest {
protected:
    void ExpectRefused(const Json::Value& answer, const Matcher<LogLine>& line) {
        CZRAdResponseModel response(nullptr);
        EXPECT_FALSE(response.Decode(answer));
        EXPECT_THAT(log.Lines(), ElementsAre(line));
        log.Forget();
    }
};

TEST_F(AdElementTest, AnElementThatIsNoObjectFailsTheListWhateverItsType) {
    for (const char* element : {"null", "5", "\"x\"", "[]"}) {
        for (const int type : {2, 3, 7}) {
            SCOPED_TRACE(std::string(element) + " of type " + std::to_string(type));
            Json::Value data = PopupData();
            data["ad_type"] = type;
            data["ad"].append(JsonOf(element));
            ExpectRefused(AnswerOf(data), Error("[Ad] CZRAdModelList decode failed, item of ad is unvalid"));
        }
    }
}

TEST_F(AdElementTest, AnAreaThatIsNoIntegerFailsTheAd) {
    Json::Value answer = PopupAnswer();
    answer["data"]["ad"][0]["popup_ad"]["show_areas"] = JsonOf("[500, \"501\"]");

    ExpectRefused(answer, Error("[Ad] CZRAdPopupModel decode failed, item of show_areas is unvalid"));
}

TEST_F(AdElementTest, AnEmptyBannerPositionFailsAListOfAnyTypeWithThePositionsLineAlone) {
    for (const int type : {2, 3, 7}) {
        SCOPED_TRACE(type);
        Json::Value answer = type == 3 ? BannerAnswer() : PopupAnswer();
        answer["data"]["ad_type"] = type;
        answer["data"]["banner_position"] = Json::Value(Json::objectValue);

        ExpectRefused(answer, Info("[Ad] CZRAdBannerPosition decode failed, banner_type is unvalid"));
    }
}

TEST_F(AdElementTest, AListOfAnotherTypeNeedsToSayWhetherItCanBeClosed) {
    const auto line = Error("[Ad] CZRAdModelList decode failed, enable_close is unvalid");
    Json::Value answer = AnswerOf(BannerData());
    answer["data"]["ad_type"] = 7;
    answer["data"]["enable_close"] = 1;
    ExpectRefused(answer, line);

    answer["data"].removeMember("enable_close");
    ExpectRefused(answer, line);
}

TEST_F(AdElementTest, ABannerWithAPopupsContentFails) {
    Json::Value answer = BannerAnswer();
    Json::Value& ad = answer["data"]["ad"][0];
    ad = PopupAd();

    ExpectRefused(answer, Error("[Ad] CZRAdBannerModel decode failed, banner_ad is unvalid"));
}

TEST_F(AdElementTest, ABottomPopupIsNeededForEachKindOfPopup) {
    for (const int type : {0, 1, 2, 9}) {
        Json::Value answer = PopupAnswer();
        answer["data"]["ad"][0]["popup_ad"]["popup_type"] = type;
        answer["data"]["ad"][0]["popup_ad"].removeMember("bottom_popup");

        ExpectRefused(answer, Error("[Ad] CZRAdPopupModel decode failed, bottom_popup is unvalid"));
    }
}

TEST_F(AdElementTest, OfSeveralBadKeysTheFirstIsNamed) {
    ExpectRefused(JsonOf(R"({"data": 5})"), Error("[Ad] CZRAdResponseModel decode failed, code is unvalid"));
    ExpectRefused(JsonOf(R"({"code": 0, "data": {"enable_close": 1}})"),
                  Error("[Ad] CZRAdModelList decode failed, ad_type is unvalid"));
}

TEST_F(AdElementTest, ANonZeroCodeWithoutDataFails) {
    ExpectRefused(JsonOf(R"({"code": 7, "message": "no"})"),
                  Error("[Ad] CZRAdResponseModel decode failed, data is unvalid"));
}

}  // namespace
