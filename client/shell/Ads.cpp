#include "Ads.h"

#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"

namespace {

std::shared_ptr<IZRGrowthModuleInterface> Service() {
    return IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
}

}  // namespace

void CAds::AskBanner(int position, const QSize& size, std::function<void(QWidget*)> shown) {
    if (const auto service = Service()) {
        service->GetAdBannerAsync(position, size, std::move(shown), 0, false, {});
    }
}

void CAds::PlacePopup() {
    if (const auto service = Service()) {
        service->UpdateAdBottomPopupCoordinates();
    }
}

QWidget* CAds::NewPopupPanel() {
    const auto service = Service();
    return service ? service->GetAdBottomPopupDeveloperView() : nullptr;
}

void CAds::Refresh() {
    Q_EMIT Changed();
}
