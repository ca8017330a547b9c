#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Ad/AdSamples.h"
#include "Ad/Controller/ZRAdController.h"
#include "support/ScriptedHostTest.h"

/// A slot with nothing of its own but a record of when it was asked, and all of the base within reach.
class CAdSlot : public CZRAdController {
    Q_OBJECT

public:
    CAdSlot(ZRAdType type, int position) : CZRAdController(nullptr) {
        m_adType = type;
        m_adPosition = position;
    }

    using CZRAdController::CheckAdIsValid;
    using CZRAdController::disconnectNotify;
    using CZRAdController::GetAdLastShowTimeStampKey;
    using CZRAdController::GetAdRequestId;
    using CZRAdController::GetAllAdIdFromDataModel;
    using CZRAdController::GetFirstAdIdFromDataModel;
    using CZRAdController::m_adApiClient;
    using CZRAdController::m_adId;
    using CZRAdController::m_adModelList;
    using CZRAdController::m_adPosition;
    using CZRAdController::m_adQualityMonitoringReporter;
    using CZRAdController::m_adReporter;
    using CZRAdController::m_adType;
    using CZRAdController::m_lastRequestTimeStamp;
    using CZRAdController::m_pushId;
    using CZRAdController::OnExposeAdFailed;
    using CZRAdController::OnExposeAdSuccess;
    using CZRAdController::OnRequestAdFailed;
    using CZRAdController::OnRequestAdSucceeded;
    using CZRAdController::ReportExposeAdEnd;
    using CZRAdController::ReportExposeAdStart;
    using CZRAdController::ReportSendAdRequest;

    void ShowAd(CZRAdModelList* list) override {
        calls.push_back(list == m_adModelList ? "show the stored list" : "show another list");
        CZRAdController::ShowAd(list);
        onShow();
    }
    bool CheckCanShowAd(CZRAdModelList* list) override {
        calls.push_back(list == m_adModelList ? "ask about the stored list" : "ask about another list");
        return canShow && CZRAdController::CheckCanShowAd(list);
    }
    void ReportClickAd(ZRAdActionType type, const QString& id, bool jumped) override {
        calls.push_back("action " + std::to_string(type) + " on " + id.toStdString() + (jumped ? " jumped" : ""));
        CZRAdController::ReportClickAd(type, id, jumped);
    }

    std::vector<std::string> calls;
    bool canShow = true;
    std::function<void()> onShow = [] {};
};

/// The position of the bottom popup. The device is "dev", the server's clock shows second 200 of the samples' window,
/// and the first random numbers are 11, 22, 33, 44.
class AdSlotTest : public ScriptedHostTest {
protected:
    static constexpr qint64 kNow = 200;

    AdSlotTest() {
        environment.SetDeviceId("dev");
        random.WillReturn({11, 22, 33, 44});
        time.SetServerTime(kNow * 1000);
        slot = std::make_unique<CAdSlot>(ZRAdTypePopup, kAdPositionBottomPopup);
    }

    /// The list of a good answer, the caller's.
    static CZRAdModelList* ListOf(const Json::Value& data) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(data));
        return list;
    }

    /// Returns the member "data" for the bottom popup with these ads.
    static Json::Value PopupsData(const std::vector<std::string>& ids) {
        Json::Value data = PopupData();
        for (const std::string& id : ids) {
            data["ad"].append(PopupAd(id));
        }
        return data;
    }

    static CZRAdModelList* Popups(const std::vector<std::string>& ids) { return ListOf(PopupsData(ids)); }

    static std::string Words(const QList<QString>& texts) {
        std::string words;
        for (const QString& text : texts) {
            words += (words.empty() ? "" : " ") + text.toStdString();
        }
        return words;
    }

    std::string Ids(CZRAdModelList* list) { return Words(CAdSlot::GetAllAdIdFromDataModel(list)); }

    void Search() { slot->RequestAd(ZRAdApiTypeSearch, kAdPositionBottomPopup, {}); }

    void Forget() {
        log.Forget();
        reports.Forget();
        http.Forget();
    }

    std::unique_ptr<CAdSlot> slot;
};

inline ReportedEvent PullResult(const std::string& params) {
    return {"SingleAdvertisementPullDataResult", 2, params, 0, false};
}
