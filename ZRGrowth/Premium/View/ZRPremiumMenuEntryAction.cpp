#include "Premium/View/ZRPremiumMenuEntryAction.h"

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "core/report.h"
#include "core/url_linkid.h"
#include "core/urlhandler.h"
#include "framework/defensive.h"
#include "modules/ZRGrowthMessages.h"
#include "premium_svr.pb.h"
#include "ui/ZMenu.h"
#include "ui/ZResource.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Premium;
constexpr EnPremiumAccess kRight = EnPremiumAccess_MyPagePremium;
constexpr int kReportCodeView = 4;
constexpr int kReportCodeClick = 3;

Json::Value ReportParams() {
    Json::Value params(Json::objectValue);
    params["permission_type"] = std::to_string(int(kRight));
    params["engine_status"] = CZRVipManager::Singleton()->GetVipEngineStatus();
    return params;
}

}  // namespace

CZRPremiumMenuEntryAction::CZRPremiumMenuEntryAction(ZMenu* menu) : ZAction(menu) {
    FrameWork::ConnectChecked(kGrowthModuleTag, this, &QAction::triggered, this,
                              &CZRPremiumMenuEntryAction::OnEntryClicked, Qt::UniqueConnection);
    for (const unsigned int message : {kMsgPremiumDataChanged, kMsgPremiumRequestAnswered}) {
        core::__CMessageDispatch(GROWTH_HERE)
            .Bind(
                message,
                [this](unsigned int id, unsigned long param, std::shared_ptr<core::CMessageBody> body) {
                    OnStateChanged(id, param, std::move(body));
                },
                this);
    }
    RefreshState();
}

CZRPremiumMenuEntryAction::~CZRPremiumMenuEntryAction() {
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
}

void CZRPremiumMenuEntryAction::RefreshState() {
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(kRight);
    const bool visible = record.nActivationType != 0 && record.nActivationType != web_premium_access::EMPTY_STATE &&
                         record.nMainBtnUrlID > 0 && !record.strMainBtn.isEmpty();
    setSvgIcon(ZResource::icon_premium_crown_16, ZIconColorStyle::normal);
    setText(record.strMainBtn);
    setVisible(visible);
    if (visible && !m_bWasVisible) {
        Json::Value params = ReportParams();
        params["page_id"] = "2";
        core::report::Report("ViewPremiumFunctionEntrance", kReportCodeView, params, 0);
    }
    m_bWasVisible = visible;
    LogInfo("Premium Menu Entry Refreshed, Visible = {}, Text = {}", visible, record.strMainBtn.toStdString());
}

void CZRPremiumMenuEntryAction::OnStateChanged(unsigned int /*messageId*/, unsigned long /*param*/,
                                               std::shared_ptr<core::CMessageBody> /*body*/) {
    RefreshState();
}

void CZRPremiumMenuEntryAction::OnEntryClicked() {
    core::report::Report("ClickPremiumFunctionEntrance", kReportCodeClick, ReportParams(), 0);
    const int linkId = CZRPremiumManager::Singleton()->GetUIAccessData(kRight).nMainBtnUrlID;
    if (linkId <= 0) {
        LogError("Premium Menu Entry Click Failed, Jump Url Id Is Invalid");
        return;
    }
    const std::string link = core::url_linkid::GetLinkUrlWithTargetLinkId(static_cast<unsigned long>(linkId), 0);
    const QString url = QString::fromUtf8(link.data(), int(link.size()));
    LogInfo("Premium Menu Entry Clicked, Open Url = {}", url.toStdString());
    // An empty address is dispatched as well, on purpose.
    core::urlhandler::DispatchUrl(url, core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                  core::urlhandler::kFallbackMenu);
}
