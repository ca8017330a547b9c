// The workbench's explanation of each rule that refuses an ad, compared with the real module.
#include <algorithm>

#include "AdScreen.h"

using namespace ::testing;
using ad_lines::EnLine;

namespace {

const QSize kSize(600, 100);

class AdDiagnosisTest : public AdScreenTest {
public:
    // The rows of the table use these.
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
    using AdScreenTest::time;
    using AdScreenTest::WaitForLimit;

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
    EnLine line;
    std::function<void(AdDiagnosisTest&)> refuse;
    AdSlot slot;
    const char* last;
    const char* actual;
    const char* expected;
    const char* passed;
    const char* notReached;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

std::string NameOf(const TestParamInfo<Row>& info) {
    return info.param.name;
}

const char* const kAllParts = "list, moment, view, picture, moment, with its picture in";
const char* const kRequestAndRest = "request, list, moment, view, picture, moment, with its picture in";
const char* const kWithMoment = "moment, view, picture, moment, with its picture in";
const char* const kWithView = "view, picture, moment, with its picture in";
const char* const kAgain = "moment, with its picture in";
const char* const kAllButTheLast = "request, list, moment, view, picture, moment, with its picture in";

Json::Value With(Json::Value answer, const char* name, int value) {
    answer["data"][name] = value;
    return answer;
}

std::vector<Row> Rows() {
    using T = AdDiagnosisTest;
    return {
        {"Limit", EnLine::Limited,
         [](T& t) {
             t.Ask();
             t.Ask();
         },
         kBottomPopup, "refused (request): pause between requests", "1970-01-01 00:03:20 UTC",
         "10 s after the last request, 1970-01-01 00:03:20 UTC", "none", kRequestAndRest},
        {"Task", EnLine::NoTask,
         [](T& t) {
             t.http.RefuseStarts(Failing::Always());
             t.Ask();
         },
         kBottomPopup, "refused (request): sent", "not sent: no task", "there", "request", kRequestAndRest},
        {"Latest", EnLine::Superseded,
         [](T& t) {
             t.Ask();
             t.WaitForLimit();
             t.Ask();
             t.http.Answer(t.http.LastTask() - 1, "");
         },
         kBottomPopup, "refused (request): answer to the latest request", "Task 1", "Task 2", "request",
         kRequestAndRest},
        {"Exchange", EnLine::ExchangeFailed,
         [](T& t) {
             t.Ask();
             t.http.Fail(t.http.LastTask(), kHttpTimedOut);
         },
         kBottomPopup, "refused (request): exchange", "result 3", "result 0", "request", kRequestAndRest},
        {"Json", EnLine::NoJson,
         [](T& t) {
             t.Ask();
             t.Answer("{");
         },
         kBottomPopup, "refused (request): JSON", "not JSON", "JSON", "request", kRequestAndRest},
        {"Decode", EnLine::NotDecoded, [](T& t) { t.Exchange(Json::objectValue); }, kBottomPopup,
         "refused (request): decoded", "unfit: CZRAdResponseModel: code", "there", "request", kRequestAndRest},
        {"Code", EnLine::Refused,
         [](T& t) {
             Json::Value refused = T::Card();
             refused["code"] = 17;
             refused["message"] = "closed today";
             t.Exchange(refused);
         },
         kBottomPopup, "refused (request): code 0", "code 17: closed today", "code 0", "request", kAllParts},
        {"Type", EnLine::ForeignType, [](T& t) { t.Exchange(With(T::Strip(), "ad_position", 42)); }, kBottomPopup,
         "refused (list): type", "Banner 42", "Popup 42", "request, list", kAllParts},
        {"Position", EnLine::ForeignPosition, [](T& t) { t.Exchange(With(T::Card(), "ad_position", 43)); },
         kBottomPopup, "refused (list): position", "Popup 43", "Popup 42", "request, list", kAllParts},
        {"Ads", EnLine::EmptyList, [](T& t) { t.Exchange(T::Card(std::vector<Json::Value>())); }, kBottomPopup,
         "refused (list): ads in it", "0", "≥ 1", "request, list", kAllParts},
        {"Window", EnLine::NoneValid,
         [](T& t) {
             t.Exchange(T::Card({T::Popup("over", 100, 150), T::Popup("early", 250)}));
         },
         kBottomPopup, "refused (list): an ad that is due", "1970-01-01 00:03:30 UTC", "in its window", "request, list",
         kAllParts},
        {"Areas", EnLine::NoAreas,
         [](T& t) {
             Json::Value nowhere = T::Card();
             nowhere["data"]["ad"][0]["popup_ad"]["show_areas"].clear();
             t.Exchange(nowhere);
         },
         kBottomPopup, "refused (list): areas", "missing", "there", "request, list", kWithMoment},
        {"Tab", EnLine::OtherTab,
         [](T& t) {
             t.mainFrame.SetTabKey(20005);
             Json::Value card = T::Card();
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(503);
             card["data"]["ad"][0]["popup_ad"]["show_areas"].append(508);
             t.Exchange(card);
         },
         kBottomPopup, "refused (moment): current tab", "Portfolio (area 507), key 20005",
         "Watchlist (area 500), Account (area 503), no tab (area 508)", "request, list, moment", kWithMoment},
        {"Interval", EnLine::WithinInterval,
         [](T& t) {
             t.store.SetInt64(t.kLastShow, 150);
             t.Exchange(T::Card(60));
         },
         kBottomPopup, "refused (moment): interval since the last showing", "1970-01-01 00:03:30 UTC",
         "more than 60 s after the last showing, 1970-01-01 00:02:30 UTC", "request, list, moment", kWithMoment},
        {"Slot", EnLine::SlotTaken,
         [](T& t) {
             t.slots.Allow(kSlotAdPopup, false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (moment): shared slot", "taken", "free", "request, list, moment", kWithMoment},
        {"Focus", EnLine::NoFocus,
         [](T& t) {
             t.mainFrame.SetFocusIn(false);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (moment): focus", "the main window has no focus", "it has the focus",
         "request, list, moment", kWithView},
        {"MainFrame", EnLine::CardNoFrame,
         [](T& t) {
             t.mainFrame.Offer(nullptr);
             t.Exchange(T::Card());
         },
         kBottomPopup, "refused (view): main window", "missing", "there", "request, list, moment, view",
         "picture, moment, with its picture in"},
        {"Picture", EnLine::PictureFailed,
         [](T& t) {
             t.Exchange(T::Card());
             for (int tries = 0; tries < 3; ++tries) {
                 t.pictures.Fail(t.pictures.LastLoad());
             }
         },
         kBottomPopup, "refused (picture): picture loaded", "failed at try 3: https://pictures.test/card.png", "loaded",
         "request, list, moment, view", "moment, with its picture in"},
    };
}

std::vector<Row> RowsOfTheList() {
    using T = AdDiagnosisTest;
    return {
        {"NoList", EnLine::NoList, [](T& t) { t.slot.TryShowAdPopup(); }, kBottomPopup, "refused (list): a list",
         "missing", "there", "none", kAllParts},
        {"Popup", EnLine::NoPopup,
         [](T& t) {
             t.Wait([](CZRAdModelList*) { return nullptr; });
             t.slot.TryShowAdPopup();
         },
         kBottomPopup, "refused (list): a popup first", "missing", "there", "list", kAllParts},
        {"AdId", EnLine::NoAdId,
         [](T& t) {
             t.time.SetServerTime(0);  // it is due, because its times are all 0
             t.Wait([](CZRAdModelList* list) { return new CZRAdPopupModel(list); });
             t.slot.TryShowAdPopup();
         },
         kBottomPopup, "refused (list): ad id", "missing", "there", "list", kAllParts},
        {"ListNow", EnLine::NoListNow, [](T& t) { t.slot.CheckCanShowAd(nullptr); }, kBottomPopup,
         "refused (moment): a list", "missing", "there", "request, list", kWithMoment},
    };
}

std::vector<Row> RowsOfTheCard() {
    using T = AdDiagnosisTest;
    return {
        {"ShowList", EnLine::ShowNoList, [](T& t) { t.slot.ShowAd(nullptr); }, kBottomPopup, "refused (view): a list",
         "missing", "there", "request, list, moment", kWithView},
        {"ShowPosition", EnLine::ShowElsewhere, [](T& t) { t.Show(With(T::Card(), "ad_position", 43)); }, kBottomPopup,
         "refused (view): position", "Popup 43", "Popup 42", "request, list, moment, view", kWithView},
        {"ShowPopup", EnLine::ShowNoData, [](T& t) { t.Show(T::Card(std::vector<Json::Value>())); }, kBottomPopup,
         "refused (view): a popup first", "missing", "there", "request, list, moment, view", kWithView},
        {"CardPopup", EnLine::CardNoPopup, [](T& t) { t.AddCard(nullptr); }, kBottomPopup,
         "refused (view): a popup first", "missing", "there", "request, list, moment, view", kWithView},
        {"CardPicture", EnLine::CardNoPicture,
         [](T& t) {
             CZRAdPopupModel bare(nullptr);
             t.AddCard(&bare);
         },
         kBottomPopup, "refused (view): picture and link", "missing", "there", "request, list, moment, view",
         kWithView},
        {"CardInterface", EnLine::CardNoInterface,
         [](T& t) {
             t.mainFrame.TakeAway();
             t.Show(T::Card());
         },
         kBottomPopup, "refused (view): interface of the main window", "missing", "there",
         "request, list, moment, view", kWithView},
    };
}

std::vector<Row> RowsWithThePictureIn() {
    using T = AdDiagnosisTest;
    return {
        {"AdIdAgain", EnLine::PictureOfNone, [](T& t) { t.TakePicture(QString()); }, kBottomPopup,
         "refused (moment, with its picture in): ad id", "missing", "there", "request, list, moment, view, picture",
         kAgain},
        {"ListAgain", EnLine::NoListNow,
         [](T& t) {
             t.Exchange(T::Card());
             t.slot.SetAdModelList(nullptr);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): a list", "missing", "there", kAllButTheLast, kAgain},
        {"TabAgain", EnLine::OtherTab,
         [](T& t) {
             t.Exchange(T::Card());
             t.mainFrame.SetTabKey(20002);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): current tab", "Quotes (area 501), key 20002",
         "Watchlist (area 500)", "request, list, moment, view, picture, moment, with its picture in",
         "moment, with its picture in"},
        {"IntervalAgain", EnLine::WithinInterval,
         [](T& t) {
             t.Exchange(T::Card(60));
             t.store.SetInt64(t.kLastShow, 205);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): interval since the last showing",
         "1970-01-01 00:03:30 UTC", "more than 60 s after the last showing, 1970-01-01 00:03:25 UTC", kAllButTheLast,
         kAgain},
        {"SlotAgain", EnLine::SlotTaken,
         [](T& t) {
             t.Exchange(T::Card());
             t.slots.Allow(kSlotAdPopup, false);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): shared slot", "taken", "free", kAllButTheLast, kAgain},
        {"FocusAgain", EnLine::NoFocus,
         [](T& t) {
             t.Exchange(T::Card());
             t.mainFrame.SetFocusIn(false);
             t.LetPictureIn();
         },
         kBottomPopup, "refused (moment, with its picture in): focus", "the main window has no focus",
         "it has the focus", kAllButTheLast, kAgain},
        {"View", EnLine::NoView,
         [](T& t) {
             t.Exchange(T::Card());
             t.pictures.LastLoad();
             t.slot.DeleteAdPopupView();
             t.TakePicture(QStringLiteral("18088"));
         },
         kBottomPopup, "refused (moment, with its picture in): view still there", "missing", "there", kAllButTheLast,
         "none"},
    };
}

std::vector<Row> RowsOfABanner() {
    using T = AdDiagnosisTest;
    const AdSlot banner{3, 7};
    return {
        {"Layout", EnLine::BannerNoLayout,
         [](T& t) {
             Json::Value strip = T::Strip();
             strip["data"].removeMember("banner_position");
             t.ExchangeBanner(strip);
         },
         banner, "refused (list): layout", "missing", "there", "request, list", "list, view"},
        {"Caller", EnLine::BannerNoCaller,
         [](T& t) {
             t.AskBanner(nullptr);
             t.AnswerJson(T::Strip());
         },
         banner, "refused (list): somebody waits for it", "missing", "there", "request, list", "view"},
        {"BannerType", EnLine::BannerUnknown, [](T& t) { t.ExchangeBanner(T::Strip(0)); }, banner,
         "refused (view): banner type", "0", "≠ 0", "request, list, view", "none"},
        {"BannerList", EnLine::BannerNoList, [](T& t) { t.banner.ShowAd(nullptr); }, banner, "refused (view): a list",
         "missing", "there", "request, list", "view"},
        {"BannerAds", EnLine::BannerNoAds,
         [](T& t) {
             Json::Value empty = T::Strip();
             empty["data"]["ad"].clear();
             t.ShowBanner(empty);
         },
         banner, "refused (view): ads in it", "0", "≥ 1", "request, list, view", "view"},
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

TEST_P(AdDiagnosisRefusalTest, IsToldWithBothSidesAndItsPlaceOnTheWay) {
    GetParam().refuse(*this);

    const AdSlotState* state = board.Find(GetParam().slot);
    ASSERT_TRUE(state && state->why.last);
    EXPECT_EQ(int(state->why.last->said.line), int(GetParam().line));
    std::map<std::string, std::string> told = Told(GetParam().slot);
    EXPECT_THAT(told["Last"], StartsWith(std::string(GetParam().last) + " · "));
    EXPECT_EQ(told["Found"], GetParam().actual);
    EXPECT_EQ(told["Needed"], GetParam().expected);
    EXPECT_EQ(told["Passed"], GetParam().passed);
    EXPECT_EQ(told["Not reached"], GetParam().notReached);
}

INSTANTIATE_TEST_SUITE_P(OfEachRule, AdDiagnosisRefusalTest, ValuesIn(AllRows()), NameOf);

TEST(AdDiagnosisTableTest, EachMeaningThatRefusesHasItsRow) {
    using ad_diagnosis::EnMeaning;
    const std::vector<Row> rows = AllRows();
    int refusing = 0;
    for (const ad_lines::Line& line : ad_lines::All()) {
        const ad_diagnosis::Meaning* meaning = ad_diagnosis::Find(line.line);
        if (!meaning || (meaning->meaning != EnMeaning::Refuses && meaning->meaning != EnMeaning::PictureFails)) {
            continue;
        }
        ++refusing;
        EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [meaning](const Row& row) {
            return row.line == meaning->line;
        })) << line.text;
    }
    EXPECT_GT(refusing, 0);
}
