#include "Ads.h"

#include "GrowthService.h"

void CAds::AskBanner(int position, const QSize& size, std::function<void(QWidget*)> shown) {
    if (const auto service = GrowthService()) {
        service->GetAdBannerAsync(position, size, std::move(shown), 0, false, {});
    }
}

void CAds::PlacePopup() {
    if (const auto service = GrowthService()) {
        service->UpdateAdBottomPopupCoordinates();
    }
}

QWidget* CAds::NewPopupPanel() {
    const auto service = GrowthService();
    return service ? service->GetAdBottomPopupDeveloperView() : nullptr;
}

void CAds::Refresh() {
    Q_EMIT Changed();
}
