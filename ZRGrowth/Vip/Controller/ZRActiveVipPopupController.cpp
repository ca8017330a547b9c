#include "Vip/Controller/ZRActiveVipPopupController.h"

#include "Ad/View/ZRAdMiddlePopupView.h"
#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"
#include "Vip/ZRVipIds.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/pb_helper.h"
#include "core/post.h"
#include "framework/defensive.h"
#include "premium_svr.pb.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr unsigned int kTextActivated = 292250;
constexpr unsigned int kTextFailed = 292248;
constexpr const char* kPictureConfig = "premium_active_popup_image";

const char* MarketKey(int market) {
    switch (market) {
        case 5:
            return "SG";
        case 6:
            return "AU";
        case 7:
            return "JP";
        case 8:
            return "CA";
        case 9:
            return "MY";
        default:
            return "US";
    }
}

const char* LanguageKey(int language) {
    switch (language) {
        case core::lang::kLanguageSimplifiedChinese:
            return "zh-Hans";
        case core::lang::kLanguageTraditionalChinese:
            return "zh-Hant";
        case core::lang::kLanguageJapanese:
            return "ja";
        case core::lang::kLanguageFrench:
            return "fr";
        default:
            return "en";
    }
}

}  // namespace

CZRActiveVipPopupController::CZRActiveVipPopupController(QObject* parent) : QObject(parent) {}

CZRActiveVipPopupController::~CZRActiveVipPopupController() = default;

void CZRActiveVipPopupController::RequestActiveVip(EnPremiumAccess access, const QString& targetUrl,
                                                   QPointer<QWidget> activeVipPopupParent) {
    m_pActiveVipPopupParent = activeVipPopupParent;
    web_premium_access::ActivePermissionStateReq request;
    request.set_operate(web_premium_access::READY_TO_LIMITED);
    request.add_access_list(access);
    CSProtoData data;
    data.m_nCmd = kCmdActivePermission;
    core::pb_helper::PBDataToBuf(&request, data.m_strData);
    const auto callback = [this, targetUrl](unsigned long session, CSProtoError error, const CSProtoData& reply,
                                            const CSResponseExt* ext) {
        OnRequestActiveVipCallback(session, error, reply, ext, targetUrl);
    };
    IZRChannelProxy::SendCommand(kCSChannelMain, data, nullptr, callback, this);
}

void CZRActiveVipPopupController::OnRequestActiveVipCallback(qulonglong /*nReqKey*/, CSProtoError enError,
                                                             CSProtoData stRspData, const CSResponseExt* /*pRspExt*/,
                                                             QString targetUrl) {
    core::post::ToMain(
        this, [this, enError, stRspData, targetUrl] { HandleResponse(enError, stRspData, targetUrl); }, nullptr);
}

void CZRActiveVipPopupController::HandleResponse(CSProtoError error, const CSProtoData& data,
                                                 const QString& targetUrl) {
    web_premium_access::ActivePermissionStateRsp response;
    if (error != kCSProtoOk || data.m_nCmd != kCmdActivePermission) {
        LogError("RequestActiveVip callback, receive cmd error, error = {}, cmd = {}", int(error), data.m_nCmd);
        ShowToast(ZToast::kFailure, kTextFailed);
        return;
    }
    if (!response.ParseFromString(data.m_strData)) {
        LogError("RequestActiveVip callback, receive cmd 20981, data parse failed");
        ShowToast(ZToast::kFailure, kTextFailed);
        return;
    }
    // On purpose a right that was activated before (1001) is a failure, and an absent code is a success.
    if (response.code() != 0) {
        LogError("RequestActiveVip callback, active failed, code = {}, message = {}", response.code(),
                 response.message());
        ShowToast(ZToast::kFailure, kTextFailed);
        return;
    }
    ShowPopup(targetUrl);
}

void CZRActiveVipPopupController::ShowPopup(const QString& targetUrl) {
    if (!m_pActiveVipPopupParent) {
        LogError("Show popup failed, parent is empty");
        return;
    }
    const QString imageUrl = GetActiveVipPopImageUrl();
    if (imageUrl.isEmpty()) {
        LogError("Show popup failed, imageUrl is empty. Show success toast");
        ShowToast(ZToast::kSuccess, kTextActivated);
        return;
    }
    DeleteActiveVipPopup();
    LogInfo("Show popup start, imageUrl = {}", imageUrl.toStdString());
    m_pPopup = new CZRAdMiddlePopupView(m_pActiveVipPopupParent, false);
    m_pPopup->hide();
    m_pPopup->move(0, 0);
    using View = CZRAdMiddlePopupView;
    using Controller = CZRActiveVipPopupController;
    View* popup = m_pPopup;
    FrameWork::ConnectChecked(kGrowthModuleTag, popup, &View::ClickAd, this, &Controller::OnImageClicked);
    FrameWork::ConnectChecked(kGrowthModuleTag, popup, &View::Closed, this, &Controller::OnClosed);
    FrameWork::ConnectChecked(kGrowthModuleTag, popup, &View::LoadImageSucceeded, this,
                              &Controller::OnImageLoadSucceeded);
    FrameWork::ConnectChecked(kGrowthModuleTag, popup, &View::LoadImageFailed, this, &Controller::OnImageLoadFailed);
    m_pPopup->SetSchema(targetUrl);
    m_pPopup->SetImageUrl(imageUrl);
}

QString CZRActiveVipPopupController::GetActiveVipPopImageUrl() {
    const Json::Value config = core::config_common::GetJsonConfigByName(kPictureConfig);
    const Json::Value& images = growth_json::Member(config, "image_info");
    if (!images.isObject()) {
        LogError("Get ActiveVipPopImageUrl failed, image_info is empty");
        return QString();
    }
    const auto markets = core::attr_market::GetCurrentUserAttrMarket();
    if (markets.empty()) {
        LogError("Get ActiveVipPopImageUrl failed, attrMarkets is empty");
        return QString();
    }
    const char* market = MarketKey(markets.front());
    const Json::Value& marketImages = growth_json::Member(images, market);
    if (!marketImages.isObject()) {
        LogError("Get ActiveVipPopImageUrl failed, attrMarket image is null, attrMarket = {}", market);
        return QString();
    }
    const char* language = LanguageKey(core::lang::GetLanguageID());
    const Json::Value& image = growth_json::Member(marketImages, language);
    if (!image.isString()) {
        LogError("Get ActiveVipPopImageUrl failed, language image is null, language = {}", language);
        return QString();
    }
    const QString imageUrl = growth_json::Text(image);
    LogInfo("Get ActiveVipPopImageUrl success, imageUrl = {}", imageUrl.toStdString());
    return imageUrl;
}

void CZRActiveVipPopupController::OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count) {
    LogInfo("OnImageLoadSucceeded, imageUrl = {}, time = {}, count = {}", imageUrl.toStdString(), time, count);
    if (m_pPopup) {
        m_pPopup->setHidden(false);
        m_pPopup->show();
    }
}

void CZRActiveVipPopupController::OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time,
                                                    int count) {
    LogInfo("OnImageLoadFailed, imageUrl = {}, resultContent = {}, time = {}, count = {}", imageUrl.toStdString(),
            resultContent.toStdString(), time, count);
    DeleteActiveVipPopup();
    // The right is active, so the user hears of the success nevertheless.
    ShowToast(ZToast::kSuccess, kTextActivated);
}

void CZRActiveVipPopupController::OnImageClicked(bool jumpResult) {
    LogInfo("OnImageClicked, jumpResult = {}", jumpResult);
    DeleteActiveVipPopup();
}

void CZRActiveVipPopupController::OnClosed() {
    LogInfo("OnClosed");
    DeleteActiveVipPopup();
}

void CZRActiveVipPopupController::DeleteActiveVipPopup() {
    if (!m_pPopup) {
        return;
    }
    m_pPopup->disconnect(this);
    m_pPopup->close();
    if (m_pPopup) {
        m_pPopup->deleteLater();
    }
    m_pPopup.clear();
}

void CZRActiveVipPopupController::ShowToast(ZToast::ZrStyle style, unsigned int toastLangId) {
    if (!m_pActiveVipPopupParent) {
        GROWTH_LOG(kZRLogFatal, "Show toast failed, parent is empty, toastLangId = {}", toastLangId);
        return;
    }
    ZToast::ToastInfo info;
    info.style = style;
    info.text = core::langx::tr(toastLangId, "");
    auto* toast = new ZToast(m_pActiveVipPopupParent);
    toast->showToast(info);
}
