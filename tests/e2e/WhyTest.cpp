// Why does this user see no popup, no right, no chat entry? Each cause is prepared, and the workbench's answer is in
// sight after at most three clicks.
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QTest>

#include "AdClientFixture.h"

using namespace ::testing;

namespace {

/// User 601 has a popup for the quotes, two rights and three scenes. User 602 has nothing.
constexpr char kScenario[] = R"({"schema":1,"users":[
    {"id":601,"name":"One","premium":{"rights":[
        {"access":1,"hasPermission":true,"daysLeft":30,"activationType":3,"activationSource":2},
        {"access":5,"hasPermission":false,"activationType":5},{"access":6,"hasPermission":false,"activationType":2}]},
     "aiChat":{"entries":[{"scene":1,"allOpen":true},{"scene":4,"allOpen":false}]}},
    {"id":602,"name":"Two"}],
    "ads":[{"adType":2,"adPosition":42,"showDuration":600,"showInterval":0,"showIntervalType":1,"enableClose":true,
        "campaigns":[{"id":"701","startInS":-100,"endInS":100000,"expireInS":200000,"users":[601],
            "image":"card-open-account.png","schema":"https://ads.example/1","showAreas":[501]}]}],
    "commonConfig":{}})";

/// An answer to a search, with an ad of this window and these areas.
std::string Body(const char* window, const char* areas = "[500]", int position = 42) {
    return R"({"body":"{\"code\":0,\"message\":\"\",\"data\":{\"ad_type\":2,\"ad_position\":)" +
           std::to_string(position) +
           R"(,\"show_duration\":0,\"show_interval\":0,\"show_interval_type\":1,\"enable_close\":true,\"ad\":[{)"
           R"(\"ad_id\":\"9\",)" +
           window + R"(,\"popup_ad\":{\"popup_type\":2,\"show_areas\":)" + areas +
           R"(,\"bottom_popup\":{\"img\":\"http://127.0.0.1/8.png\",\"schema\":\"https://ads.example/8\"}}}]}}"})";
}

const char* const kDue = R"(\"start_time\":1,\"end_time\":4000000000,\"expire_time\":4000000000)";

class WhyTest : public AdClientTest {
public:
    using AdClientTest::Child;

    WhyTest() { options.scenario = WriteFile("scenario.json", kScenario); }

    void StartWith601() {
        options.user = 601;
        Start();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 601 && CountOf(20300) > 0; }));
    }

    /// The next login meets this fault of a path or a command.
    void LogInWith(const char* faults, const std::string& fault) {
        server->Put(faults, fault);
        LogInAs(601);
    }
    /// Passes the minimum time between two requests of the popup.
    void LogInAs(quint64 user) {
        server->Put("/v1/clock", R"({"offsetMs":60000})");
        client->Login(user);
    }
    void LogOut() { client->Logout(); }
    void Override(int choice) { Child<QComboBox>("WorkbenchOverride")->setCurrentIndex(choice); }
    void AskRights(const std::string& fault) {
        server->Put("/v1/faults", R"({"20637":)" + fault + "}");
        client->Login(601);
    }

    /// Clicks on the page's tab and on the subject. Returns the number of clicks.
    int ClickTo(const char* subject) {
        auto* tabs = Child<QTabWidget>("WorkbenchTabs");
        const int tab = tabs->indexOf(Child<QWidget>("WhyPage"));
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier, tabs->tabBar()->tabRect(tab).center());
        EXPECT_TRUE(Child<QWidget>("WhyPage")->isVisible());
        auto* table = Child<QTableView>("WhyTable");
        EXPECT_TRUE(WaitInRealTime([&] { return RowOf(subject) >= 0; })) << subject;
        const QModelIndex index = table->model()->index(RowOf(subject), 0);
        table->scrollTo(index);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(index).center());
        return 2;
    }

    int RowOf(const char* subject) const {
        const QAbstractItemModel* model = Child<QTableView>("WhyTable")->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data().toString() == QLatin1String(subject)) {
                return row;
            }
        }
        return -1;
    }

    int StoppedSteps() const { return Child<QLabel>("WhyStrip")->text().count(QStringLiteral("\u2717 ")); }
};

struct Cause {
    const char* name;
    void (*prepare)(WhyTest& test);
    const char* subject;
    const char* sentence;
};

void PrintTo(const Cause& cause, std::ostream* stream) {
    *stream << cause.name;
}

class WhyCauseTest : public WhyTest, public WithParamInterface<Cause> {};

TEST_P(WhyCauseTest, IsInSightAfterAtMostThreeClicks) {
    ASSERT_NO_FATAL_FAILURE(StartWith601());
    GetParam().prepare(*this);

    EXPECT_LE(ClickTo(GetParam().subject), 3);

    const auto* sentence = Child<QLabel>("WhySentence");
    EXPECT_TRUE(WaitInRealTime([&] { return sentence->text().contains(QString::fromUtf8(GetParam().sentence)); }))
        << sentence->text().toStdString();
    EXPECT_TRUE(sentence->isVisible());
    EXPECT_FALSE(sentence->visibleRegion().isEmpty());
    EXPECT_LE(StoppedSteps(), 1);
}

const char* const kAds = "/v1/httpFaults";
const char* const kCommands = "/v1/faults";

INSTANTIATE_TEST_SUITE_P(
    Popup, WhyCauseTest,
    Values(Cause{"Tab", [](WhyTest&) {}, "Popup 42", "Ad 701 is not for the current tab"},
           Cause{"NoAd", [](WhyTest& why) { why.LogInAs(602); }, "Popup 42",
                 "The server has no ad for this user here."},
           Cause{"Code", [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":{"code":7}})"); }, "Popup 42",
                 "refused the request with code 7"},
           Cause{"Exchange", [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":{"cutBytes":20}})"); }, "Popup 42",
                 "The exchange with the ad server failed"},
           Cause{"NotJson", [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":{"body":"x"}})"); }, "Popup 42",
                 "The server's answer is not JSON."},
           Cause{"Early",
                 [](WhyTest& why) {
                     why.LogInWith(kAds, R"({"/ad/search":)" +
                                             Body(R"(\"start_time\":3900000000,\"end_time\":4000000000,)"
                                                  R"(\"expire_time\":4000000000)") +
                                             "}");
                 },
                 "Popup 42", "No ad of the list is due: ad 9 starts 2093"},
           Cause{"Ended",
                 [](WhyTest& why) {
                     why.LogInWith(kAds, R"({"/ad/search":)" +
                                             Body(R"(\"start_time\":1,\"end_time\":2,\"expire_time\":4000000000)") +
                                             "}");
                 },
                 "Popup 42", "No ad of the list is due: ad 9 ended 1970"},
           Cause{"NoAreas", [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":)" + Body(kDue, "[]") + "}"); },
                 "Popup 42", "Ad 9 names no area in which to show it."},
           Cause{"OtherPosition",
                 [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":)" + Body(kDue, "[500]", 43) + "}"); },
                 "Popup 42", "The server answered with a list for Popup 43."},
           Cause{"Picture", [](WhyTest& why) { why.LogInWith(kAds, R"({"/ad/search":)" + Body(kDue) + "}"); },
                 "Popup 42", "The picture could not be loaded in 3 tries"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Right, WhyCauseTest,
    Values(Cause{"NotListed", [](WhyTest& why) { why.Child<QLineEdit>("WhySearch")->setText(QStringLiteral("77")); },
                 "Right 77", "The server's answer does not name right 77."},
           Cause{"NotActivated", [](WhyTest&) {}, "Right 5", "does not hold it: not activated"},
           Cause{"Frozen", [](WhyTest&) {}, "Right 6", "does not hold it: frozen"},
           Cause{"Silent", [](WhyTest& why) { why.AskRights(R"({"silent":true})"); }, "Rights",
                 "has no answer yet. Wait for it."},
           Cause{"Error", [](WhyTest& why) { why.AskRights(R"({"error":7})"); }, "Rights",
                 "The channel failed with error 7."},
           Cause{"Garbage", [](WhyTest& why) { why.AskRights(R"({"bodyHex":"ff"})"); }, "Rights",
                 "The answer is not readable."},
           Cause{"NoCode", [](WhyTest& why) { why.AskRights(R"({"bodyHex":"12026e6f"})"); }, "Rights",
                 "The answer has no code."},
           Cause{"OtherCode", [](WhyTest& why) { why.AskRights(R"({"bodyHex":"0805"})"); }, "Rights",
                 "The server refused the request with code 5."},
           Cause{"LoggedOut", [](WhyTest& why) { why.LogOut(); }, "Rights", "Nobody is logged in."},
           Cause{"NoMember", [](WhyTest&) {}, "VIP status", "no member in the older system"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    ChatEntry, WhyCauseTest,
    Values(Cause{"NotNamed", [](WhyTest&) {}, "Chat scene 2", "The server's answer does not name scene 2."},
           Cause{"NotOpen", [](WhyTest&) {}, "Chat scene 4", "scene 4 is not open to this user"},
           Cause{"NoScenes", [](WhyTest& why) { why.LogInAs(602); }, "Chat scene 1", "does not name scene 1"},
           Cause{"Error", [](WhyTest& why) { why.LogInWith(kCommands, R"({"20982":{"error":7}})"); }, "Chat scene 1",
                 "The request for the scenes failed with error 7."},
           Cause{"Garbage", [](WhyTest& why) { why.LogInWith(kCommands, R"({"20982":{"bodyHex":"ff"}})"); },
                 "Chat scene 1", "The answer about the scenes is not readable."},
           Cause{"OtherCommand", [](WhyTest& why) { why.LogInWith(kCommands, R"({"20982":{"replyCommand":20831}})"); },
                 "Chat scene 1", "The request for the scenes failed"},
           Cause{"ForcedClosed", [](WhyTest& why) { why.Override(2); }, "Chat scene 1",
                 "The override closes all scenes."},
           Cause{"Silent", [](WhyTest& why) { why.LogInWith(kCommands, R"({"20982":{"silent":true}})"); },
                 "Chat scene 1", "has no answer yet. Wait for it."},
           Cause{"LoggedOut", [](WhyTest& why) { why.LogOut(); }, "Chat scene 1", "Nobody is logged in."},
           Cause{"Empty", [](WhyTest& why) { why.LogInWith(kCommands, R"({"20982":{"bodyHex":"0800"}})"); },
                 "Chat scene 1", "The server's answer does not name scene 1."}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
