#include "Ad/Controller/ZRAdBannerController.h"

#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/View/ZRAdBannerView.h"
#include "GrowthBizLogUtil.h"
#include "core/environment.h"
#include "framework/defensive.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr int kBannerTypeUnknown = 0;
constexpr int kBannerTypeSingleImage = 1;

// Ads that are no banners are skipped in all three lists, so that the indexes match.
void AddAds(CZRAdBannerView& view, const QList<CZRAdModel*>& ads, bool single) {
    for (CZRAdModel* ad : ads) {
        auto* banner = qobject_cast<CZRAdBannerModel*>(ad);
        if (!banner) {
            continue;
        }
        // The id first: the slideshow may show its first picture inside the call that adds it.
        view.AddAdId(banner->GetAdId());
        view.AddImageUrl(banner->GetImage());
        view.AddSchema(banner->GetSchema());
        if (single) {
            break;
        }
    }
}

}  // namespace

CZRAdBannerController::CZRAdBannerController(QObject* parent, int adPosition) : CZRAdController(parent) {
    m_adType = ZRAdTypeBanner;
    m_adPosition = adPosition;
}

CZRAdBannerController::~CZRAdBannerController() = default;

void CZRAdBannerController::GetAdBannerAsync(QSize size, std::function<void(QWidget*)> callback,
                                             int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) {
    m_size = size;
    m_fnComplete = std::move(callback);
    m_topNonClickableAreaHeight = topNonClickableAreaHeight;
    RequestAd(useCheck ? ZRAdApiTypeCheck : ZRAdApiTypeSearch, m_adPosition, adIds);
}

bool CZRAdBannerController::CheckAdIsValid(CZRAdModelList* list) {
    if (!CZRAdController::CheckAdIsValid(list)) {
        return false;
    }
    if (!list->GetBannerPosition()) {
        LogInfo("Banner position is null, adType = {}, m_adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    if (!m_fnComplete) {
        LogInfo("Banner complete callback is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    return true;
}

void CZRAdBannerController::ShowAd(CZRAdModelList* list) {
    if (!list) {
        LogInfo("Show ad banner Failed, adModelList is null, adType = {}, m_adPosition = {}", int(m_adType),
                m_adPosition);
        return;
    }
    if (!list->GetBannerPosition()) {
        LogInfo("Banner position is null, adType = {}, m_adPosition = {}", int(m_adType), m_adPosition);
        return;
    }
    const int bannerType = list->GetBannerPosition()->GetBannerType();
    if (!list->GetAdList() || list->GetAdList()->isEmpty()) {
        LogInfo("Show ad banner Failed, ad List is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
    } else if (bannerType == kBannerTypeUnknown) {
        LogInfo("Ad banner type is unknown, adType = {}, adPosition = {}, bannerType = {}", int(m_adType), m_adPosition,
                bannerType);
    } else {
        Complete(NewBanner(*list));
        return;
    }
    // An internal build reports that there is no banner; in a release the callback does not run.
    if (!core::environment::IsReleaseAppVersion()) {
        Complete(nullptr);
    }
}

void CZRAdBannerController::Complete(QWidget* banner) {
    // The callback may request another banner, which replaces the function that is running.
    const std::function<void(QWidget*)> complete = m_fnComplete;
    if (complete) {
        complete(banner);
    } else {
        // Without a caller nothing would delete it.
        delete banner;
    }
}

QWidget* CZRAdBannerController::NewBanner(CZRAdModelList& list) {
    LogInfo("Create ad banner, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
    auto* view = new CZRAdBannerView(nullptr, m_size);
    view->SetTopNonClickableAreaHeight(m_topNonClickableAreaHeight);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::LoadImageSucceeded, this,
                              &CZRAdController::OnImageLoadSucceeded, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::LoadImageFailed, this,
                              &CZRAdController::OnImageLoadFailed, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::ExposeAdStart, this,
                              &CZRAdBannerController::OnExposeAdStart, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::ExposeAdEnd, this,
                              &CZRAdBannerController::OnExposeAdEnd, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::ClickAd, this, &CZRAdController::OnAdClicked,
                              Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBannerView::CloseAd, this,
                              &CZRAdBannerController::OnCloseAd, Qt::UniqueConnection);
    AddAds(*view, *list.GetAdList(), list.GetBannerPosition()->GetBannerType() == kBannerTypeSingleImage);
    return view;
}

void CZRAdBannerController::OnExposeAdStart(QString adId) {
    ReportExposeAdStart(adId);
}

void CZRAdBannerController::OnExposeAdEnd(QString adId) {
    ReportExposeAdEnd(adId, QString());
}

// All banners have one close type, because only the end of the widget is known here.
void CZRAdBannerController::OnCloseAd(QString adId) {
    CloseAd(ZRAdCloseTypeLogin, adId, QString());
}
