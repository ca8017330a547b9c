#pragma once

#include <json/json.h>

#include <QWidget>
#include <memory>

#include "Ad/Controller/ZRAdBannerController.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "DiagnosisModule.h"

/// The bottom popup's controller, with access to its internals.
class CPopupSlot : public CZRAdBottomPopupController {
public:
    CPopupSlot() : CZRAdBottomPopupController(nullptr) {}

    using CZRAdBottomPopupController::AddAdPopupView;
    using CZRAdBottomPopupController::CheckAdIsValid;
    using CZRAdBottomPopupController::CheckCanShowAd;
    using CZRAdBottomPopupController::DeleteAdPopupView;
    using CZRAdBottomPopupController::m_adModelList;
    using CZRAdBottomPopupController::OnImageLoadSucceeded;
};

/// The module's drawing positions in a focused main window that shows the watchlist, an area of the sample ads. The
/// sample ads are due. The user is 77. Sample popups have no interval.
class AdScreenTest : public DiagnosisModuleTest {
protected:
    const std::string kLastShow = "AdLastShowTimeStampKey_2_42_77_1";

    AdScreenTest() {
        LogIn(77);
        window.resize(900, 600);
        window.show();
        time.Settle();
        mainFrame.Offer(&window);
        mainFrame.SetTabKey(20001);
    }
    ~AdScreenTest() override { pictures.Forget(); }

    /// Parses a well-formed JSON text.
    static Json::Value Parsed(const std::string& text) {
        Json::Value value;
        std::istringstream(text) >> value;
        return value;
    }

    static Json::Value Popup(const std::string& id, int start = 100, int end = 300, int expire = 400) {
        Json::Value ad = Parsed(R"({"popup_ad": {"popup_type": 2, "show_areas": [500], "bottom_popup":
            {"img": "https://pictures.test/card.png", "schema": "https://www.test/autumn"}}})");
        ad["ad_id"] = id;
        ad["start_time"] = start;
        ad["end_time"] = end;
        ad["expire_time"] = expire;
        return ad;
    }

    static Json::Value Card(const std::vector<Json::Value>& ads, int interval = 0) {
        Json::Value answer = Parsed(R"({"code": 0, "message": "ok", "data": {"ad_type": 2, "ad_position": 42,
            "show_duration": 15, "show_interval_type": 1, "enable_close": true, "ad": []}})");
        answer["data"]["show_interval"] = interval;
        for (const Json::Value& ad : ads) {
            answer["data"]["ad"].append(ad);
        }
        return answer;
    }
    static Json::Value Card(int interval = 0) { return Card({Popup("18088")}, interval); }

    /// An answer for a banner at position 7.
    static Json::Value Strip(int bannerType = 2) {
        Json::Value answer = Parsed(R"({"code": 0, "message": "ok", "data": {"ad_type": 3, "ad_position": 7,
            "enable_close": false, "ad": [{"ad_id": "18089", "start_time": 100, "end_time": 300, "expire_time": 400,
            "banner_ad": {"img": "https://pictures.test/strip.png", "schema": "zrclient://page/news"}}],
            "banner_position": {"carousel_interval": 5, "material_scale": "6:1", "material_corner": "8"}}})");
        answer["data"]["banner_position"]["banner_type"] = bannerType;
        return answer;
    }

    static Json::Value With(Json::Value answer, const char* name, int value) {
        answer["data"][name] = value;
        return answer;
    }

    /// The caller owns the result.
    static CZRAdModelList* ListOf(const Json::Value& answer) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(answer["data"]));
        return list;
    }

    /// Passes the minimum time between two requests of the position.
    void WaitForLimit() { time.Advance(std::chrono::seconds(10)); }
    void Ask() { slot.RequestAdBottomPopup(ZRAdApiTypeSearch, {}); }

    void Answer(const std::string& body) {
        http.Answer(http.LastTask(), body);
        time.Settle();
    }
    void AnswerJson(const Json::Value& body) { Answer(body.toStyledString()); }

    /// A request after the minimum time, with its answer.
    void Exchange(const Json::Value& answer) {
        WaitForLimit();
        Ask();
        AnswerJson(answer);
    }

    void LetPictureIn() { pictures.Succeed(pictures.LastLoad()); }

    const AdState& State() const { return *tracker.State().ads.find(kBottomPopup); }

    Explanation Explained(const AdSlot& which = kBottomPopup) const {
        return explanation::OfAd(tracker, which, time.ServerTime());
    }
    std::string Sentence(const AdSlot& which = kBottomPopup) const { return Explained(which).sentence.toStdString(); }
    std::string StateOf(const AdSlot& which = kBottomPopup) const { return Explained(which).state.toStdString(); }
    std::string Stopped(const AdSlot& which = kBottomPopup) const { return StoppedOf(Explained(which)); }

    QWidget window;
    CPopupSlot slot;
};
