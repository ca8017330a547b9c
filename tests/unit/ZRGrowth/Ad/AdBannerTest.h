#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "Ad/AdSamples.h"
#include "Ad/AdWindow.h"
#include "Ad/Controller/ZRAdBannerController.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/View/ZRAdBannerView.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZSlideshow.h"

/// The slot of banners at position 7, with all of it within reach.
class CBannerSlot : public CZRAdBannerController {
public:
    CBannerSlot() : CZRAdBannerController(nullptr, 7) {}

    using CZRAdBannerController::CheckAdIsValid;
    using CZRAdBannerController::m_adType;
    using CZRAdBannerController::OnRequestAdSucceeded;
};

/// The slot with a caller who keeps what it gets. The device is "dev", and the server's clock stands at second 200 of
/// the samples' window.
class AdBannerControllerTest : public ScriptedHostTest {
protected:
    const QSize kSize{600, 100};

    AdBannerControllerTest() {
        environment.SetDeviceId("dev");
        random.WillReturn({11, 22, 33, 44});
        time.SetServerTime(200'000);
    }
    ~AdBannerControllerTest() override {
        qDeleteAll(banners);
        Forget();
        pictures.Forget();
    }

    static Json::Value DataOf(const std::vector<std::string>& ids, int bannerType = 2) {
        Json::Value data = BannerData();
        data["banner_position"]["banner_type"] = bannerType;
        for (const std::string& id : ids) {
            Json::Value ad = BannerAd(id);
            ad["banner_ad"]["img"] = "https://pictures.test/" + id + ".png";
            ad["banner_ad"]["schema"] = "https://www.test/" + id;
            data["ad"].append(ad);
        }
        return data;
    }
    static CZRAdModelList* ListOf(const Json::Value& data) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(data));
        return list;
    }

    /// Takes banners into `banners`, null ones too.
    std::function<void(QWidget*)> Taker() {
        return [this](QWidget* banner) { banners.append(banner); };
    }
    void Ask() {
        slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});
        Forget();
    }
    void Answer(const Json::Value& data) { slot.OnRequestAdSucceeded(ListOf(data), 5); }

    /// A banner of these ads, in the caller's window.
    CZRAdBannerView* Show(const std::vector<std::string>& ids, int bannerType = 2) {
        const int before = banners.size();
        Ask();
        Answer(DataOf(ids, bannerType));
        return banners.size() == before ? nullptr : qobject_cast<CZRAdBannerView*>(banners.last());
    }

    static ZSlideshow* Slideshow(QWidget* banner) {
        return banner->findChild<ZSlideshow*>(QStringLiteral("CZRAdBannerViewSlideshow"));
    }

    void Forget() {
        log.Forget();
        reports.Forget();
        http.Forget();
    }

    CBannerSlot slot;
    QList<QWidget*> banners;
};
