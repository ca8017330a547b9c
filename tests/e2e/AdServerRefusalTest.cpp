// Refusals of the bottom popup that the server causes, and the workbench's texts for them.
#include "AdRefusalFixture.h"

using namespace ::testing;

namespace {

struct Refusal {
    const char* name;
    const char* ads;     // the ids of a push that requests a check
    const char* fault;   // of the answer to the check, if any
    const char* line;    // the module's own
    const char* why;     // the text in the workbench
    const char* detail;  // a further text in the workbench
};

/// An answer whose only ad has no display areas.
constexpr char kWithoutAreas[] =
    R"({"body":"{\"code\":0,\"message\":\"\",\"data\":{\"ad_type\":2,\"ad_position\":42,\"show_duration\":0,)"
    R"(\"show_interval\":0,\"show_interval_type\":1,\"enable_close\":true,\"ad\":[{\"ad_id\":\"708\",)"
    R"(\"start_time\":1,\"end_time\":4000000000,\"expire_time\":4000000000,\"popup_ad\":{\"popup_type\":2,)"
    R"(\"bottom_popup\":{\"img\":\"http://127.0.0.1/8.png\",\"schema\":\"https://ads.example/8\"}}}]}}"})";

class AdServerRefusalTest : public AdRefusalTest, public WithParamInterface<Refusal> {
protected:
    // Another search returns a complete ad, and its popup is shown.
    void ExpectShownByTheNextSearch(const std::string& name) {
        server->Put("/v1/httpFaults", "{}");
        PassAMinute();
        PushNew();
        ASSERT_TRUE(WaitInRealTime([this] { return server->HttpTo("/ad/search").size() >= 2; }));
        Override("AdTab", kMarket);
        ExpectShown(("shown-after-" + name).c_str());
    }
};

TEST_P(AdServerRefusalTest, IsSaidAndEndsWithTheNextSearch) {
    const Refusal& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    if (*row.fault) {
        server->Put("/v1/httpFaults", std::string(R"({"/ad/check":)") + row.fault + "}");
    }
    PassAMinute();

    PushCheck(row.ads);

    EXPECT_TRUE(WaitForLine(row.line));
    ExpectRefused(row.why, (std::string("refused-") + row.name).c_str());
    EXPECT_TRUE(WaitInRealTime([&] { return WorkbenchSays(row.detail); })) << row.detail;
    ExpectShownByTheNextSearch(row.name);
}

INSTANTIATE_TEST_SUITE_P(Answers, AdServerRefusalTest,
                         Values(Refusal{"EndOver", "704", "", "adType = 2, adPosition = 42, remove adId = 704",
                                        "\u00B7 an ad that is due", "not kept: ended"},
                                Refusal{"Expired", "705", "", "adType = 2, adPosition = 42, remove adId = 705",
                                        "\u00B7 an ad that is due", "not kept: expired"},
                                Refusal{"EmptyList", "799", "", "Ad list is empty, adType = 2, adPosition = 42",
                                        "\u00B7 ads in it", "\u2265 1"},
                                Refusal{"AreasNone", "706", "",
                                        "ShowAreas is null, adType = 2, adPosition = 42, adId = 706", "\u00B7 areas",
                                        "not kept: areas"},
                                Refusal{"AreasMissing", "708", kWithoutAreas, "show_areas is unvalid", "\u00B7 decoded",
                                        "unfit: CZRAdPopupModel: show_areas"},
                                Refusal{"OtherCode", "707", R"({"code":7})",
                                        "Request ad failed, path = /ad/check, code = 7", "\u00B7 code 0", "code 7"},
                                Refusal{"Exchange", "707", R"({"cutBytes":20})",
                                        "Request ad failed, path = /ad/check, result = ", "\u00B7 exchange", "result"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AdRefusalTest, ARequestWithinTenSecondsOfTheLast) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    PassAMinute();
    PushNew();
    ASSERT_TRUE(WaitInRealTime([this] { return server->HttpTo("/ad/search").size() == 2; }));

    PushNew();

    EXPECT_TRUE(WaitForLine("Request ad limited."));
    ExpectRefused("\u00B7 pause between requests", "refused-RequestLimit");
    const auto isLimit = [](const Json::Value& result) { return result["result_code"] == "1001"; };
    EXPECT_TRUE(WaitInRealTime([&] {
        const auto results = server->ReportsOf("SingleAdvertisementPullDataResult");
        return std::count_if(results.begin(), results.end(), isLimit) == 1;
    }));
    EXPECT_EQ(server->HttpTo("/ad/search").size(), 2u);
    PassAMinute();
    PushNew();
    ASSERT_TRUE(WaitInRealTime([this] { return server->HttpTo("/ad/search").size() == 3; }));
    Override("AdTab", kMarket);
    ExpectShown("shown-after-RequestLimit");
}

}  // namespace
