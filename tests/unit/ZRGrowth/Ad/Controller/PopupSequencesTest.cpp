// The bottom popup under everything that can happen to it, in every order of up to five different events and up to
// four of any: after each event it stands as the rules say, and no exposure ends twice or without a beginning.
#include <sys/wait.h>
#include <unistd.h>

#include <QTimer>
#include <algorithm>
#include <iostream>
#include <map>

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

const char* const kEventNames[] = {"answer", "offline push", "new-ad push", "tab", "logout", "picture", "time"};

using Story = std::vector<PopupEvent>;

/// All stories of exactly `length` events that begin with `first`.
void Collect(Story& story, size_t length, bool repeat, std::vector<Story>& stories) {
    if (story.size() == length) {
        stories.push_back(story);
        return;
    }
    for (int i = 0; i < kPopupEvents; ++i) {
        const auto event = PopupEvent(i);
        if (repeat || std::find(story.begin(), story.end(), event) == story.end()) {
            story.push_back(event);
            Collect(story, length, repeat, stories);
            story.pop_back();
        }
    }
}

std::vector<Story> StoriesFrom(PopupEvent first, size_t longest, bool repeat) {
    std::vector<Story> stories;
    for (size_t length = 1; length <= longest; ++length) {
        Story story{first};
        Collect(story, length, repeat, stories);
    }
    return stories;
}

class PopupSequencesTest : public ScriptedHostTest, public WithParamInterface<PopupEvent> {
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
            case PopupEvent::kOffline: {
                ad_manage_oss::AdPush push;
                push.set_ad_type(ZRAdTypePopup);
                push.set_ad_position(kAdPositionBottomPopup);
                push.set_delay(CPopupRules::kOfflineDelay);
                if (!rules.OfflineAd().empty()) {
                    push.add_offline_ad_id(rules.OfflineAd());
                }
                channel.Push(20145, push.SerializeAsString());
                break;
            }
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
            case PopupEvent::kLogout:
                manager.OnLogout();
                break;
            case PopupEvent::kPicture:
                if (pictures.LastLoad() != 0) {
                    pictures.Succeed(pictures.LastLoad());
                }
                break;
            case PopupEvent::kTime:
                time.Advance(std::chrono::seconds(CPopupRules::kTimeStep));
                break;
        }
        time.Settle();
        rules.Happen(event);
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

    static std::string AnswerWith(const std::string& ad) {
        Json::Value data = PopupData();
        data["show_duration"] = int(CPopupRules::kShowDuration);
        data["show_interval"] = Json::Int64(CPopupRules::kShowInterval);
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
        sight.timer = controller->findChild<QTimer*>() != nullptr;
        sight.lastShow = store.Int64("AdLastShowTimeStampKey_2_42_501_1").value_or(0);
        sight.open = OpenExposures();
        for (const StartedRequest& started : http.Started()) {
            sight.requests += started.request.m_strUrl == "https://ads.test/ad/search" ? 1 : 0;
        }
        return sight;
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

    void Run(const Story& story) {
        Begin();
        std::string told;
        for (const PopupEvent event : story) {
            told += std::string(told.empty() ? "" : ", ") + kEventNames[int(event)];
            SCOPED_TRACE(told);
            Do(event);
            EXPECT_EQ(Sight(), rules.Sight());
            if (HasFailure()) {
                return;
            }
        }
    }

    void RunAll(const std::vector<Story>& stories) {
        for (const Story& story : stories) {
            InChild([&] { Run(story); });
            if (HasFailure()) {
                return;
            }
        }
    }

    /// In a process of its own, which begins with all that is here now and takes nothing back.
    static void InChild(const std::function<void()>& story) {
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
        EXPECT_EQ(status, 0);
    }

    CPopupRules rules{CVirtualTime::kFirstServerTime / 1000};
    CZRAdManager& manager = *CZRAdManager::Singleton();
    std::unique_ptr<QWidget> window;
    CZRAdBottomPopupController* controller = nullptr;
};

TEST_P(PopupSequencesTest, OfUpToFiveDifferentEventsLeaveThePopupAsTheRulesSay) {
    const auto stories = StoriesFrom(GetParam(), 5, false);
    ASSERT_THAT(stories, SizeIs(1 + 6 + 30 + 120 + 360));
    RunAll(stories);
}

// The shown ad and the one that an answer is about to bring are two.
TEST_P(PopupSequencesTest, OfUpToThreeEventsWithAnAdOnScreenAndANewOneOnItsWayLeaveThePopupAsTheRulesSay) {
    auto stories = StoriesFrom(GetParam(), 3, true);
    ASSERT_THAT(stories, SizeIs(1 + 7 + 49));
    for (Story& story : stories) {
        const Story before{PopupEvent::kAnswer, PopupEvent::kPicture, PopupEvent::kTime, PopupEvent::kNewAd};
        story.insert(story.begin(), before.begin(), before.end());
    }
    RunAll(stories);
}

TEST_P(PopupSequencesTest, OfUpToFourEventsThatMayComeAgainLeaveThePopupAsTheRulesSay) {
    const auto stories = StoriesFrom(GetParam(), 4, true);
    ASSERT_THAT(stories, SizeIs(1 + 7 + 49 + 343));
    RunAll(stories);
}

std::string NameOf(const TestParamInfo<PopupEvent>& row) {
    constexpr const char* names[] = {"Answer", "OfflinePush", "NewAdPush", "Tab", "Logout", "Picture", "Time"};
    return names[int(row.param)];
}

INSTANTIATE_TEST_SUITE_P(FirstEvents, PopupSequencesTest,
                         Values(PopupEvent::kAnswer, PopupEvent::kOffline, PopupEvent::kNewAd, PopupEvent::kTab,
                                PopupEvent::kLogout, PopupEvent::kPicture, PopupEvent::kTime),
                         NameOf);

}  // namespace
