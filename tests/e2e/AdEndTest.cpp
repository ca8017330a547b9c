// Ends of the bottom popup without a click, and a click whose link the client refuses.
#include "AdClientFixture.h"

using namespace ::testing;

namespace {

constexpr int kTypePopup = 2;
constexpr int kBottom = 42;

QByteArray Scenario(const char* seconds, const char* schema) {
    return QByteArray(R"({"schema":1,"users":[{"id":501,"name":"One"}],"ads":[
        {"adType":2,"adPosition":42,"showDuration":)") +
           seconds + R"(,"showInterval":0,"showIntervalType":1,"enableClose":true,
         "campaigns":[{"id":"701","pushId":"p-701","startInS":-100,"endInS":10000,"expireInS":20000,
           "image":"card-invite.png","popupType":2,"showAreas":[500],"schema":")" +
           schema + R"("}]}],"commonConfig":{}})";
}

class AdEndTest : public AdClientTest {
protected:
    // Bindings call a member of this class.
    ~AdEndTest() override { End(); }

    // A popup with a short duration can end before the window is complete.
    void StartAndHavePopup(const char* seconds, const char* schema) {
        options.scenario = WriteFile("popup.json", Scenario(seconds, schema));
        Make();
        QObject::connect(client, &CComposition::WebOpened, &watcher, [this] { ++opened; });
        Show();
        Open("WorkbenchTabs", "WhyPage");
        ASSERT_TRUE(WaitForLine("Show ad popup success. adType = 2, adPosition = 42, adId = 701"));
    }

    int opened = 0;
};

struct PopupEnd {
    const char* name;
    const char* seconds;  // display duration
    const char* why;      // in the module's line and in the workbench
    void (*act)(CComposition& client);
};

class AdPopupEndTest : public AdEndTest, public WithParamInterface<PopupEnd> {};

TEST_P(AdPopupEndTest, IsToldWithItsExposure) {
    const PopupEnd& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartAndHavePopup(row.seconds, "https://ads.example/1"));

    server->Put("/v1/ads", "[]");  // later searches return nothing

    row.act(*client);

    const std::string why = std::string("by ") + row.why;
    ASSERT_TRUE(WaitForLine(("Closed ad " + why + ". adType = 2, adPosition = 42, adId = 701").c_str()));
    ASSERT_TRUE(WaitInRealTime([this] { return Card() == nullptr; }));
    const Json::Value told = ExpectOneExposure("701", kTypePopup, kBottom);
    EXPECT_EQ(told["push_id"][0], "p-701");
    EXPECT_GT(told["expose_duration"].asInt64(), 0);
    EXPECT_EQ(Reported("ClickAd"), 0);
    const QString closed = QStringLiteral("Closed ad by %1").arg(QString::fromLatin1(row.why));
    EXPECT_TRUE(WaitInRealTime([&] { return WorkbenchSays(closed); })) << closed.toStdString();
    Picture((std::string("ended-") + row.name).c_str());
}

INSTANTIATE_TEST_SUITE_P(Ends, AdPopupEndTest,
                         Values(PopupEnd{"Timeout", "1", "timeout", [](CComposition&) {}},
                                PopupEnd{"Language", "600", "language changed",
                                         [](CComposition& client) { client.SetLanguage(0); }},
                                PopupEnd{"Logout", "600", "logout", [](CComposition& client) { client.Logout(); }}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AdEndTest, ATimeoutIsAsLongAsTheServerSays) {
    ASSERT_NO_FATAL_FAILURE(StartAndHavePopup("1", "https://ads.example/1"));

    const Json::Value told = ExpectOneExposure("701", kTypePopup, kBottom);

    // the server's clock is synchronised from time to time and may step slightly
    EXPECT_GT(told["expose_duration"].asInt64(), 900);
}

struct BadLink {
    const char* name;
    const char* schema;
};

class AdBadLinkTest : public AdEndTest, public WithParamInterface<BadLink> {};

TEST_P(AdBadLinkTest, IsNotOpenedAndToldSoAndThePopupIsGone) {
    ASSERT_NO_FATAL_FAILURE(StartAndHavePopup("600", GetParam().schema));
    ASSERT_TRUE(IsCardSeen());

    Click(Card());

    ASSERT_TRUE(WaitForLine("Closed ad by ad clicked. adType = 2, adPosition = 42, adId = 701"));
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ClickAd") == 1; }));
    EXPECT_EQ(server->ReportsOf("ClickAd")[0]["result_status"], 0);
    EXPECT_EQ(ParsedLine("Refused to open a URL, its scheme is not allowed"), 1);
    EXPECT_EQ(opened, 0);
    ASSERT_TRUE(WaitInRealTime([this] { return Card() == nullptr; }));
    ExpectOneExposure("701", kTypePopup, kBottom);
}

INSTANTIATE_TEST_SUITE_P(Links, AdBadLinkTest,
                         Values(BadLink{"Ftp", "ftp://ads.example/1"}, BadLink{"Script", "javascript:alert(1)"},
                                BadLink{"File", "file:///etc/hosts"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
