// The bottom popup under all sequences of up to five different events and of up to four events, for several display
// times and intervals. After each event the popup has the state of the rules. No exposure ends twice or without a
// beginning.
#include <QTimer>
#include <algorithm>
#include <map>
#include <set>

#include "Ad/AdSamples.h"
#include "Ad/Controller/PopupRules.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20171.pb.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr int64_t kGoodTab = 20001;
constexpr int64_t kOtherTab = 20002;

using EventSequence = std::vector<PopupEvent>;

const EventSequence kUsualEvents{PopupEvent::kAnswer, PopupEvent::kOffline, PopupEvent::kNewAd, PopupEvent::kTab,
                                 PopupEvent::kLogout, PopupEvent::kPicture, PopupEvent::kTime};
const EventSequence kAllEvents{PopupEvent::kAnswer,   PopupEvent::kOffline,        PopupEvent::kNewAd,
                               PopupEvent::kTab,      PopupEvent::kLogout,         PopupEvent::kPicture,
                               PopupEvent::kTime,     PopupEvent::kOfflineWaiting, PopupEvent::kLanguage,
                               PopupEvent::kNoPicture};

/// All sequences that begin with `first` and continue with one to `most` of these events.
struct SequenceSet {
    EventSequence first;
    EventSequence events;
    bool repeat = true;
    int most = 0;
};

const SequenceSet kOfDifferentEvents{{}, kUsualEvents, false, 5};
const SequenceSet kOfAnyEvents{{}, kUsualEvents, true, 4};
// With rare events: withdrawal of a waiting ad, another language, a missing picture.
const SequenceSet kAfterAnAnswer{{PopupEvent::kAnswer}, kAllEvents, true, 3};
// The shown ad differs from the ad of the next answer.
const SequenceSet kWithANewAdOnItsWay{
    {PopupEvent::kAnswer, PopupEvent::kPicture, PopupEvent::kTime, PopupEvent::kNewAd}, kAllEvents, true, 3};
const SequenceSet kWithTwoAds{
    {PopupEvent::kAnswer, PopupEvent::kPicture, PopupEvent::kTime, PopupEvent::kNewAd, PopupEvent::kAnswer},
    kAllEvents,
    true,
    3};

std::string NameOf(PopupEvent event) {
    constexpr const char* kNames[] = {"Answer", "OfflinePush",          "NewAdPush", "Tab",      "Logout", "Picture",
                                      "Time",   "OfflinePushOfWaiting", "Language",  "NoPicture"};
    return kNames[int(event)];
}

struct TimesRow {
    const char* name;
    PopupTimes times;
    std::vector<std::string> reached;  // the states that the sequences reach, sorted
};

// With a step of eleven seconds: one step leaves the ad on screen and within the interval; one closes it and lets the
// next one come; one leaves it on screen and lets the next one come over it; nothing ever closes or holds back.
const std::vector<TimesRow> kTimes{
    {"StandsAndKeepsAway",
     {15, 30, 10},
     {"a withdrawal refills", "the shown one is withdrawn and the other waits", "the time closes",
      "the waiting one is withdrawn"}},
    {"ClosesAndComes", {10, 5, 10}, {"a withdrawal refills", "another is shown", "the time closes"}},
    {"StandsAndComes",
     {15, 5, 10},
     {"a withdrawal refills", "another comes over the shown one", "another is shown",
      "the shown one is withdrawn and the other waits", "the time closes", "the waiting one is withdrawn",
      "two exposures are open"}},
    {"Endless",
     {0, 0, 10},
     {"a withdrawal refills", "another comes over the shown one", "another is shown",
      "the shown one is withdrawn and the other waits", "the waiting one is withdrawn", "two exposures are open"}}};

std::string RowName(const TestParamInfo<std::tuple<TimesRow, PopupEvent>>& row) {
    return std::get<TimesRow>(row.param).name + NameOf(std::get<PopupEvent>(row.param));
}

void PrintTo(const TimesRow& row, std::ostream* stream) {
    *stream << row.name;
}

/// A popup on a scripted host of its own, with the rules for its expected state.
class CPopupFixture {
public:
    explicit CPopupFixture(const PopupTimes& times)
        : m_times(times), m_rules(CVirtualTime::kFirstServerTime / 1000, times) {
        m_host.state.account.Set(501);
        m_window.resize(1000, 700);
        m_host.mainFrame.Offer(&m_window);
        m_host.mainFrame.SetFocusIn(true);
        m_host.mainFrame.SetTabKey(kGoodTab);
        m_host.state.slots.Allow(kSlotAdPopup, true);
        m_manager.Init();
        m_host.bus.HostSend(10650);
        m_controller = m_manager.findChild<CZRAdBottomPopupController*>();
    }

    // Picture requests and log lines are not checked here.
    ~CPopupFixture() {
        m_host.pictures.Forget();
        m_host.log.Forget();
    }
    CPopupFixture(const CPopupFixture&) = delete;
    CPopupFixture& operator=(const CPopupFixture&) = delete;

    void Do(PopupEvent event) {
        switch (event) {
            case PopupEvent::kAnswer:
                m_host.http.Answer(LastSearch(), AnswerWith(m_rules.NextAd()));
                break;
            case PopupEvent::kOffline:
                Withdraw(m_rules.OfflineAd());
                break;
            case PopupEvent::kOfflineWaiting:
                Withdraw(m_rules.OfflineWaitingAd());
                break;
            case PopupEvent::kNewAd: {
                ads_service::AdPush push;
                push.set_ad_type(ZRAdTypePopup);
                push.set_ad_position(kAdPositionBottomPopup);
                m_host.channel.Push(20171, push.SerializeAsString());
                break;
            }
            case PopupEvent::kTab: {
                const int64_t key = m_rules.IsTabGood() ? kOtherTab : kGoodTab;
                m_host.mainFrame.SetTabKey(key);
                m_host.bus.HostSend(20157, static_cast<unsigned long>(key));
                break;
            }
            case PopupEvent::kLanguage:
                m_host.bus.HostSend(20100);
                break;
            case PopupEvent::kLogout:
                m_manager.OnLogout();
                break;
            case PopupEvent::kPicture:
                if (m_host.pictures.OutstandingCount() > 0) {
                    m_host.pictures.Succeed(m_host.pictures.LastLoad());
                }
                break;
            case PopupEvent::kNoPicture:
                if (m_host.pictures.OutstandingCount() > 0) {
                    m_host.pictures.Fail(m_host.pictures.LastLoad());
                }
                break;
            case PopupEvent::kTime:
                m_host.time.Advance(std::chrono::seconds(CPopupRules::kTimeStep));
                break;
        }
        m_host.time.Settle();
        m_rules.Happen(event);
    }

    PopupState Expected() const { return m_rules.State(); }

    PopupState State() {
        PopupState state;
        if (CZRAdModelList* list = m_controller->GetAdModelList()) {
            state.list = list->GetAdList()->first()->GetAdId().toStdString();
        }
        const auto views = m_window.findChildren<CZRAdBottomPopupView*>();
        EXPECT_LE(views.size(), 1);
        state.view = !views.isEmpty();
        state.shown = state.view && !views.first()->isHidden();
        EXPECT_LE(m_host.pictures.OutstandingCount(), 1);
        state.loading = m_host.pictures.OutstandingCount() > 0;
        state.closesIn = ClosesIn();
        state.lastShow = m_host.store.Int64("AdLastShowTimeStampKey_2_42_501_1").value_or(0);
        state.open = OpenExposures();
        for (const StartedRequest& started : m_host.http.Started()) {
            state.requests += started.request.m_strUrl == "https://ads.test/ad/search" ? 1 : 0;
        }
        return state;
    }

private:
    void Withdraw(const std::string& ad) {
        ad_manage_oss::AdPush push;
        push.set_ad_type(ZRAdTypePopup);
        push.set_ad_position(kAdPositionBottomPopup);
        push.set_delay(uint32_t(m_times.offlineDelay));
        if (!ad.empty()) {
            push.add_offline_ad_id(ad);
        }
        m_host.channel.Push(20145, push.SerializeAsString());
    }

    /// The last request for ads; exposures go the same way.
    unsigned long LastSearch() {
        unsigned long task = 0;
        for (const StartedRequest& started : m_host.http.Started()) {
            if (started.request.m_strUrl == "https://ads.test/ad/search") {
                task = started.task;
            }
        }
        return task;
    }

    std::string AnswerWith(const std::string& ad) const {
        Json::Value data = PopupData();
        data["show_duration"] = Json::Int64(m_times.showDuration);
        data["show_interval"] = Json::Int64(m_times.showInterval);
        Json::Value popup = PopupAd(ad);
        for (const char* key : {"end_time", "expire_time"}) {
            popup[key] = Json::Int64(4'000'000'000);
        }
        popup["popup_ad"]["show_areas"] = JsonOf("[500]");
        data["ad"].append(popup);
        return AnswerOf(data).toStyledString();
    }

    std::optional<int64_t> ClosesIn() {
        const auto timers = m_controller->findChildren<QTimer*>();
        EXPECT_LE(timers.size(), 1);
        if (timers.isEmpty()) {
            return std::nullopt;
        }
        EXPECT_TRUE(timers.first()->isActive());
        EXPECT_TRUE(timers.first()->isSingleShot());
        return timers.first()->remainingTime();
    }

    std::vector<std::string> OpenExposures() {
        std::map<std::string, int> balance;
        for (const ReportedEvent& event : m_host.reports.Events()) {
            const std::string ad = JsonOf(event.params)["advertisement_id"].asString();
            if (event.name == "StartExposeAd") {
                EXPECT_EQ(balance[ad]++, 0) << "begun twice: " << ad;
            } else if (event.name == "ExposeAd") {
                EXPECT_EQ(balance[ad]--, 1) << "ended without a beginning: " << ad;
            }
        }
        std::vector<std::string> open;
        for (const auto& [ad, count] : balance) {
            if (count > 0) {
                open.push_back(ad);
            }
        }
        return open;
    }

    const PopupTimes m_times;
    CPopupRules m_rules;
    CScriptedHost m_host;
    QWidget m_window;
    CZRAdManager m_manager;
    CZRAdBottomPopupController* m_controller = nullptr;
};

class PopupSequencesTest : public TestWithParam<std::tuple<TimesRow, PopupEvent>> {
protected:
    /// Runs the sequences that continue with the event of this case. Returns their number.
    int Run(const SequenceSet& set) {
        EventSequence sequence = set.first;
        sequence.push_back(std::get<PopupEvent>(GetParam()));
        GoOn(sequence, set, set.most - 1);
        return m_nSeen;
    }

private:
    void GoOn(const EventSequence& sequence, const SequenceSet& set, int most) {
        if (most == 0) {
            Play(sequence, set.first.size());
            return;
        }
        for (const PopupEvent event : set.events) {
            const bool isAgain =
                std::find(sequence.begin() + int(set.first.size()), sequence.end(), event) != sequence.end();
            if ((set.repeat || !isAgain) && !HasFailure()) {
                EventSequence longer = sequence;
                longer.push_back(event);
                GoOn(longer, set, most - 1);
            }
        }
    }

    /// Runs the sequence from its beginning. Checks from the first difference to the sequence before.
    void Play(const EventSequence& sequence, size_t firstSize) {
        const auto leaves = std::mismatch(sequence.begin(), sequence.end(), m_before.begin(), m_before.end()).first;
        CPopupFixture popup(std::get<TimesRow>(GetParam()).times);
        std::string events;
        for (auto event = sequence.begin(); event != sequence.end(); ++event) {
            events += NameOf(*event) + ", ";
            popup.Do(*event);
            if (event >= leaves) {
                EXPECT_EQ(popup.State(), popup.Expected()) << events;
                m_nSeen += event - sequence.begin() >= int(firstSize) ? 1 : 0;
            }
        }
        m_before = sequence;
    }

    EventSequence m_before;
    int m_nSeen = 0;
};

TEST_P(PopupSequencesTest, OfUpToFiveDifferentEventsLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run(kOfDifferentEvents), 1 + 6 + 6 * 5 + 6 * 5 * 4 + 6 * 5 * 4 * 3);
}

TEST_P(PopupSequencesTest, OfUpToFourEventsThatMayComeAgainLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run(kOfAnyEvents), 1 + 7 + 7 * 7 + 7 * 7 * 7);
}

INSTANTIATE_TEST_SUITE_P(FirstEvents, PopupSequencesTest, Combine(ValuesIn(kTimes), ValuesIn(kUsualEvents)), RowName);

class PopupRareSequencesTest : public PopupSequencesTest {
protected:
    static constexpr int kUpToThree = 1 + 10 + 10 * 10;
};

TEST_P(PopupRareSequencesTest, OfUpToThreeEventsAfterAnAnswerLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run(kAfterAnAnswer), kUpToThree);
}

TEST_P(PopupRareSequencesTest, OfUpToThreeEventsWithANewAdOnItsWayOverTheShownOneLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run(kWithANewAdOnItsWay), kUpToThree);
}

TEST_P(PopupRareSequencesTest, OfUpToThreeEventsWithAnotherAdThanTheShownOneLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run(kWithTwoAds), kUpToThree);
}

INSTANTIATE_TEST_SUITE_P(FirstEvents, PopupRareSequencesTest, Combine(ValuesIn(kTimes), ValuesIn(kAllEvents)), RowName);

EventSequence Without(EventSequence events, PopupEvent event) {
    events.erase(std::remove(events.begin(), events.end(), event), events.end());
    return events;
}

/// The sequences on the rules alone.
class PopupRulesTest : public TestWithParam<TimesRow> {
protected:
    void RunAll(const SequenceSet& set) {
        CPopupRules rules(CVirtualTime::kFirstServerTime / 1000, GetParam().times);
        for (const PopupEvent event : set.first) {
            rules.Happen(event);
        }
        GoOn(rules, set.events, set.repeat, set.most);
    }

    void GoOn(const CPopupRules& before, const EventSequence& events, bool repeat, int most) {
        for (const PopupEvent event : events) {
            CPopupRules rules = before;
            rules.Happen(event);
            Look(event, before.State(), rules.State());
            if (most > 1) {
                GoOn(rules, repeat ? events : Without(events, event), repeat, most - 1);
            }
        }
    }

    void Look(PopupEvent event, const PopupState& before, const PopupState& after) {
        const bool isOfTwoAds = before.shown && !before.list.empty() && before.open != std::vector{before.list};
        Note(event == PopupEvent::kTime && before.shown && !after.shown, "the time closes");
        Note(event == PopupEvent::kTime && after.requests > before.requests, "a withdrawal refills");
        Note(before.lastShow > 0 && after.lastShow > before.lastShow, "another is shown");
        Note(before.shown && after.loading, "another comes over the shown one");
        Note(after.open.size() > 1, "two exposures are open");
        Note(isOfTwoAds && after.shown && after.list.empty(), "the waiting one is withdrawn");
        Note(isOfTwoAds && !after.view && after.list == before.list, "the shown one is withdrawn and the other waits");
    }
    void Note(bool seen, const char* what) {
        if (seen) {
            reached.insert(what);
        }
    }

    std::set<std::string> reached;
};

TEST_P(PopupRulesTest, ComeByAllThatTheirTimesAreChosenFor) {
    for (const SequenceSet& set :
         {kOfDifferentEvents, kOfAnyEvents, kAfterAnAnswer, kWithANewAdOnItsWay, kWithTwoAds}) {
        RunAll(set);
    }

    EXPECT_THAT(reached, ElementsAreArray(GetParam().reached));
}

INSTANTIATE_TEST_SUITE_P(Times, PopupRulesTest, ValuesIn(kTimes),
                         [](const TestParamInfo<TimesRow>& row) { return std::string(row.param.name); });

}  // namespace
