#pragma once

#include <QWidget>
#include <map>

#include "Ad/Controller/ZRAdBannerController.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "AdModule.h"
#include "LinesRead.h"
#include "workbench/ads/AdDiagnosisText.h"
#include "workbench/ads/DisplayConditions.h"

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

/// The module's drawing slots in a focused main window that shows the watchlist, an area of the sample ads. The user is
/// 77. Sample popups have no interval.
class AdScreenTest : public AdModuleTest {
protected:
    const std::string kLastShow = "AdLastShowTimeStampKey_2_42_77_1";

    AdScreenTest() {
        account.Set(77);
        window.resize(900, 600);
        window.show();
        time.Settle();
        mainFrame.Offer(&window);
        mainFrame.SetTabKey(20001);
    }
    ~AdScreenTest() override {
        store.Forget();
        pictures.Forget();
    }

    static Json::Value Card(const std::vector<Json::Value>& ads, int interval = 0) {
        Json::Value answer = Popups(ads);
        answer["data"]["show_interval"] = interval;
        return answer;
    }
    static Json::Value Card(int interval = 0) { return Card({Popup("18088")}, interval); }

    static Json::Value Strip(int bannerType = 2) {
        Json::Value answer = BannerAnswer();
        answer["data"]["banner_position"] =
            Parsed(R"({"carousel_interval": 5, "material_scale": "6:1", "material_corner": "8"})");
        answer["data"]["banner_position"]["banner_type"] = bannerType;
        return answer;
    }

    /// The caller owns the result.
    static CZRAdModelList* ListOf(const Json::Value& answer) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(answer["data"]));
        return list;
    }

    void Ask() { slot.RequestAdBottomPopup(ZRAdApiTypeSearch, {}); }

    /// A request after the minimum time, with its answer.
    void Exchange(const Json::Value& answer) {
        WaitForLimit();
        Ask();
        AnswerJson(answer);
    }

    void LetPictureIn() { pictures.Succeed(pictures.LastLoad()); }

    auto Read() { return ReadLines(log, &ad_lines::Read); }

    /// The workbench's explanation, by the lines' names.
    std::map<std::string, std::string> Told(const AdSlot& which = kBottomPopup) const {
        std::map<std::string, std::string> told;
        const AdSlotState* state = board.Find(which);
        if (state) {
            for (const FieldNode& line : ad_diagnosis_text::Why(board, *state, time.ServerTime()).lines) {
                told[line.name.toStdString()] = line.value.toStdString();
            }
        }
        return told;
    }

    DisplayConditions Moment() const { return DisplayConditions::Of(board, State(), time.ServerTime()); }

    QWidget window;
    CPopupSlot slot;
};
