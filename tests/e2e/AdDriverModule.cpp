// A module with one ad slot. It requests, shows and ends ads on bus messages. Reports and log lines come from the
// controller.
#include <cstdlib>
#include <fstream>
#include <memory>

#include "Ad/Controller/ZRAdController.h"
#include "core/message_dispatch.h"
#include "e2e/AdDriverModule.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

namespace {

class CDriver : public CZRAdController {
public:
    explicit CDriver() : CZRAdController(nullptr) {
        m_adType = ZRAdTypePopup;
        m_adPosition = kAdPositionBottomPopup;
        const auto bind = [this](unsigned int message, std::function<void()> act) {
            core::__CMessageDispatch("[AdDriver]")
                .Bind(
                    message,
                    [act = std::move(act)](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                        act();
                    },
                    this);
        };
        bind(ad_driver::kSearch, [this] { RequestAd(ZRAdApiTypeSearch, m_adPosition, {}); });
        bind(ad_driver::kCheck,
             [this] { RequestAd(ZRAdApiTypeCheck, m_adPosition, {QString::fromLatin1(ad_driver::kCheckedAd)}); });
        bind(ad_driver::kShow, [this] {
            if (m_adModelList) {
                m_adId = GetFirstAdIdFromDataModel(m_adModelList);
                ReportExposeAdStart(m_adId);
            }
        });
        bind(ad_driver::kClick, [this] { OnAdClicked(true, m_adId); });
        bind(ad_driver::kEnd, [this] { ReportExposeAdEnd(m_adId, QStringLiteral("push")); });
    }

protected:
    void OnExposeAdSuccess(QList<QString> const& adIds) override {
        CZRAdController::OnExposeAdSuccess(adIds);
        Note("exposed");
    }
    void OnExposeAdFailed(QString const& resultCode, QString const& errorContent,
                          QList<QString> const& adIds) override {
        CZRAdController::OnExposeAdFailed(resultCode, errorContent, adIds);
        Note("not exposed " + resultCode.toStdString());
    }
    void OnRequestAdSucceeded(CZRAdModelList* list, long long time) override {
        CZRAdController::OnRequestAdSucceeded(list, time);
        Note("answered " + GetAllAdIdFromDataModel(m_adModelList).join(QLatin1Char(',')).toStdString());
    }
    void OnRequestAdFailed(QString const& resultCode, QString const& errorContent, long long time) override {
        CZRAdController::OnRequestAdFailed(resultCode, errorContent, time);
        Note("not answered " + resultCode.toStdString());
    }

private:
    static void Note(const std::string& what) {
        std::ofstream(std::getenv(ad_driver::kFileVariable), std::ios::app) << what << "\n";
    }
};

class CAdDriverModule : public IZRPluginModule {
public:
    std::string GetSymbolName() override { return "addriver"; }
    void OnInit() override { m_driver = std::make_unique<CDriver>(); }
    void OnUnInit() override { m_driver.reset(); }
    void OnLogin() override {}
    void OnLogout() override {}

private:
    std::unique_ptr<CDriver> m_driver;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int LoadPluginModuleCAdDriver() {
    return IZRPluginCenter::RegisterModule(std::make_shared<CAdDriverModule>());
}
