// The workbench's explanation of each rule that refuses an ad, compared with the real module.
#include <algorithm>

#include "Ad/Controller/ZRAdManager.h"
#include "AdScreen.h"

using namespace ::testing;

namespace {

const QSize kSize(600, 100);

class AdDiagnosisTest : public AdScreenTest {
public:
    // The rows of the table use these.
    using AdScreenTest::Answer;
    using AdScreenTest::AnswerJson;
    using AdScreenTest::Ask;
    using AdScreenTest::Card;
    using AdScreenTest::channel;
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
    using AdScreenTest::time;
    using AdScreenTest::WaitForLimit;
    using AdScreenTest::With;

    /// Sets a waiting list with `first` as its first ad.
    CZRAdModelList* Wait(const std::function<CZRAdModel*(CZRAdModelList*)>& first) {
        CZRAdModelList* list = ListOf(Card());
        list->GetAdList()->first() = first(list);
        slot.SetAdModelList(list);
        return list;
    }
    void Show(const Json::Value& answer) { slot.ShowAd(Keep(answer)); }
    void ShowBanner(const Json::Value& answer) { banner.ShowAd(Keep(answer)); }
    void AddCard(CZRAdPopupModel* popup) { slot.AddAdPopupView(popup, true, 15, QStringLiteral("18088"), QString()); }
    void TakePicture(const QString& ad) { slot.OnImageLoadSucceeded(QString(), 0, 1, ad, QString()); }

    void AskBanner(const std::function<void(QWidget*)>& shown) { banner.GetAdBannerAsync(kSize, shown, 0, false, {}); }
    void ExchangeBanner(const Json::Value& answer) {
        WaitForLimit();
        AskBanner([this](QWidget* made) { views.emplace_back(made); });
        AnswerJson(answer);
    }

    CZRAdBannerController banner{nullptr, 7};
    std::vector<std::unique_ptr<QWidget>> views;

private:
    CZRAdModelList* Keep(const Json::Value& answer) {
        m_lists.emplace_back(ListOf(answer));
        return m_lists.back().get();
    }

    std::vector<std::unique_ptr<CZRAdModelList>> m_lists;
};

struct Row {
    const char* name;
    std::function<void(AdDiagnosisTest&)> refuse;
    AdSlot slot;
    const char* told;  // step: check, found, needed
    const char* sentence;
    const char* occasion = " A new list comes with a login, a change of the language or a push.";
};

const char* const kRetry = " It is tried again at a change of the tab.";
const char* const kPage = " Its page asks again when it is opened, and after a login or a change of the language.";

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

std::string NameOf(const TestParamInfo<Row>& info) {
    return info.param.name;
}

std::vector<Row> Rows() {
    using T = AdDiagnosisTest;
    return {
        {"Limit",
         [](T& t) {
             t.Ask();
             t.Ask();
         },
         kBottomPopup, ": pause between requests, 00:03:20, 10 s after the last request, 00:03:20",
         "The request of 00:03:20 has no answer yet. Wait for it.", ""},
        {"Task",
         [](T& t) {
             t.http.RefuseStarts(Failing::Always());
             t.Ask();
         },
         kBottomPopup, "answered: sent, not sent, sent", "The request could not be sent."},
        {"Latest",
         [](T& t) {
             t.Ask();
             t.WaitForLimit();
             t.Ask();
             t.http.Answer(t.http.LastTask() - 1, "");
         },
         kBottomPopup, ": answer to the latest request, task 1, task 2",
         "The request of 00:03:30 has no answer yet. Wait for it.", ""},
        {"Exchange",
         [](T& t) {
             t.Ask();
             t.http.Fail(t.http.LastTask(), kHttpTimedOut);
         },
         kBottomPopup, "answered: exchange, result 3, result 0",
         "The exchange with the ad server failed with result 3."},
        {"Json",
         [](T& t) {
             t.Ask();
             t.Answer("{");
         },
         kBottomPopup, "answered: JSON, not JSON, JSON", "The server's answer is not JSON."},
        {"Decode", [](T& t) { t.Exchange(Json::objectValue); }, kBottomPopup,
         "answered: decoded, unfit: CZRAdResponseModel: code, complete",
         "The server's answer cannot be decoded: CZRAdResponseModel: code."},
        {"Code",
         [](T& t) {
             Json::Value refused = T::Card();
             refused["code"] = 17;
             refused["message"] = "closed today";
             t.Exchange(refused);
         },
         kBottomPopup, "answered: code 0, code 17: closed today, code 0",
         "The server refused the request with code 17: closed today."},
        {"Type", [](T& t) { t.Exchange(T::With(T::Strip(), "ad_position", 42)); }, kBottomPopup,
         "kept: type, Banner 42, Popup 42", "The server answered with a list for Banner 42."},
        {"Position", [](T& t) { t.Exchange(T::With(T::Card(), "ad_position", 43)); }, kBottomPopup,
         "kept: position, Popup 43, Popup 42", "The server answered with a list for Popup 43."},
        {"Ads", [](T& t) { t.Exchange(T::Card(std::vector<Json::Value>())); }, kBottomPopup, "kept: ads in it, 0, ≥ 1",
         "The server has no ad for this user here."},
        {"Window",
         [](T& t) {
             t.Exchange(T::Card({T::Popup("over", 100, 150), T::Popup("early", 250)}));
         },
         kBottomPopup, "kept: an ad that is due, ad over ended 00:02:30, ad early starts 00:04:10, in its window",
         "No ad of the list is due: ad over ended 00:02:30, ad early starts 00:04:10. Wait until 00:04:10, in 40 s."},
        {"Areas",
         [](T& t) {
             Json::Value nowhere = T::Card();
             nowhere["data"]["ad"][0]["popup_ad"]["show_areas"].clear();
             t.Exchange(nowhere);
         },
         kBottomPopup, "kept: areas, missing, at least one", "Ad 18088 names no area in which to show it."},
        {"Tab",
         [](T& t) {
             t.mainFrame.SetTabKey(20005);
             Json::Value card = T::Card();
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(503);
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(508);
             t.Exchange(card);
         },
         kBottomPopup,
         "conditions: current tab, Portfolio (area 507), key 20005, Watchlist (area 500) or Account (area 503) or no "
         "tab (area 508)",
         "Ad 18088 is not for the current tab, Portfolio (area 507). Open Watchlist (area 500) or Account (area 503) "
         "or no tab (area 508).",
         kRetry},
        {"Interval",
         [](T& t) {
             t.store.SetInt64(t.kLastShow, 150);
             t.Exchange(T::Card(60));
         },
         kBottomPopup,
         "conditions: interval since the last showing, 00:03:30, more than 1 min after the last showing, 00:02:30",
         "A popup was shown at 00:02:30, and ad 18088 needs 1 min between two showings. Wait until 00:03:31, in 1 s.",
         kRetry},
        {"Slot",
         [](T& t) {
             t.slots.Allow(kSlotAdPopup, false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "conditions: shared slot, taken, free",
         "Another interruption holds the shared slot for popups. Wait until it ends, or remove the override.", kRetry},
        {"Focus",
         [](T& t) {
             t.mainFrame.SetFocusIn(false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "conditions: focus, the main window has no focus, it has the focus",
         "The main window has no focus. Click into it.", kRetry},
        {"MainFrame",
         [](T& t) {
             t.mainFrame.Offer(nullptr);
             t.Exchange(T::Card());
         },
         kBottomPopup, "picture: main window, missing, open", "There is no main window to show it in.", kRetry},
        {"Picture",
         [](T& t) {
             t.Exchange(T::Card());
             for (int tries = 0; tries < 3; ++tries) {
                 t.pictures.Fail(t.pictures.LastLoad());
             }
         },
         kBottomPopup, "picture: picture loaded, failed at try 3: https://pictures.test/card.png, loaded",
         "The picture could not be loaded in 3 tries: https://pictures.test/card.png.", kRetry},
    };
}

std::vector<Row> RowsOfTheList() {
    using T = AdDiagnosisTest;
    return {
        {"NoList", [](T& t) { t.slot.TryShowAdPopup(); }, kBottomPopup, ": a list, none, a list",
         "Nothing was asked for yet."},
        {"Popup",
         [](T& t) {
             t.Wait([](CZRAdModelList*) { return nullptr; });
             t.slot.TryShowAdPopup();
         },
         kBottomPopup, "kept: a popup first, missing, a popup", "The first ad of the list is no popup."},
        {"AdId",
         [](T& t) {
             t.time.SetServerTime(0);  // it is due, because its times are all 0
             t.Wait([](CZRAdModelList* list) { return new CZRAdPopupModel(list); });
             t.slot.TryShowAdPopup();
         },
         kBottomPopup, "kept: ad id, missing, an id", "The first ad of the list has no id."},
        {"Push",
         [](T& t) {
             CZRAdManager manager;
             manager.Init();
             t.channel.Push(20171, std::string("\xFF"));
         },
         kBottomPopup, "asked: push, receive 20171, adPush parse failed, a complete push",
         "A push was refused: receive 20171, adPush parse failed."},
        {"ListNow", [](T& t) { t.slot.CheckCanShowAd(nullptr); }, kBottomPopup, "conditions: a list, none, a list",
         "Its list was taken away meanwhile."},
    };
}

std::vector<Row> RowsOfTheCard() {
    using T = AdDiagnosisTest;
    return {
        {"ShowList", [](T& t) { t.slot.ShowAd(nullptr); }, kBottomPopup, "picture: a list, none, a list",
         "Its list was taken away meanwhile."},
        {"ShowPosition", [](T& t) { t.Show(T::With(T::Card(), "ad_position", 43)); }, kBottomPopup,
         "picture: position, Popup 43, Popup 42", "The list is for Popup 43."},
        {"ShowPopup", [](T& t) { t.Show(T::Card(std::vector<Json::Value>())); }, kBottomPopup,
         "picture: a popup first, missing, a popup", "The first ad of the list is no popup."},
        {"CardPopup", [](T& t) { t.AddCard(nullptr); }, kBottomPopup, "picture: a popup first, missing, a popup",
         "The first ad of the list is no popup."},
        {"CardPicture",
         [](T& t) {
             CZRAdPopupModel bare(nullptr);
             t.AddCard(&bare);
         },
         kBottomPopup, "picture: picture and link, missing, both", "Ad 18088 has no picture and link."},
        {"CardInterface",
         [](T& t) {
             t.mainFrame.TakeAway();
             t.Show(T::Card());
         },
         kBottomPopup, "picture: interface of the main window, missing, offered",
         "The main window offers no interface to the module."},
    };
}

std::vector<Row> RowsWithThePictureIn() {
    using T = AdDiagnosisTest;
    return {
        {"AdIdAgain", [](T& t) { t.TakePicture(QString()); }, kBottomPopup, "shown: ad id, missing, an id",
         "The ad has no id."},
        {"ListAgain",
         [](T& t) {
             t.Exchange(T::Card());
             t.slot.SetAdModelList(nullptr);
             t.LetPictureIn();
         },
         kBottomPopup, "shown: a list, none, a list", "Its list was taken away meanwhile.", kRetry},
        {"TabAgain",
         [](T& t) {
             t.Exchange(T::Card());
             t.mainFrame.SetTabKey(20002);
             t.LetPictureIn();
         },
         kBottomPopup, "shown: current tab, Quotes (area 501), key 20002, Watchlist (area 500)",
         "Ad 18088 is not for the current tab, Quotes (area 501). Open Watchlist (area 500).", kRetry},
        {"IntervalAgain",
         [](T& t) {
             t.Exchange(T::Card(60));
             t.store.SetInt64(t.kLastShow, 205);
             t.LetPictureIn();
         },
         kBottomPopup,
         "shown: interval since the last showing, 00:03:30, more than 1 min after the last showing, 00:03:25",
         "A popup was shown at 00:03:25, and ad 18088 needs 1 min between two showings. Wait until 00:04:26, in 56 s.",
         kRetry},
        {"SlotAgain",
         [](T& t) {
             t.Exchange(T::Card());
             t.slots.Allow(kSlotAdPopup, false);
             t.LetPictureIn();
         },
         kBottomPopup, "shown: shared slot, taken, free",
         "Another interruption holds the shared slot for popups. Wait until it ends, or remove the override.", kRetry},
        {"FocusAgain",
         [](T& t) {
             t.Exchange(T::Card());
             t.mainFrame.SetFocusIn(false);
             t.LetPictureIn();
         },
         kBottomPopup, "shown: focus, the main window has no focus, it has the focus",
         "The main window has no focus. Click into it.", kRetry},
        {"View",
         [](T& t) {
             t.Exchange(T::Card());
             t.pictures.LastLoad();
             t.slot.DeleteAdPopupView();
             t.TakePicture(QStringLiteral("18088"));
         },
         kBottomPopup, "shown: view still there, gone, there",
         "The card of ad 18088 was removed before its picture came.", kRetry},
    };
}

std::vector<Row> RowsOfABanner() {
    using T = AdDiagnosisTest;
    const AdSlot banner{3, 7};
    return {
        {"Layout",
         [](T& t) {
             Json::Value strip = T::Strip();
             strip["data"].removeMember("banner_position");
             t.ExchangeBanner(strip);
         },
         banner, "kept: layout, missing, a layout", "The list has no layout for a banner.", kPage},
        {"Caller",
         [](T& t) {
             t.AskBanner(nullptr);
             t.AnswerJson(T::Strip());
         },
         banner, "kept: a page waits for it, none, a page", "No page waits for the banner any more.", kPage},
        {"BannerType", [](T& t) { t.ExchangeBanner(T::Strip(0)); }, banner, "picture: banner type, 0, ≠ 0",
         "The list has an unknown type of banner, 0.", kPage},
        {"BannerList", [](T& t) { t.banner.ShowAd(nullptr); }, banner, "picture: a list, none, a list",
         "Its list was taken away meanwhile.", kPage},
        {"BannerAds",
         [](T& t) {
             Json::Value empty = T::Strip();
             empty["data"]["ad"].clear();
             t.ShowBanner(empty);
         },
         banner, "picture: ads in it, 0, ≥ 1", "The list has no ad.", kPage},
    };
}

std::vector<Row> AllRows() {
    std::vector<Row> all = Rows();
    for (const auto& more : {RowsOfTheList(), RowsOfTheCard(), RowsWithThePictureIn(), RowsOfABanner()}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

class AdDiagnosisRefusalTest : public AdDiagnosisTest, public WithParamInterface<Row> {};

}  // namespace

TEST_P(AdDiagnosisRefusalTest, IsExplainedByItsStepBothSidesAndOneSentence) {
    GetParam().refuse(*this);

    const Explanation explained = Explained(GetParam().slot);
    ASSERT_FALSE(explained.details.empty());
    const QStringList& details = explained.details;
    const std::string check = details.front().section(QStringLiteral(" \u00B7 "), 1).toStdString();
    EXPECT_EQ(
        StoppedOf(explained) + ": " + check + ", " + DetailOf(details, "Found") + ", " + DetailOf(details, "Needed"),
        GetParam().told);
    EXPECT_EQ(explained.sentence.toStdString(), std::string(GetParam().sentence) + GetParam().occasion);
}

INSTANTIATE_TEST_SUITE_P(OfEachRule, AdDiagnosisRefusalTest, ValuesIn(AllRows()), NameOf);

TEST(AdDiagnosisTableTest, EachRefusalOfTheTableHasItsCase) {
    const std::vector<Row> rows = AllRows();
    int refusing = 0;
    for (const log_table::Row& line : log_table::All()) {
        using log_table::EnEvent;
        if (line.kind != log_table::EnKind::Ad || (line.event != EnEvent::Refused && line.event != EnEvent::Ignored &&
                                                   line.event != EnEvent::PictureFailed)) {
            continue;
        }
        ++refusing;
        const std::string check = std::string(": ") + line.check + ",";
        EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [&](const Row& row) {
            return std::string(row.told).find(check) != std::string::npos;
        })) << line.text;
    }
    EXPECT_GT(refusing, 30);
}
