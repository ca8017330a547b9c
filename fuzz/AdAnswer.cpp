// Input: the body of the ad server's answer to a search.
#include <gmock/gmock.h>

#include <memory>

#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "FuzzTarget.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr int kPosition = 42;

void CheckPopup(CZRAdModel* ad) {
    auto* popup = qobject_cast<CZRAdPopupModel*>(ad);
    ASSERT_NE(popup, nullptr);
    ASSERT_NE(popup->GetShowAreas(), nullptr);
    EXPECT_FALSE(popup->GetShowAreas()->contains(ZRAdShowAreaType(0)));
    ASSERT_NE(popup->GetBottomPopup(), nullptr);
    EXPECT_FALSE(popup->GetBottomPopup()->GetImage().isEmpty());
    EXPECT_FALSE(popup->GetBottomPopup()->GetSchema().isEmpty());
}

void CheckBanner(CZRAdModel* ad) {
    auto* banner = qobject_cast<CZRAdBannerModel*>(ad);
    ASSERT_NE(banner, nullptr);
    EXPECT_FALSE(banner->GetImage().isEmpty());
    EXPECT_FALSE(banner->GetSchema().isEmpty());
}

// Checks the invariants of a decoded list.
void CheckList(CZRAdModelList& list) {
    EXPECT_EQ(list.parent(), nullptr);
    if (!list.GetAdList()) {
        return;
    }
    for (CZRAdModel* ad : qAsConst(*list.GetAdList())) {
        EXPECT_EQ(ad->parent(), &list);
        EXPECT_FALSE(ad->GetAdId().isEmpty());
        list.GetAdType() == ZRAdTypePopup ? CheckPopup(ad) : CheckBanner(ad);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string body(reinterpret_cast<const char*>(data), size);
    CScriptedHost host;
    CZRAdApiClient client(nullptr);
    int answers = 0;
    QObject::connect(&client, &CZRAdApiClient::RequestAdSucceeded, &client,
                     [&answers](CZRAdModelList* list, qlonglong) {
                         ++answers;
                         const std::unique_ptr<CZRAdModelList> owned(list);
                         CheckList(*owned);
                     });
    QObject::connect(&client, &CZRAdApiClient::RequestAdFailed, &client,
                     [&answers](const QString& code, const QString& content, qlonglong) {
                         ++answers;
                         EXPECT_THAT(code.toStdString(), AnyOf("1005", "2001"));
                         EXPECT_FALSE(content.isEmpty());
                     });
    client.RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, kPosition, {});

    host.http.Answer(host.http.LastTask(), body);
    host.time.Settle();

    EXPECT_EQ(answers, 1);
    host.log.Forget();
    return 0;
}
