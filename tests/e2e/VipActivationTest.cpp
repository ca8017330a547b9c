// A ready right from the click to what the server and the user see, and the reports of VIP widgets at the server.
#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QToolButton>
#include <QWindow>

#include "VipClientFixture.h"
#include "VipSlot.h"
#include "ui/ZButton.h"
#include "ui/ZToast.h"
#include "webview/ZRWebDialog.h"

using namespace ::testing;

namespace {

constexpr quint64 kReady = 20012, kMemberOfGrade2 = 20009;
constexpr const char* kMarketClick = "ClickPremiumMarketEntrance";

class VipActivationTest : public VipClientTest {
protected:
    ~VipActivationTest() override { End(); }

    CVipSlot* Slot(const char* name) const { return Child<CVipSlot>(name); }

    void OpenBook() {
        LogIn(kReady);
        Choose("quotes");
        ASSERT_TRUE(WaitInRealTime([this] { return Slot("OrderBookMask")->isVisible(); }));
    }

    void Answer(const std::string& json) { server->Put("/v1/users/" + std::to_string(kReady) + "/activation", json); }

    /// Returns a visible widget of the class. A widget of a former user may still wait for its deletion.
    QWidget* Seen(const char* name) const {
        const auto widgets = window->findChildren<QWidget*>();
        const auto found = std::find_if(widgets.begin(), widgets.end(), [name](const QWidget* widget) {
            return widget->inherits(name) && widget->isVisible();
        });
        return found == widgets.end() ? nullptr : *found;
    }

    void Activate() {
        const size_t before = server->Requests(20981).size();
        Click(Slot("OrderBookMask")->findChild<ZButton*>());
        ASSERT_TRUE(WaitInRealTime([&] { return server->Requests(20981).size() == before + 1; }));
    }

    QWidget* Popup() const { return OfClass("CZRAdMiddlePopupView"); }
    bool IsPopupSeen() const { return Popup() && Popup()->isVisible(); }
    bool HasToast() const { return window->findChild<ZToast*>() != nullptr; }
    bool IsMasked() const { return Slot("OrderBookMask")->isVisible(); }

    std::vector<std::string> KeysOf(const Json::Value& params) const {
        std::vector<std::string> keys = params.getMemberNames();
        std::sort(keys.begin(), keys.end());
        return keys;
    }
};

}  // namespace

TEST_F(VipActivationTest, SuccessShowsThePictureRemovesTheMaskAndShowsTheDaysLeft) {
    OpenBook();

    Activate();

    ASSERT_TRUE(WaitInRealTime([this] { return IsPopupSeen(); }));
    EXPECT_EQ(Popup()->size(), window->size());
    EXPECT_GT(ColoursAt(*Popup()), 20U);
    ASSERT_TRUE(WaitInRealTime([this] { return !IsMasked(); }));
    ASSERT_TRUE(WaitInRealTime([this] { return Slot("OrderBookBanner")->isVisible(); }));
    EXPECT_GE(ParsedLine("Days Left = 7"), 1);
    Picture("vip-activated");

    // The picture leads to its page and goes.
    Click(Popup()->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    ASSERT_TRUE(WaitInRealTime([this] { return !IsPopupSeen(); }));
    EXPECT_EQ(ParsedLine("OnImageClicked, jumpResult = true"), 1);
}

TEST_F(VipActivationTest, CloseButtonRemovesThePicture) {
    OpenBook();
    Activate();
    ASSERT_TRUE(WaitInRealTime([this] { return IsPopupSeen(); }));

    Click(Child<QWidget>("CZRAdMiddlePopupViewCloseButton"));

    ASSERT_TRUE(WaitInRealTime([this] { return Popup() == nullptr; }));
    EXPECT_EQ(ParsedLine("OnClosed"), 1);
}

TEST_F(VipActivationTest, SuccessWithoutAPictureShowsAToast) {
    OpenBook();
    server->Put("/v1/config/premium_active_popup_image", "{}");
    Activate();

    ASSERT_TRUE(WaitInRealTime([this] { return HasToast(); }));
    EXPECT_EQ(ParsedLine("Show popup failed, imageUrl is empty. Show success toast"), 1);
    EXPECT_TRUE(WaitInRealTime([this] { return !IsMasked(); }));
    EXPECT_FALSE(IsPopupSeen());
}

struct Refusal {
    const char* name;
    const char* answer;
    const char* line;
};

class VipRefusalTest : public VipActivationTest, public WithParamInterface<Refusal> {};

TEST_P(VipRefusalTest, LeavesTheMaskAndShowsAToast) {
    OpenBook();
    Answer(GetParam().answer);

    Activate();

    ASSERT_TRUE(WaitInRealTime([this] { return HasToast(); }));
    EXPECT_EQ(ParsedLine(GetParam().line), 1);
    EXPECT_TRUE(IsMasked());
    EXPECT_FALSE(IsPopupSeen());
}

INSTANTIATE_TEST_SUITE_P(Answers, VipRefusalTest,
                         Values(Refusal{"refused", R"({"code":7,"message":"no"})",
                                        "active failed, code = 7, message = no"},
                                Refusal{"repeated", R"({"code":1001,"message":"again"})", "active failed, code = 1001"},
                                Refusal{"error", R"({"error":5})", "receive cmd error, error = 5"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(VipActivationTest, ReportsHaveTheirExactKeys) {
    OpenBook();
    Activate();
    ASSERT_TRUE(WaitInRealTime([this] { return Reported(kMarketClick) == 1; }));
    EXPECT_THAT(KeysOf(server->ReportsOf(kMarketClick)[0]),
                ElementsAre("button_position", "engine_status", "page_status", "permission_type"));
    EXPECT_EQ(server->ReportsOf(kMarketClick)[0]["page_status"], 6);

    // The mask goes: its exposure ends. The banner, whose right is limited now, is clicked.
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ViewPremiumMarketEntrance") >= 1; }));
    ASSERT_TRUE(WaitInRealTime([this] { return IsPopupSeen(); }));
    Click(Child<QWidget>("CZRAdMiddlePopupViewCloseButton"));
    ASSERT_TRUE(WaitInRealTime([this] { return Popup() == nullptr; }));
    Click(Slot("OrderBookBanner")->findChild<ZButton*>());
    ASSERT_TRUE(WaitInRealTime([this] { return Reported(kMarketClick) == 2; }));
    const Json::Value banner = server->ReportsOf(kMarketClick)[1];
    EXPECT_THAT(KeysOf(banner),
                ElementsAre("button_position", "day_number", "engine_status", "page_status", "permission_type"));
    EXPECT_EQ(banner["page_status"], 1);
}

TEST_F(VipActivationTest, ClickOnTheExclusiveMaskReportsAndActivatesNothing) {
    LogIn(20001);
    Choose("research");
    auto* mask = Slot("AnalystConsensusMask");
    ASSERT_TRUE(WaitInRealTime([mask] { return mask->isVisible(); }));

    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      mask->mapTo(window, mask->rect().center()));

    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ClickPremiumFunctionEntrance") == 1; }));
    EXPECT_THAT(KeysOf(server->ReportsOf("ClickPremiumFunctionEntrance")[0]),
                ElementsAre("button_position", "engine_status", "page_status", "permission_type"));
    EXPECT_THAT(server->Requests(20981), IsEmpty());
}

TEST_F(VipActivationTest, ClickOnATagReportsAndIconsAndEntriesReportNothing) {
    LogIn(kMemberOfGrade2);
    Choose("account");
    QWidget* tag = nullptr;
    ASSERT_TRUE(WaitInRealTime([&] {
        tag = Seen("CZRVipTagWidget");
        return tag != nullptr;
    }));

    Click(tag);

    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ClickMemberIcon") == 1; }));
    EXPECT_THAT(KeysOf(server->ReportsOf("ClickMemberIcon")[0]), ElementsAre("engine_status", "permission_type"));
    Choose("news");
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ExposeMemberIcon") >= 1; }));
    EXPECT_THAT(KeysOf(server->ReportsOf("ExposeMemberIcon")[0]), IsSupersetOf({"engine_status", "permission_type"}));
    for (const auto& [name, count] : server->ReportCounts()) {
        EXPECT_THAT(name, AnyOf("ClickMemberIcon", "ExposeMemberIcon", "ViewPremiumMarketEntrance",
                                "ViewPremiumFunctionEntrance", ContainsRegex("Ad")))
            << count;
    }
}

TEST_F(VipActivationTest, ClickOnATagOpensTheServersPageOfTheMembershipCentre) {
    using core::webview::ZRWebDialog;
    options.webEngine = true;
    LogIn(kMemberOfGrade2);
    Choose("account");
    ASSERT_TRUE(WaitInRealTime([this] { return Seen("CZRVipTagWidget") != nullptr; }));
    std::vector<std::string> opened;
    QObject::connect(client, &CComposition::WebOpened, &watcher,
                     [&opened](const QUrl& url) { opened.push_back(url.path().toStdString()); });

    Click(Seen("CZRVipTagWidget"));

    EXPECT_THAT(opened, ElementsAre("/link/202011732"));
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto dialog = std::find_if(windows.begin(), windows.end(), [](const QWidget* top) {
        return qobject_cast<const ZRWebDialog*>(top) != nullptr;
    });
    ASSERT_NE(dialog, windows.end());
    EXPECT_EQ((*dialog)->size(), QSize(390, 848));
    EXPECT_TRUE(WaitInRealTime([this] { return !server->HttpTo("/link/202011732").empty(); }));
}
