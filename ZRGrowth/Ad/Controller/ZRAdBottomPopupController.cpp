#include "Ad/Controller/ZRAdBottomPopupController.h"

#include "Ad/Model/ZRAdPopupModel.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "GrowthBizLogUtil.h"
#include "framework/defensive.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;

// Two overloads have this name, so the arguments select one.
constexpr auto kOnImageLoadSucceeded =
    qOverload<QString, qlonglong, int, QString, QString>(&CZRAdPopupController::OnImageLoadSucceeded);

}  // namespace

CZRAdBottomPopupController::CZRAdBottomPopupController(QObject* parent) : CZRAdPopupController(parent) {
    m_adPosition = kAdPositionBottomPopup;
}

CZRAdBottomPopupController::~CZRAdBottomPopupController() = default;

void CZRAdBottomPopupController::RequestAdBottomPopup(ZRAdApiType apiType, const QList<QString>& adIds) {
    RequestAd(apiType, m_adPosition, adIds);
}

void CZRAdBottomPopupController::UpdateAdBottomPopupCoordinates() {
    if (auto* view = qobject_cast<CZRAdBottomPopupView*>(m_adPopupView)) {
        view->UpdateCoordinates();
    }
}

void CZRAdBottomPopupController::AddAdPopupView(CZRAdPopupModel* model, bool enableClose, int showDuration,
                                                const QString& adId, const QString& pushId) {
    if (!model) {
        LogInfo("AddAdBottomPopupView, adPopupModel is null, adType = {}, adPosition = {}, adId = {}", int(m_adType),
                m_adPosition, adId.toStdString());
        return;
    }
    if (!model->GetBottomPopup()) {
        LogInfo("AddAdBottomPopupView, adBottomPopupModel is null, adType = {}, adPosition = {}, adId = {}",
                int(m_adType), m_adPosition, adId.toStdString());
        return;
    }
    const auto mainFrame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    if (!mainFrame) {
        LogInfo("AddAdBottomPopupView, spMainFrameInterface is null, adType = {}, adPosition = {}, adId = {}",
                int(m_adType), m_adPosition, adId.toStdString());
        return;
    }
    QWidget* mainFrameWidget = mainFrame->GetMainFrameWidget();
    if (!mainFrameWidget) {
        LogInfo("AddAdBottomPopupView, MainFrame is null, adType = {}, adPosition = {}, adId = {}", int(m_adType),
                m_adPosition, adId.toStdString());
        return;
    }
    DeleteAdPopupView();
    LogInfo(
        "Create CZRAdBottomPopupView, adType = {}, adPosition = {}, adId = {}, pushId = {}, enableClose = {}, "
        "showDuration = {}s",
        int(m_adType), m_adPosition, adId.toStdString(), pushId.toStdString(), enableClose, showDuration);
    auto* view = new CZRAdBottomPopupView(mainFrameWidget, enableClose, kAdBottomPopupSize, adId, pushId);
    m_adPopupView = view;
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBottomPopupView::LoadImageSucceeded, this,
                              kOnImageLoadSucceeded, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBottomPopupView::LoadImageFailed, this,
                              &CZRAdPopupController::OnImageLoadFailed, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBottomPopupView::ClickAd, this,
                              &CZRAdPopupController::OnAdClicked, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, view, &CZRAdBottomPopupView::CloseButtonClicked, this,
                              &CZRAdPopupController::OnCloseButtonClicked, Qt::UniqueConnection);
    // The target is set before the picture, which may be loaded inside the call.
    view->setVisible(false);
    view->SetSchema(model->GetBottomPopup()->GetSchema());
    view->SetImageUrl(model->GetBottomPopup()->GetImage());
}

// A card that is being closed reports nothing more.
void CZRAdBottomPopupController::DeleteAdPopupView() {
    if (auto* view = qobject_cast<CZRAdBottomPopupView*>(m_adPopupView)) {
        disconnect(view, &CZRAdBottomPopupView::LoadImageSucceeded, this, kOnImageLoadSucceeded);
        disconnect(view, &CZRAdBottomPopupView::LoadImageFailed, this, &CZRAdPopupController::OnImageLoadFailed);
        disconnect(view, &CZRAdBottomPopupView::ClickAd, this, &CZRAdPopupController::OnAdClicked);
        disconnect(view, &CZRAdBottomPopupView::CloseButtonClicked, this, &CZRAdPopupController::OnCloseButtonClicked);
    }
    CZRAdPopupController::DeleteAdPopupView();
}
