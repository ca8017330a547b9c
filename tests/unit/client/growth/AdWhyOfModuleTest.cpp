// Why an ad is not on screen, as the workbench tells it, beside the module itself.
#include "AdScreen.h"
#include "AdTexts.h"
#include "workbench/ads/AdTabs.h"

using namespace ::testing;

namespace {

const QSize kSize(600, 100);

class AdWhyTest : public AdScreenTest {
public:
    // What the table's rows need.
    using AdScreenTest::Answer;
    using AdScreenTest::AnswerJson;
    using AdScreenTest::Ask;
    using AdScreenTest::Card;
    using AdScreenTest::Exchange;
    using AdScreenTest::http;
    using AdScreenTest::kLastShow;
    using AdScreenTest::LetPictureIn;
    using AdScreenTest::mainFrame;
    using AdScreenTest::pictures;
    using AdScreenTest::Popup;
    using AdScreenTest::slot;
    using AdScreenTest::slots;
    using AdScreenTest::store;
    using AdScreenTest::Strip;
    using AdScreenTest::WaitForLimit;

    void AskBanner(const std::function<void(QWidget*)>& shown) { banner.GetAdBannerAsync(kSize, shown, 0, false, {}); }
    void ExchangeBanner(const Json::Value& answer) {
        WaitForLimit();
        AskBanner([this](QWidget* made) { views.emplace_back(made); });
        AnswerJson(answer);
    }

    CZRAdBannerController banner{nullptr, 7};
    std::vector<std::unique_ptr<QWidget>> views;
};

struct Row {
    const char* name;
    std::function<void(AdWhyTest&)> refuse;
    AdSlot slot;
    const char* last;
    const char* here;
    const char* needed;
    const char* passed;
    const char* notReached;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

std::string NameOf(const TestParamInfo<Row>& info) {
    return info.param.name;
}

std::string NameOfOffset(const TestParamInfo<int>& info) {
    return info.param == 0 ? "There" : "ASecondBefore";
}

const char* const kAllParts = "list, moment, view, picture, moment, with its picture in";
const char* const kRequestAndRest = "request, list, moment, view, picture, moment, with its picture in";

Json::Value With(Json::Value answer, const char* name, int value) {
    answer["data"][name] = value;
    return answer;
}

std::vector<Row> Rows() {
    using T = AdWhyTest;
    const AdSlot banner{3, 7};
    return {
        {"Limit",
         [](T& t) {
             t.Ask();
             t.Ask();
         },
         kBottomPopup, "refused (request): pause between requests", "1970-01-01 00:03:20 UTC",
         "10 s after the last request, 1970-01-01 00:03:20 UTC", "none", kRequestAndRest},
        {"Task",
         [](T& t) {
             t.http.RefuseStarts(Failing::Always());
             t.Ask();
         },
         kBottomPopup, "refused (request): sent", "not sent: no task", "there", "request", kRequestAndRest},
        {"Latest",
         [](T& t) {
             t.Ask();
             t.WaitForLimit();
             t.Ask();
             t.http.Answer(t.http.LastTask() - 1, "");
         },
         kBottomPopup, "refused (request): answer to the latest request", "Task 1", "Task 2", "request",
         kRequestAndRest},
        {"Exchange",
         [](T& t) {
             t.Ask();
             t.http.Fail(t.http.LastTask(), kHttpTimedOut);
         },
         kBottomPopup, "refused (request): exchange", "result 3", "result 0", "request", kRequestAndRest},
        {"Json",
         [](T& t) {
             t.Ask();
             t.Answer("{");
         },
         kBottomPopup, "refused (request): JSON", "not JSON", "JSON", "request", kRequestAndRest},
        {"Decode", [](T& t) { t.Exchange(Json::objectValue); }, kBottomPopup, "refused (request): decoded",
         "unfit: CZRAdResponseModel: code", "there", "request", kRequestAndRest},
        {"Code",
         [](T& t) {
             Json::Value refused = T::Card();
             refused["code"] = 17;
             refused["message"] = "closed today";
             t.Exchange(refused);
         },
         kBottomPopup, "refused (request): code 0", "code 17: closed today", "code 0", "request", kAllParts},
        {"Type", [](T& t) { t.Exchange(With(T::Strip(), "ad_position", 42)); }, kBottomPopup, "refused (list): type",
         "Banner 42", "Popup 42", "request, list", kAllParts},
        {"Position", [](T& t) { t.Exchange(With(T::Card(), "ad_position", 43)); }, kBottomPopup,
         "refused (list): position", "Popup 43", "Popup 42", "request, list", kAllParts},
        {"Ads", [](T& t) { t.Exchange(T::Card(std::vector<Json::Value>())); }, kBottomPopup,
         "refused (list): ads in it", "0", "≥ 1", "request, list", kAllParts},
        {"Window",
         [](T& t) {
             t.Exchange(T::Card({T::Popup("over", 100, 150), T::Popup("early", 250)}));
         },
         kBottomPopup, "refused (list): an ad that is due", "1970-01-01 00:03:30 UTC", "in its window", "request, list",
         kAllParts},
        {"Areas",
         [](T& t) {
             Json::Value nowhere = T::Card();
             nowhere["data"]["ad"][0]["popup_ad"]["show_areas"].clear();
             t.Exchange(nowhere);
         },
         kBottomPopup, "refused (list): areas", "missing", "there", "request, list",
         "moment, view, picture, moment, with its picture in"},
        {"Tab",
         [](T& t) {
             t.mainFrame.SetTabKey(20005);
             Json::Value card = T::Card();
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(503);
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(508);
             t.Exchange(card);
         },
         kBottomPopup, "refused (moment): current tab", "Portfolio (area 507), key 20005",
         "Watchlist (area 500), Account (area 503), no tab (area 508)", "request, list, moment",
         "moment, view, picture, moment, with its picture in"},
        {"Interval",
         [](T& t) {
             t.store.SetInt64(t.kLastShow, 150);
             t.Exchange(T::Card(60));
         },
         kBottomPopup, "refused (moment): interval since the last showing", "1970-01-01 00:03:30 UTC",
         "more than 60 s after the last showing, 1970-01-01 00:02:30 UTC", "request, list, moment",
         "moment, view, picture, moment, with its picture in"},
        {"Slot",
         [](T& t) {
             t.slots.Allow(kSlotAdPopup, false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (moment): shared slot", "taken", "free", "request, list, moment",
         "moment, view, picture, moment, with its picture in"},
        {"Focus",
         [](T& t) {
             t.mainFrame.SetFocusIn(false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (moment): focus", "the main window has no focus", "it has the focus",
         "request, list, moment", "view, picture, moment, with its picture in"},
        {"MainFrame",
         [](T& t) {
             t.mainFrame.Offer(nullptr);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (view): main window", "missing", "there", "request, list, moment, view",
         "picture, moment, with its picture in"},
        {"Picture",
         [](T& t) {
             t.Exchange(T::Card());
             for (int tries = 0; tries < 3; ++tries) {
                 t.pictures.Fail(t.pictures.LastLoad());
             }
         },
         kBottomPopup, "refused (picture): picture loaded", "failed at try 3: https://pictures.test/card.png", "loaded",
         "request, list, moment, view", "moment, with its picture in"},
        {"TabAgain",
         [](T& t) {
             t.Exchange(T::Card());
             t.mainFrame.SetTabKey(20002);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): current tab", "Quotes (area 501), key 20002",
         "Watchlist (area 500)", "request, list, moment, view, picture, moment, with its picture in",
         "moment, with its picture in"},
        {"NoList", [](T& t) { t.slot.TryShowAdPopup(); }, kBottomPopup, "refused (list): a list", "missing", "there",
         "none", kAllParts},
        {"Layout",
         [](T& t) {
             Json::Value strip = T::Strip();
             strip["data"].removeMember("banner_position");
             t.ExchangeBanner(strip);
         },
         banner, "refused (list): layout", "missing", "there", "request, list", "list, view"},
        {"Caller",
         [](T& t) {
             t.AskBanner(nullptr);
             t.AnswerJson(T::Strip());
         },
         banner, "refused (list): somebody waits for it", "missing", "there", "request, list", "view"},
        {"BannerType", [](T& t) { t.ExchangeBanner(T::Strip(0)); }, banner, "refused (view): banner type", "0", "≠ 0",
         "request, list, view", "none"},
    };
}

class AdWhyRefusalTest : public AdWhyTest, public WithParamInterface<Row> {};

class AdMomentTest : public AdWhyTest, public WithParamInterface<int> {
protected:
    /// To so many seconds from the moment that was told.
    void GoThere() {
        ASSERT_EQ(Moment().what, AdMoment::EnWhat::Free);
        time.Advance(std::chrono::milliseconds(Moment().atMs + GetParam() * 1000 - time.ServerTime()));
    }
    static bool IsThere() { return GetParam() == 0; }
    bool HasCard() const { return State().why.isLoading; }
};

}  // namespace

TEST_P(AdWhyRefusalTest, IsToldWithBothSidesAndItsPlaceOnTheWay) {
    GetParam().refuse(*this);

    std::map<std::string, std::string> told = Told(GetParam().slot);
    EXPECT_THAT(told["Last"], StartsWith(std::string(GetParam().last) + " · "));
    EXPECT_EQ(told["Found"], GetParam().here);
    EXPECT_EQ(told["Needed"], GetParam().needed);
    EXPECT_EQ(told["Passed"], GetParam().passed);
    EXPECT_EQ(told["Not reached"], GetParam().notReached);
}

INSTANTIATE_TEST_SUITE_P(OfEachRule, AdWhyRefusalTest, ValuesIn(Rows()), NameOf);

TEST_P(AdMomentTest, OfTheLimitIsWhenARequestGoesOut) {
    Ask();
    time.Advance(std::chrono::milliseconds(3'700));
    Ask();
    EXPECT_EQ(Moment().atMs, 210'000);
    GoThere();

    Ask();

    EXPECT_THAT(http.Started(), SizeIs(IsThere() ? 2 : 1));
}

TEST_P(AdMomentTest, OfAStartIsWhenAnAnswerIsShown) {
    Exchange(Card({Popup("later", 260), Popup("first", 240), Popup("over", 100, 150), Popup("never", 235, 220)}));
    EXPECT_EQ(Moment().atMs, 240'000);
    GoThere();

    Ask();
    AnswerJson(Card({Popup("later", 260), Popup("first", 240)}));

    EXPECT_EQ(HasCard(), IsThere());
}

TEST_P(AdMomentTest, OfAStartWithinTheLimitIsWhenThatIsOver) {
    Exchange(Card({Popup("first", 213)}));
    EXPECT_EQ(Moment().atMs, 220'000);
    GoThere();

    Ask();

    EXPECT_THAT(http.Started(), SizeIs(IsThere() ? 2 : 1));
}

TEST_P(AdMomentTest, OfAnIntervalIsWhenAListThatWaitsIsShown) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card({Popup("18088", 100, 900, 900)}, 80));
    EXPECT_EQ(Moment().atMs, 231'000);
    GoThere();

    slot.TryShowAdPopup();

    EXPECT_EQ(HasCard(), IsThere());
}

INSTANTIATE_TEST_SUITE_P(SecondsFromIt, AdMomentTest, Values(-1, 0), NameOfOffset);

TEST_F(AdWhyTest, AnIntervalThatEndsAfterTheAdIsNoMoment) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card({Popup("18088", 100, 300, 900)}, 150));
    EXPECT_EQ(Moment().what, AdMoment::EnWhat::Over);
    EXPECT_EQ(Told()["Time alone"], "changes nothing: its window ends before");

    Exchange(Card({Popup("18088", 100, 301, 900)}, 150));
    EXPECT_EQ(Moment().atMs, 301'000);
}

TEST_F(AdWhyTest, AnAdWhoseStartNeverComesHasNoMoment) {
    Exchange(Parsed(R"({"code": 0, "data": {"ad_type": 2, "ad_position": 42, "show_duration": 1, "show_interval": 0,
        "show_interval_type": 1, "enable_close": true, "ad": [{"ad_id": "a", "start_time": 9223372036854775807,
        "end_time": 9223372036854775807, "expire_time": 9223372036854775807, "popup_ad": {"popup_type": 2,
        "show_areas": [500], "bottom_popup": {"img": "https://x/", "schema": "https://y/"}}}]}})"));

    EXPECT_EQ(State().why.last->test, EnAdTest::Window);
    EXPECT_EQ(Moment().what, AdMoment::EnWhat::Nothing);
}

TEST_F(AdWhyTest, WhatIsNoMatterOfTimeIsToldSo) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());

    EXPECT_EQ(Moment().what, AdMoment::EnWhat::Nothing);
    EXPECT_EQ(Told()["Time alone"], "changes nothing");
    EXPECT_EQ(Told()["Tried again"], "at a change of the tab, or with the next request");
}

TEST_F(AdWhyTest, TheStepsBeforeARefusalAndBehindItAreNamed) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card(3600));

    const auto group = ad_why_words::Why(board, State(), time.ServerTime());
    std::vector<std::string> told;
    for (const FieldNode& line : group.lines) {
        for (const FieldNode& part : line.children) {
            told.push_back(
                (line.name + QStringLiteral(": ") + part.name + QStringLiteral(": ") + part.value).toStdString());
        }
    }
    EXPECT_THAT(
        told,
        ElementsAre("Passed: request: pause between requests, sent, answer to the latest request, exchange, JSON, "
                    "decoded, code 0",
                    "Passed: list: a list, type, position, ads in it, an ad that is due, a popup first, ad id, areas",
                    "Passed: moment: a list, a popup first, areas, current tab",
                    "Not reached: moment: shared slot, focus",
                    "Not reached: view: a list, position, a popup first, picture and link, interface of the main "
                    "window, main window",
                    "Not reached: picture: picture loaded",
                    "Not reached: moment, with its picture in: ad id, a list, a popup first, areas, current tab, "
                    "interval since the last showing, shared slot, focus, view still there"));
}

TEST_F(AdWhyTest, EachAdThatIsNotDueIsToldWithItsLimit) {
    Exchange(Card({Popup("over", 100, 150), Popup("early", 250), Popup("expired", 100, 900, 180)}));

    const auto group = ad_why_words::Why(board, State(), time.ServerTime());
    const auto needed = std::find_if(group.lines.begin(), group.lines.end(),
                                     [](const FieldNode& line) { return line.name == QStringLiteral("Needed"); });
    ASSERT_NE(needed, group.lines.end());
    std::vector<std::string> told;
    for (const FieldNode& ad : needed->children) {
        told.push_back((ad.name + QStringLiteral(": ") + ad.value).toStdString());
    }
    EXPECT_THAT(told, ElementsAre("over: dropped: ended 1970-01-01 00:02:30 UTC",
                                  "early: dropped: starts 1970-01-01 00:04:10 UTC",
                                  "expired: dropped: expired 1970-01-01 00:03:00 UTC"));
}

TEST_F(AdWhyTest, TheTabsOfTheServerAreThoseOfTheModule) {
    ASSERT_EQ(kAdTabs.size(), kTabPages.size());
    for (const AdTab& tab : kAdTabs) {
        EXPECT_EQ(int(CPopupSlot::ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey(tab.tab))), tab.area);
    }
}
