#pragma once

#include <gmock/gmock.h>

#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "Ad/AdSamples.h"
#include "Ad/AdWindow.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"

/// The bottom popup's slot, with all of it within reach.
class CBottomSlot : public CZRAdBottomPopupController {
public:
    CBottomSlot() : CZRAdBottomPopupController(nullptr) {}

    using CZRAdBottomPopupController::AddAdPopupView;
    using CZRAdBottomPopupController::CheckAdIsValid;
    using CZRAdBottomPopupController::CheckCanShowAd;
    using CZRAdBottomPopupController::DeleteAdPopupView;
    using CZRAdBottomPopupController::m_adApiClient;
    using CZRAdBottomPopupController::m_adId;
    using CZRAdBottomPopupController::m_adModelList;
    using CZRAdBottomPopupController::m_adPopupView;
    using CZRAdBottomPopupController::m_adReporter;
    using CZRAdBottomPopupController::m_adType;
    using CZRAdBottomPopupController::m_pushId;
    using CZRAdBottomPopupController::OnRequestAdSucceeded;
    using CZRAdBottomPopupController::ReportExposeAdStart;
};

/// The bottom popup in a main window of 900 by 600 which has the focus and shows the tab 20001, that is area 500.
/// The user is 77, the device "dev", and the server's clock stands at second 200 of the samples' window.
class AdPopupTest : public ScriptedHostTest {
protected:
    static constexpr qint64 kNow = 200;
    const std::string kLastShow = "AdLastShowTimeStampKey_2_42_77_1";

    AdPopupTest() {
        environment.SetDeviceId("dev");
        random.WillReturn({11, 22, 33, 44});
        account.Set(77);
        time.SetServerTime(kNow * 1000);
        window.resize(900, 600);
        window.show();
        time.Settle();
        mainFrame.Offer(&window);
        mainFrame.SetTabKey(20001);
    }

    /// Returns the member "data" for the bottom popup: these ads, 15 seconds each, without an interval.
    static Json::Value DataOf(const std::vector<std::string>& ids) {
        Json::Value data = PopupData();
        data["show_interval"] = 0;
        for (const std::string& id : ids) {
            data["ad"].append(PopupAd(id));
        }
        return data;
    }

    /// The caller's.
    static CZRAdModelList* ListOf(const Json::Value& data) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(data));
        return list;
    }

    static CZRAdPopupModel* First(CZRAdModelList* list) {
        return qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first());
    }

    /// The server's answer.
    void Answer(const Json::Value& data) {
        slot.OnRequestAdSucceeded(ListOf(data), 5);
        Forget();
    }

    void LetPictureIn() { pictures.Succeed(pictures.LastLoad()); }

    /// The ad is on screen.
    void ShowList(const Json::Value& data) {
        Answer(data);
        LetPictureIn();
        store.Forget();
        Forget();
    }
    void Show(const std::string& id = "18088") { ShowList(DataOf({id})); }

    void Forget() {
        log.Forget();
        reports.Forget();
        http.Forget();
    }

    QList<CZRAdBottomPopupView*> Cards() { return window.findChildren<CZRAdBottomPopupView*>(); }
    CZRAdBottomPopupView* Card() { return Cards().isEmpty() ? nullptr : Cards().last(); }
    ZIconButton* CloseButton() {
        return window.findChild<ZIconButton*>(QStringLiteral("CZRAdBottomPopupViewCloseButton"));
    }
    QTimer* CloseTimer() { return slot.findChild<QTimer*>(); }

    std::string Texts() {
        std::string texts;
        for (const LogLine& line : log.Lines()) {
            texts += line.text + "\n";
        }
        return texts;
    }

    CAdWindow window;
    CBottomSlot slot;
};
