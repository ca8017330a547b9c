// The bottom popup under everything that can happen to it, in every order of up to five different events and up to
// four of any, for ads that stand and keep away for different times: after each event it stands as the rules say, and
// no exposure ends twice or without a beginning.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTimer>
#include <algorithm>
#include <atomic>
#include <iostream>
#include <map>
#include <new>
#include <set>

#include "Ad/AdSamples.h"
#include "Ad/Controller/PopupRules.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20171.pb.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr int64_t kGoodTab = 20001;
constexpr int64_t kOtherTab = 20002;

using Story = std::vector<PopupEvent>;

const Story kUsualEvents{PopupEvent::kAnswer, PopupEvent::kOffline, PopupEvent::kNewAd, PopupEvent::kTab,
                         PopupEvent::kLogout, PopupEvent::kPicture, PopupEvent::kTime};
const Story kAllEvents{PopupEvent::kAnswer,   PopupEvent::kOffline,  PopupEvent::kNewAd, PopupEvent::kTab,
                       PopupEvent::kLogout,   PopupEvent::kPicture,  PopupEvent::kTime,  PopupEvent::kOfflineWaiting,
                       PopupEvent::kLanguage, PopupEvent::kNoPicture};

/// All stories that begin so and go on with one to `most` of these events.
struct Stories {
    Story first;
    Story events;
    bool repeat = true;
    int most = 0;
};

const Stories kOfDifferentEvents{{}, kUsualEvents, false, 5};
const Stories kOfAnyEvents{{}, kUsualEvents, true, 4};
// With what is seldom: a withdrawal of an ad that waits, another language, a picture that does not come.
const Stories kAfterAnAnswer{{PopupEvent::kAnswer}, kAllEvents, true, 3};
// The shown ad and the one that an answer is about to bring are two.
const Stories kWithANewAdOnItsWay{
    {PopupEvent::kAnswer, PopupEvent::kPicture, PopupEvent::kTime, PopupEvent::kNewAd}, kAllEvents, true, 3};
const Stories kWithTwoAds{
    {PopupEvent::kAnswer, PopupEvent::kPicture, PopupEvent::kTime, PopupEvent::kNewAd, PopupEvent::kAnswer},
    kAllEvents,
    true,
    3};

Story Without(Story events, PopupEvent event) {
    events.erase(std::remove(events.begin(), events.end(), event), events.end());
    return events;
}

std::string NameOf(PopupEvent event) {
    constexpr const char* kNames[] = {"Answer", "OfflinePush",          "NewAdPush", "Tab",      "Logout", "Picture",
                                      "Time",   "OfflinePushOfWaiting", "Language",  "NoPicture"};
    return kNames[int(event)];
}

struct TimesRow {
    const char* name;
    PopupTimes times;
    std::vector<std::string> reached;  // what the stories come by, sorted
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

/// A number that children count on for their parents.
class CSharedCount {
public:
    CSharedCount()
        : m_count(new (mmap(nullptr, sizeof(Count), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Count) {
    }
    ~CSharedCount() { munmap(m_count, sizeof(Count)); }
    CSharedCount(const CSharedCount&) = delete;
    CSharedCount& operator=(const CSharedCount&) = delete;

    void Add() { ++*m_count; }
    int Value() const { return *m_count; }

private:
    using Count = std::atomic<int>;
    Count* const m_count;
};

class PopupSequencesTest : public ScriptedHostTest, public WithParamInterface<std::tuple<TimesRow, PopupEvent>> {
protected:
    void Begin() {
        account.Set(501);
        window = std::make_unique<QWidget>();
        window->resize(1000, 700);
        mainFrame.Offer(window.get());
        mainFrame.SetFocusIn(true);
        mainFrame.SetTabKey(kGoodTab);
        slots.Allow(kSlotAdPopup, true);
        manager.Init();
        bus.HostSend(10650);
        controller = manager.findChild<CZRAdBottomPopupController*>();
    }

    void Do(PopupEvent event) {
        switch (event) {
            case PopupEvent::kAnswer:
                http.Answer(LastSearch(), AnswerWith(rules.NextAd()));
                break;
            case PopupEvent::kOffline:
                Withdraw(rules.OfflineAd());
                break;
            case PopupEvent::kOfflineWaiting:
                Withdraw(rules.OfflineWaitingAd());
                break;
            case PopupEvent::kNewAd: {
                ads_service::AdPush push;
                push.set_ad_type(ZRAdTypePopup);
                push.set_ad_position(kAdPositionBottomPopup);
                channel.Push(20171, push.SerializeAsString());
                break;
            }
            case PopupEvent::kTab: {
                const int64_t key = rules.IsTabGood() ? kOtherTab : kGoodTab;
                mainFrame.SetTabKey(key);
                bus.HostSend(20157, static_cast<unsigned long>(key));
                break;
            }
            case PopupEvent::kLanguage:
                bus.HostSend(20100);
                break;
            case PopupEvent::kLogout:
                manager.OnLogout();
                break;
            case PopupEvent::kPicture:
                if (pictures.OutstandingCount() > 0) {
                    pictures.Succeed(pictures.LastLoad());
                }
                break;
            case PopupEvent::kNoPicture:
                if (pictures.OutstandingCount() > 0) {
                    pictures.Fail(pictures.LastLoad());
                }
                break;
            case PopupEvent::kTime:
                time.Advance(std::chrono::seconds(CPopupRules::kTimeStep));
                break;
        }
        time.Settle();
        rules.Happen(event);
    }

    void Withdraw(const std::string& ad) {
        ad_manage_oss::AdPush push;
        push.set_ad_type(ZRAdTypePopup);
        push.set_ad_position(kAdPositionBottomPopup);
        push.set_delay(uint32_t(times.offlineDelay));
        if (!ad.empty()) {
            push.add_offline_ad_id(ad);
        }
        channel.Push(20145, push.SerializeAsString());
    }

    /// The last request for ads; exposures go the same way.
    unsigned long LastSearch() {
        unsigned long task = 0;
        for (const StartedRequest& started : http.Started()) {
            if (started.request.m_strUrl == "https://ads.test/ad/search") {
                task = started.task;
            }
        }
        return task;
    }

    std::string AnswerWith(const std::string& ad) const {
        Json::Value data = PopupData();
        data["show_duration"] = Json::Int64(times.showDuration);
        data["show_interval"] = Json::Int64(times.showInterval);
        Json::Value popup = PopupAd(ad);
        for (const char* key : {"end_time", "expire_time"}) {
            popup[key] = Json::Int64(4'000'000'000);
        }
        popup["popup_ad"]["show_areas"] = JsonOf("[500]");
        data["ad"].append(popup);
        return AnswerOf(data).toStyledString();
    }

    PopupSight Sight() {
        PopupSight sight;
        if (CZRAdModelList* list = controller->GetAdModelList()) {
            sight.list = list->GetAdList()->first()->GetAdId().toStdString();
        }
        const auto views = window->findChildren<CZRAdBottomPopupView*>();
        EXPECT_LE(views.size(), 1);
        sight.view = !views.isEmpty();
        sight.shown = sight.view && !views.first()->isHidden();
        EXPECT_LE(pictures.OutstandingCount(), 1);
        sight.loading = pictures.OutstandingCount() > 0;
        sight.closesIn = ClosesIn();
        sight.lastShow = store.Int64("AdLastShowTimeStampKey_2_42_501_1").value_or(0);
        sight.open = OpenExposures();
        for (const StartedRequest& started : http.Started()) {
            sight.requests += started.request.m_strUrl == "https://ads.test/ad/search" ? 1 : 0;
        }
        return sight;
    }

    std::optional<int64_t> ClosesIn() {
        const auto timers = controller->findChildren<QTimer*>();
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
        for (const ReportedEvent& event : reports.Events()) {
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

    /// Each event in a child of what came before it.
    void GoOn(const std::string& before, const Story& events, bool repeat, int most) {
        for (const PopupEvent event : events) {
            InChild(before + NameOf(event), [&] { Go(before, event, events, repeat, most); });
            if (HasFailure()) {
                return;
            }
        }
    }
    void Go(const std::string& before, PopupEvent event, const Story& events, bool repeat, int most) {
        Do(event);
        EXPECT_EQ(Sight(), rules.Sight());
        if (HasFailure()) {
            return;
        }
        ended.Add();
        if (most > 1) {
            GoOn(before + NameOf(event) + ", ", repeat ? events : Without(events, event), repeat, most - 1);
        }
    }

    /// Those that go on with this case's event; their number, of those that ended well.
    int Run(const Stories& stories) {
        const PopupEvent next = std::get<PopupEvent>(GetParam());
        InChild("the beginning", [&] {
            Begin();
            std::string told;
            for (const PopupEvent event : stories.first) {
                told += NameOf(event) + ", ";
                Do(event);
                EXPECT_EQ(Sight(), rules.Sight()) << told;
            }
            if (!HasFailure()) {
                InChild(told + NameOf(next), [&] { Go(told, next, stories.events, stories.repeat, stories.most); });
            }
        });
        return ended.Value();
    }

    /// In a process of its own, which begins with all that is here now and takes nothing back.
    static void InChild(const std::string& told, const std::function<void()>& story) {
        SCOPED_TRACE(told);
        std::cout.flush();
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            story();
            std::cout.flush();
            std::fflush(nullptr);
            _exit(HasFailure() ? 1 : 0);
        }
        ASSERT_GT(child, 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << (WIFSIGNALED(status) ? "it crashed" : "it failed");
    }

    const PopupTimes times = std::get<TimesRow>(GetParam()).times;
    CPopupRules rules{CVirtualTime::kFirstServerTime / 1000, times};
    CSharedCount ended;
    CZRAdManager& manager = *CZRAdManager::Singleton();
    std::unique_ptr<QWidget> window;
    CZRAdBottomPopupController* controller = nullptr;
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

/// The stories as the rules alone tell them.
class PopupStoriesTest : public TestWithParam<TimesRow> {
protected:
    void Tell(const Stories& stories) {
        CPopupRules rules(CVirtualTime::kFirstServerTime / 1000, GetParam().times);
        for (const PopupEvent event : stories.first) {
            rules.Happen(event);
        }
        GoOn(rules, stories.events, stories.repeat, stories.most);
    }

    void GoOn(const CPopupRules& before, const Story& events, bool repeat, int most) {
        for (const PopupEvent event : events) {
            CPopupRules rules = before;
            rules.Happen(event);
            Look(event, before.Sight(), rules.Sight());
            if (most > 1) {
                GoOn(rules, repeat ? events : Without(events, event), repeat, most - 1);
            }
        }
    }

    void Look(PopupEvent event, const PopupSight& before, const PopupSight& after) {
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

TEST_P(PopupStoriesTest, ComeByAllThatTheirTimesAreChosenFor) {
    for (const Stories& stories :
         {kOfDifferentEvents, kOfAnyEvents, kAfterAnAnswer, kWithANewAdOnItsWay, kWithTwoAds}) {
        Tell(stories);
    }

    EXPECT_THAT(reached, ElementsAreArray(GetParam().reached));
}

INSTANTIATE_TEST_SUITE_P(Times, PopupStoriesTest, ValuesIn(kTimes),
                         [](const TestParamInfo<TimesRow>& row) { return std::string(row.param.name); });

}  // namespace
