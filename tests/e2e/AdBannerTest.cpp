// A banner from its answer to the quality report, at each of its positions: its end, and the reports of a click.
#include "AdClientFixture.h"
#include "core/time_date.h"

using namespace ::testing;

namespace {

constexpr int kTypeBanner = 3;

struct Place {
    const char* page;
    int position;
    const char* ad;
};
constexpr Place kMarket{"market", 7, "801"};
constexpr Place kAlerts{"alerts", 9, "901"};

/// One ad for the first user at each position: a slideshow and a single picture.
std::string Slots(const std::string& market, const std::string& alerts, const std::string& schema) {
    const auto slot = [&schema](const char* position, const char* type, const std::string& ad, const char* image) {
        return std::string(R"({"adType":3,"adPosition":)") + position +
               R"(,"enableClose":false,"bannerPosition":{"bannerType":)" + type +
               R"(,"materialScale":"6:1","materialCorner":"8"},"campaigns":[{"id":")" + ad +
               R"(","startInS":-100,"endInS":10000,"expireInS":20000,"users":[501],"image":")" + image +
               R"(","schema":")" + schema + R"("}]})";
    };
    return "[" + slot("7", "2", market, "first-trade-en.png") + "," + slot("9", "1", alerts, "research-weekly.png") +
           "]";
}

class AdBannerTest : public AdClientTest {
protected:
    // Bindings call a member of this class.
    ~AdBannerTest() override { End(); }

    void StartAndSeeBanner(const Place& place, const std::string& schema) {
        options.scenario = WriteFile(
            "banners.json", QByteArray::fromStdString(
                                R"({"schema":1,"users":[{"id":501,"name":"One"},{"id":502,"name":"Two"}],"ads":)" +
                                Slots(kMarket.ad, kAlerts.ad, schema) + R"(,"commonConfig":{}})"));
        Make();
        QObject::connect(client, &CComposition::WebOpened, &watcher, [this] { ++opened; });
        Show();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
        Choose(place.page);
        ASSERT_TRUE(WaitForBanner(place.position));
        ASSERT_TRUE(WaitInRealTime([&] { return Pictured() == std::multiset<std::string>({place.ad}); }));
        ASSERT_TRUE(WaitInRealTime([&] { return ReportsOn(place.ad, "StartExposeAd").size() == 1; }));
    }

    int opened = 0;
};

enum class EnEnd { User, Language };

class AdBannerEndTest : public AdBannerTest, public WithParamInterface<std::tuple<Place, EnEnd>> {
protected:
    void ChangeUser(const QPointer<QWidget>& banner, int position) {
        client->Login(502);
        ASSERT_TRUE(WaitInRealTime([&] { return !banner && client->UserId() == 502; }));
        EXPECT_EQ(Banner(position), nullptr);
    }

    // The page requests ads again, and the new banner replaces the old one.
    void ChangeLanguage(const QPointer<QWidget>& banner, int position) {
        server->Put("/v1/ads", Slots("811", "911", "https://ads.example/next"));
        const int64_t before = core::time_date::GetSvrTimeMillis();
        server->Put("/v1/clock", R"({"offsetMs":60000})");
        ASSERT_TRUE(WaitInRealTime([=] { return core::time_date::GetSvrTimeMillis() > before + 50'000; }));
        client->SetLanguage(0);
        ASSERT_TRUE(WaitInRealTime([&] { return !banner; }));
        EXPECT_NE(Banner(position), nullptr);
    }
};

TEST_P(AdBannerEndTest, IsToldWithItsExposure) {
    const auto& [place, end] = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartAndSeeBanner(place, "https://ads.example/1"));
    const QPointer<QWidget> banner = Banner(place.position);
    EXPECT_EQ(Reported("ExposeAd"), 0);
    EXPECT_TRUE(server->HttpTo("/ad/expose").empty());

    if (end == EnEnd::User) {
        ASSERT_NO_FATAL_FAILURE(ChangeUser(banner, place.position));
    } else {
        ASSERT_NO_FATAL_FAILURE(ChangeLanguage(banner, place.position));
    }

    const Json::Value told = ExpectOneExposure(place.ad, kTypeBanner, place.position);
    EXPECT_GT(told["expose_duration"].asInt64(), 0);
    EXPECT_FALSE(told.isMember("push_id"));
    EXPECT_EQ(Reported("ClickAd"), 0);
}

std::string NameOf(const TestParamInfo<std::tuple<Place, EnEnd>>& row) {
    const auto& [place, end] = row.param;
    return std::string(place.page) + (end == EnEnd::User ? "User" : "Language");
}

INSTANTIATE_TEST_SUITE_P(Banners, AdBannerEndTest,
                         Combine(Values(kMarket, kAlerts), Values(EnEnd::User, EnEnd::Language)), NameOf);

struct BannerClick {
    const char* name;
    Place place;
    const char* schema;
    bool opens;
};

class AdBannerClickTest : public AdBannerTest, public WithParamInterface<BannerClick> {};

TEST_P(AdBannerClickTest, IsToldWithWhatBecameOfItsLink) {
    const BannerClick& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartAndSeeBanner(row.place, row.schema));

    Click(Banner(row.place.position));

    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ClickAd") == 1; }));
    const Json::Value click = server->ReportsOf("ClickAd")[0];
    EXPECT_EQ(click["advertisement_id"], row.place.ad);
    EXPECT_EQ(click["result_status"], row.opens ? 1 : 0);
    EXPECT_EQ(click["exposure_id"], ReportsOn(row.place.ad, "StartExposeAd")[0]["exposure_id"]);
    EXPECT_EQ(opened, row.opens ? 1 : 0);
    // the banner remains, and its exposure continues
    EXPECT_NE(Banner(row.place.position), nullptr);
    EXPECT_EQ(Reported("ExposeAd"), 0);
}

INSTANTIATE_TEST_SUITE_P(Links, AdBannerClickTest,
                         Values(BannerClick{"MarketOpens", kMarket, "https://ads.example/1", true},
                                BannerClick{"AlertsOpens", kAlerts, "https://ads.example/1", true},
                                BannerClick{"MarketScript", kMarket, "javascript:alert(1)", false},
                                BannerClick{"AlertsFtp", kAlerts, "ftp://ads.example/1", false}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
