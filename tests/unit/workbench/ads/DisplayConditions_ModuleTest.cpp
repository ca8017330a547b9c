// The workbench's explanation why an ad is not shown, and until when, compared with the real module.
#include "AdScreen.h"
#include "workbench/ads/AdTabs.h"

using namespace ::testing;

namespace {

using AdDiagnosisTest = AdScreenTest;

std::string NameOfOffset(const TestParamInfo<int>& info) {
    return info.param == 0 ? "There" : "ASecondBefore";
}

class DisplayConditionsTest : public AdDiagnosisTest, public WithParamInterface<int> {
protected:
    /// Advances the clock to the parameter's number of seconds after the predicted time.
    void GoThere() {
        ASSERT_EQ(Moment().what, DisplayConditions::EnWhat::Free);
        time.Advance(std::chrono::milliseconds(Moment().atMs + GetParam() * 1000 - time.ServerTime()));
    }
    static bool IsThere() { return GetParam() == 0; }
    bool HasCard() const { return State().why.isLoading; }
};

}  // namespace

TEST_P(DisplayConditionsTest, OfTheLimitIsWhenARequestGoesOut) {
    Ask();
    time.Advance(std::chrono::milliseconds(3'700));
    Ask();
    EXPECT_EQ(Moment().atMs, 210'000);
    GoThere();

    Ask();

    EXPECT_THAT(http.Started(), SizeIs(IsThere() ? 2 : 1));
}

TEST_P(DisplayConditionsTest, OfAStartIsWhenAnAnswerIsShown) {
    Exchange(Card({Popup("later", 260), Popup("first", 240), Popup("over", 100, 150), Popup("never", 235, 220)}));
    EXPECT_EQ(Moment().atMs, 240'000);
    GoThere();

    Ask();
    AnswerJson(Card({Popup("later", 260), Popup("first", 240)}));

    EXPECT_EQ(HasCard(), IsThere());
}

TEST_P(DisplayConditionsTest, OfAStartWithinTheLimitIsWhenThatIsOver) {
    Exchange(Card({Popup("first", 213)}));
    EXPECT_EQ(Moment().atMs, 220'000);
    GoThere();

    Ask();

    EXPECT_THAT(http.Started(), SizeIs(IsThere() ? 2 : 1));
}

TEST_P(DisplayConditionsTest, OfAnIntervalIsWhenAListThatWaitsIsShown) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card({Popup("18088", 100, 900, 900)}, 80));
    EXPECT_EQ(Moment().atMs, 231'000);
    GoThere();

    slot.TryShowAdPopup();

    EXPECT_EQ(HasCard(), IsThere());
}

INSTANTIATE_TEST_SUITE_P(SecondsFromIt, DisplayConditionsTest, Values(-1, 0), NameOfOffset);

TEST_F(AdDiagnosisTest, AnIntervalThatEndsAfterTheAdIsNoMoment) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card({Popup("18088", 100, 300, 900)}, 150));
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Over);
    EXPECT_EQ(Told()["Time alone"], "changes nothing: its window ends before");

    Exchange(Card({Popup("18088", 100, 301, 900)}, 150));
    EXPECT_EQ(Moment().atMs, 301'000);
}

TEST_F(AdDiagnosisTest, AnAdWhoseStartNeverComesHasNoMoment) {
    Exchange(Parsed(R"({"code": 0, "data": {"ad_type": 2, "ad_position": 42, "show_duration": 1, "show_interval": 0,
        "show_interval_type": 1, "enable_close": true, "ad": [{"ad_id": "a", "start_time": 9223372036854775807,
        "end_time": 9223372036854775807, "expire_time": 9223372036854775807, "popup_ad": {"popup_type": 2,
        "show_areas": [500], "bottom_popup": {"img": "https://x/", "schema": "https://y/"}}}]}})"));

    EXPECT_EQ(State().why.last->test, EnAdTest::Window);
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Nothing);
}

TEST_F(AdDiagnosisTest, WhatIsNoMatterOfTimeIsToldSo) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());

    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Nothing);
    EXPECT_EQ(Told()["Time alone"], "changes nothing");
    EXPECT_EQ(Told()["Tried again"], "at a change of the tab, or with the next request");
}

TEST_F(AdDiagnosisTest, TheStepsBeforeARefusalAndBehindItAreNamed) {
    store.SetInt64(kLastShow, 150);
    Exchange(Card(3600));

    const auto group = ad_diagnosis_text::Why(board, State(), time.ServerTime());
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

TEST_F(AdDiagnosisTest, EachAdThatIsNotDueIsToldWithItsLimit) {
    Exchange(Card({Popup("over", 100, 150), Popup("early", 250), Popup("expired", 100, 900, 180)}));

    const auto group = ad_diagnosis_text::Why(board, State(), time.ServerTime());
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

TEST_F(AdDiagnosisTest, TheTabsOfTheServerAreThoseOfTheModule) {
    ASSERT_EQ(kAdTabs.size(), kTabPages.size());
    for (const AdTab& tab : kAdTabs) {
        EXPECT_EQ(int(CPopupSlot::ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey(tab.tab))), tab.area);
    }
}
