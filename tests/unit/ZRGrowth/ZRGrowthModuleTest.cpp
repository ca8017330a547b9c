// The module class and its service, linked with managers, a plug-in centre and a log that record.
#include "ZRGrowthModule.h"

#include <gmock/gmock.h>

#include <QStringList>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "GrowthBizLogUtil.h"
#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/View/ZRPremiumMenuEntryAction.h"
#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipMenuEntryAction.h"
#include "Vip/View/ZRVipTitleBarEntryWidget.h"
#include "ZRGrowthModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"

using namespace ::testing;

namespace {

std::vector<std::string>& Calls() {
    static std::vector<std::string> calls;
    return calls;
}

std::vector<std::string>& Registrations() {
    static std::vector<std::string> registrations;
    return registrations;
}

// An address that nobody looks behind.
QWidget* SomeWidget() {
    static int nothing = 0;
    return reinterpret_cast<QWidget*>(&nothing);
}

IGrowthVipBaseWidget* SomeVipWidget() {
    return reinterpret_cast<IGrowthVipBaseWidget*>(SomeWidget());
}

class GrowthModuleTest : public Test {
protected:
    CZRGrowthModule module;
};

TEST_F(GrowthModuleTest, TheSymbolNameIsThePrefixAndMain) {
    EXPECT_EQ(module.GetSymbolName(), "zelkor.zrgrowth.main");
}

TEST_F(GrowthModuleTest, InitStartsPremiumThenAds) {
    module.OnInit();

    EXPECT_THAT(Calls(), ElementsAre("Premium.Init", "Ad.Init"));
}

TEST_F(GrowthModuleTest, UnInitReachesPremiumAdsAndAIChatAlsoWithoutALogin) {
    module.OnUnInit();

    EXPECT_THAT(Calls(), ElementsAre("Premium.UnInit", "Ad.UnInit", "AIChat made", "AIChat.UnInit"));
}

TEST_F(GrowthModuleTest, LoginReachesPremiumAdsVipAndLastAIChat) {
    module.OnLogin();

    EXPECT_THAT(Calls(), ElementsAre("Premium.OnLogin", "Ad.OnLogin", "Vip made", "Vip.OnLogin", "AIChat made",
                                     "AIChat.OnLogin"));
}

TEST_F(GrowthModuleTest, LogoutReachesAIChatFirstThenPremiumAdsAndVip) {
    module.OnLogout();

    EXPECT_THAT(Calls(), ElementsAre("AIChat made", "AIChat.OnLogout", "Premium.OnLogout", "Ad.OnLogout", "Vip made",
                                     "Vip.OnLogout"));
}

TEST_F(GrowthModuleTest, TheModuleObjectHoldsNoState) {
    EXPECT_EQ(sizeof(CZRGrowthModule), sizeof(IZRPluginModule));
}

TEST_F(GrowthModuleTest, TheServicesFactoryIsRegisteredOnceAndReplacesNothing) {
    EXPECT_THAT(Registrations(), ElementsAre("24IZRGrowthModuleInterface false"));
}

TEST_F(GrowthModuleTest, ALogLineGoesToTheHostWithItsPlaceTheTagAndMinus128) {
    CGrowthBizLogUtil::WriteLog("ZRGrowth/Some/Source", 7, "Function", kZRLogError, CGrowthBizLogUtil::Vip, "text");

    EXPECT_THAT(Calls(), ElementsAre("ZRGrowth/Some/Source 7 Function 8 ZRGrowth [Vip] text -128"));
}

TEST_F(GrowthModuleTest, MakingAndDestroyingTheModuleReachesNobody) {
    { const CZRGrowthModule another; }

    EXPECT_THAT(Calls(), IsEmpty());
}

class GrowthServiceTest : public Test {
protected:
    CZRGrowthModuleUtil service;
};

TEST_F(GrowthServiceTest, AdsComeFromTheAdManagerWithTheirArguments) {
    QWidget* given = nullptr;
    service.GetAdBannerAsync(7, QSize(640, 90), [&given](QWidget* banner) { given = banner; }, 12, true,
                             {QStringLiteral("1"), QStringLiteral("2")});
    service.GetAdBannerAsync(9, QSize(), nullptr, 0, false, {});
    service.UpdateAdBottomPopupCoordinates();

    EXPECT_THAT(Calls(), ElementsAre("Ad.Banner 7 640x90 12 true 1,2", "Ad.Banner 9 -1x-1 0 false ", "Ad.Move"));
    EXPECT_EQ(given, SomeWidget());
    EXPECT_EQ(service.GetAdBottomPopupDeveloperView(), SomeWidget());
}

TEST_F(GrowthServiceTest, RequestsForRightsGoToThePremiumManagerWithTheirArguments) {
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(true), 1u);
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(false), 2u);
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(QVector<int>{13, 7}, false), 3u);
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(QVector<int>{}, true), 4u);
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{EnPremiumAccess_IFIS}, true), 5u);
    EXPECT_EQ(service.GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess>{}, false), 6u);

    EXPECT_THAT(Calls(), ElementsAre("Premium.Request true", "Premium.Request false", "Premium.Request 13 7 false",
                                     "Premium.Request  true", "Premium.Request 106 true", "Premium.Request  false"));
}

TEST_F(GrowthServiceTest, RightsComeFromThePremiumManager) {
    EXPECT_EQ(service.GetUIData(EnPremiumAccess_IFIS).strMainTitle, QStringLiteral("display 106"));
    EXPECT_EQ(service.GetAccessData(EnPremiumAccess_IFIS).nDaysLeft, 106);
    EXPECT_EQ(service.GetUIAccessData(EnPremiumAccess_Insider).nMainBtnUrlID, 103);
    EXPECT_THAT(service.GetUIAccessData().keys(), ElementsAre(EnPremiumAccess_MyPagePremium));

    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(GrowthServiceTest, ARecordThatIsSetGoesToThePremiumManager) {
    CPremiumUIAccessData record;
    record.nDaysLeft = 4;

    service.SetUIAccessData(EnPremiumAccess_IFIS, record);

    EXPECT_THAT(Calls(), ElementsAre("Premium.Set 106 4"));
}

TEST_F(GrowthServiceTest, EntryOfTheMemberPageIsMadeForTheMenu) {
    const std::unique_ptr<ZAction> entry(service.GetPremiumMenuEntryAction(nullptr));

    EXPECT_TRUE(qobject_cast<CZRPremiumMenuEntryAction*>(entry.get()));
    EXPECT_THAT(Calls(), ElementsAre("Premium entry"));
}

TEST_F(GrowthServiceTest, TheVipStatusComesFromTheVipManager) {
    EXPECT_TRUE(service.HasVipQualification());
    EXPECT_EQ(service.GetVipGrade(), 17);
    EXPECT_EQ(service.GetVipState(), 18);
    EXPECT_TRUE(service.IsNewVipSystem());
    EXPECT_EQ(service.GetVipEngineStatus(), 20);
    EXPECT_EQ(service.GetNewVipState(), 21);

    EXPECT_THAT(Calls(), ElementsAre("Vip made", "Vip.HasVipQualification", "Vip.IsNewVipSystem"));
}

TEST_F(GrowthServiceTest, VipWidgetsComeFromTheVipManagerWithTheirArguments) {
    const auto access = EnPremiumAccess_IFIS;
    const auto data = ZRVipUIDataDetail;
    const QString page = QStringLiteral("page");
    QWidget* parent = SomeWidget();

    EXPECT_TRUE(service.IsVipIconEnabled(access));
    EXPECT_EQ(service.GetVipIcon(access, parent), SomeVipWidget());
    EXPECT_EQ(service.GetVipIconImageName(), QStringLiteral("icon"));
    EXPECT_EQ(service.GetVipIconImageSize(), QSize(1, 2));
    EXPECT_TRUE(service.IsVipTagEnabled(access));
    EXPECT_EQ(service.GetVipTag(access, ZRVipTagName, page, parent), SomeVipWidget());
    EXPECT_EQ(service.GetVipTagImageName(ZRVipTagName), QStringLiteral("tag 1"));
    EXPECT_EQ(service.GetVipTagImageSize(ZRVipTagName), QSize(3, 1));
    EXPECT_TRUE(service.IsVipBannerEnabled(access, data));
    EXPECT_EQ(service.GetVipBanner(access, data, page, parent), SomeVipWidget());
    EXPECT_TRUE(service.IsVipMaskEnabled(ZRVipMaskExclusive, access, data));
    EXPECT_EQ(service.GetVipMask(ZRVipMaskExclusive, access, data, page, parent, {}, 1.5, 2.5, true), SomeVipWidget());
    service.HandleVipWidgetClicked(access, data, nullptr);
    service.OpenVipWebPage(page);

    const std::vector<std::string> expected = {"Vip made",
                                               "Vip.IconEnabled 106",
                                               "Vip.Icon 106 true",
                                               "Vip.TagEnabled 106",
                                               "Vip.Tag 106 1 page true",
                                               "Vip.BannerEnabled 106 2",
                                               "Vip.Banner 106 2 page true",
                                               "Vip.MaskEnabled 2 106 2",
                                               "Vip.Mask 2 106 2 page true 1.5 2.5 true",
                                               "Vip.Clicked 106 2",
                                               "Vip.Page page"};
    EXPECT_EQ(Calls(), expected);
}

TEST_F(GrowthServiceTest, AIChatGoesToItsManagerAndIsNeverAPreloadWhenItComesFromOutside) {
    const QString name = QStringLiteral("name");
    service.OpenAIChatPage(ZRAIChatPageNews, {{QStringLiteral("a"), QStringLiteral("b")}}, true, false);
    service.OpenAIChatPage(ZRAIChatPageQuotes, {}, false, true);
    EXPECT_TRUE(service.InvokeAIChatWebJSAPI(name, Json::Value(1)));
    EXPECT_TRUE(service.RegisterAIChatNativeJSAPI(
        name, [](const Json::Value&, int) { return std::make_shared<Json::Value>(2); }));
    service.RespondToNativeJSAPI(name, Json::Value(3));
    service.UnregisterAIChatNativeJSAPI(name);

    EXPECT_THAT(Calls(), ElementsAre("AIChat made", "AIChat.Open 4 a=b true false false ''",
                                     "AIChat.Open 12  false true false ''", "AIChat.Invoke name 1",
                                     "AIChat.Register name 2", "AIChat.Respond name 3", "AIChat.Unregister name"));
}

TEST_F(GrowthServiceTest, TheServiceHoldsNoState) {
    EXPECT_EQ(sizeof(CZRGrowthModuleUtil), sizeof(IZRGrowthModuleInterface));
}

}  // namespace

void IZRPluginCenter::RegisterInterfaceFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace) {
    Registrations().push_back(factory->GetInterfaceName() + (replace ? " true" : " false"));
}

void FrameWork::_WriteLogRaw(const char* file, int line, const char* function, ZRLogType type, const char* module,
                             const QString& text, signed char channel) {
    Calls().push_back(
        fmt::format("{} {} {} {} {} {} {}", file, line, function, int(type), module, text.toStdString(), int(channel)));
}

// The managers, from here on: VIP and AI chat note when their first use made them.

CZRPremiumManager::CZRPremiumManager() = default;
CZRPremiumManager::~CZRPremiumManager() = default;
CZRPremiumManager* CZRPremiumManager::Singleton() {
    static CZRPremiumManager manager;
    return &manager;
}
void CZRPremiumManager::Init() {
    Calls().emplace_back("Premium.Init");
}
void CZRPremiumManager::UnInit() {
    Calls().emplace_back("Premium.UnInit");
}
void CZRPremiumManager::OnLogin() {
    Calls().emplace_back("Premium.OnLogin");
}
void CZRPremiumManager::OnLogout() {
    Calls().emplace_back("Premium.OnLogout");
}
unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(bool serverPush) {
    Calls().push_back(fmt::format("Premium.Request {}", serverPush));
    return Calls().size();
}
unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) {
    Calls().push_back(fmt::format("Premium.Request {} {}", fmt::join(accessList, " "), serverPush));
    return Calls().size();
}
unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList,
                                                             bool serverPush) {
    return GetUiMsgAndPremiumAccessReq(QVector<int>(accessList.begin(), accessList.end()), serverPush);
}
CPremiumUIData CZRPremiumManager::GetUIData(EnPremiumAccess access) const {
    CPremiumUIData data;
    data.strMainTitle = QStringLiteral("display %1").arg(int(access));
    return data;
}
CPremiumAccessData CZRPremiumManager::GetAccessData(EnPremiumAccess access) const {
    CPremiumAccessData data;
    data.nDaysLeft = access;
    return data;
}
CPremiumUIAccessData CZRPremiumManager::GetUIAccessData(EnPremiumAccess access) const {
    CPremiumUIAccessData data;
    data.nMainBtnUrlID = access;
    return data;
}
QMap<EnPremiumAccess, CPremiumUIAccessData> CZRPremiumManager::GetUIAccessData() const {
    return {{EnPremiumAccess_MyPagePremium, {}}};
}
void CZRPremiumManager::SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) {
    Calls().push_back(fmt::format("Premium.Set {} {}", int(access), data.nDaysLeft));
}

CZRPremiumAccessModel::~CZRPremiumAccessModel() = default;

CZRAdManager::CZRAdManager() = default;
CZRAdManager::~CZRAdManager() = default;
CZRAdManager* CZRAdManager::Singleton() {
    static CZRAdManager manager;
    return &manager;
}
void CZRAdManager::Init() {
    Calls().emplace_back("Ad.Init");
}
void CZRAdManager::UnInit() {
    Calls().emplace_back("Ad.UnInit");
}
void CZRAdManager::OnLogin() {
    Calls().emplace_back("Ad.OnLogin");
}
void CZRAdManager::OnLogout() {
    Calls().emplace_back("Ad.OnLogout");
}
void CZRAdManager::GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                    int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) {
    Calls().push_back(fmt::format("Ad.Banner {} {}x{} {} {} {}", adPosition, size.width(), size.height(),
                                  topNonClickableAreaHeight, useCheck,
                                  QStringList(adIds).join(QLatin1Char(',')).toStdString()));
    if (callback) {
        callback(SomeWidget());
    }
}
void CZRAdManager::UpdateAdBottomPopupCoordinates() {
    Calls().emplace_back("Ad.Move");
}
QWidget* CZRAdManager::GetAdBottomPopupDeveloperView() {
    return SomeWidget();
}
void CZRAdManager::OnLoginChannelConnect(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
void CZRAdManager::OnLanguageChanged(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
void CZRAdManager::OnTabFrameChanged(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
void CZRAdManager::OnAdStatusChangedPushCallback(qulonglong, CSProtoError, CSProtoData, const CSResponseExt*) {}
void CZRAdManager::OnAdPushCallback(qulonglong, CSProtoError, CSProtoData, const CSResponseExt*) {}
void CZRAdManager::OnAdCheckPushCallback(qulonglong, CSProtoError, CSProtoData, const CSResponseExt*) {}

CZRVipManager::CZRVipManager() {
    Calls().emplace_back("Vip made");
}
CZRVipManager::~CZRVipManager() = default;
CZRVipManager* CZRVipManager::Singleton() {
    static CZRVipManager manager;
    return &manager;
}
void CZRVipManager::OnLogin() {
    Calls().emplace_back("Vip.OnLogin");
}
void CZRVipManager::OnLogout() {
    Calls().emplace_back("Vip.OnLogout");
}
bool CZRVipManager::HasVipQualification() const {
    Calls().emplace_back("Vip.HasVipQualification");
    return true;
}
int CZRVipManager::GetVipGrade() const {
    return 17;
}
int CZRVipManager::GetVipState() const {
    return 18;
}
bool CZRVipManager::IsNewVipSystem() const {
    Calls().emplace_back("Vip.IsNewVipSystem");
    return true;
}
ZRVipEngineStatus CZRVipManager::GetVipEngineStatus() const {
    return 20;
}
int CZRVipManager::GetNewVipState() const {
    return 21;
}

bool CZRVipManager::IsVipIconEnabled(EnPremiumAccess access) {
    Calls().push_back(fmt::format("Vip.IconEnabled {}", int(access)));
    return true;
}
IGrowthVipBaseWidget* CZRVipManager::GetVipIcon(EnPremiumAccess access, QWidget* parent) {
    Calls().push_back(fmt::format("Vip.Icon {} {}", int(access), parent == SomeWidget()));
    return SomeVipWidget();
}
QString CZRVipManager::GetVipIconImageName() {
    return QStringLiteral("icon");
}
QSize CZRVipManager::GetVipIconImageSize() {
    return {1, 2};
}
bool CZRVipManager::IsVipTagEnabled(EnPremiumAccess access) {
    Calls().push_back(fmt::format("Vip.TagEnabled {}", int(access)));
    return true;
}
IGrowthVipBaseWidget* CZRVipManager::GetVipTag(EnPremiumAccess access, ZRVipTagType type, const QString& page,
                                               QWidget* parent) {
    Calls().push_back(
        fmt::format("Vip.Tag {} {} {} {}", int(access), int(type), page.toStdString(), parent == SomeWidget()));
    return SomeVipWidget();
}
QString CZRVipManager::GetVipTagImageName(ZRVipTagType type) {
    return QStringLiteral("tag %1").arg(int(type));
}
QSize CZRVipManager::GetVipTagImageSize(ZRVipTagType type) {
    return {3, int(type)};
}
bool CZRVipManager::IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType data) {
    Calls().push_back(fmt::format("Vip.BannerEnabled {} {}", int(access), int(data)));
    return true;
}
IGrowthVipBaseWidget* CZRVipManager::GetVipBanner(EnPremiumAccess access, ZRVipUIDataType data, const QString& page,
                                                  QWidget* parent) {
    Calls().push_back(
        fmt::format("Vip.Banner {} {} {} {}", int(access), int(data), page.toStdString(), parent == SomeWidget()));
    return SomeVipWidget();
}
bool CZRVipManager::IsVipMaskEnabled(ZRVipMaskType mask, EnPremiumAccess access, ZRVipUIDataType data) {
    Calls().push_back(fmt::format("Vip.MaskEnabled {} {} {}", int(mask), int(access), int(data)));
    return true;
}
IGrowthVipBaseWidget* CZRVipManager::GetVipMask(ZRVipMaskType mask, EnPremiumAccess access, ZRVipUIDataType data,
                                                const QString& page, QWidget* parent,
                                                const zrstdui::image_blur::WidgetPainterBufferSource&, double theme3,
                                                double other, bool popup) {
    Calls().push_back(fmt::format("Vip.Mask {} {} {} {} {} {} {} {}", int(mask), int(access), int(data),
                                  page.toStdString(), parent == SomeWidget(), theme3, other, popup));
    return SomeVipWidget();
}
void CZRVipManager::HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType data, QPointer<QWidget>) {
    Calls().push_back(fmt::format("Vip.Clicked {} {}", int(access), int(data)));
}
void CZRVipManager::OpenVipWebPage(const QString& url) {
    Calls().push_back("Vip.Page " + url.toStdString());
}

CZRPremiumTimeActivationStateWidget::CZRPremiumTimeActivationStateWidget(const QString& mainTitle,
                                                                         const QString& mainBtn, const QString& uiType,
                                                                         const QString& detailTitle, int daysLeft,
                                                                         QWidget* parent)
    : IGrowthPremiumWidget(parent) {
    Calls().push_back(fmt::format("Strip {} {} {} {} {}", mainTitle.toStdString(), mainBtn.toStdString(),
                                  uiType.toStdString(), detailTitle.toStdString(), daysLeft));
}
CZRPremiumTimeActivationStateWidget::~CZRPremiumTimeActivationStateWidget() = default;
void CZRPremiumTimeActivationStateWidget::SetCallback(std::function<void(bool)>, QObject*) {}
void CZRPremiumTimeActivationStateWidget::SetShowCallback(std::function<void(bool)>, QObject*) {}
void CZRPremiumTimeActivationStateWidget::UpdateUiData(const QString&, const QString&, const QString&, const QString&,
                                                       int) {}
QSize CZRPremiumTimeActivationStateWidget::sizeHint() const {
    return {};
}
QSize CZRPremiumTimeActivationStateWidget::minimumSizeHint() const {
    return {};
}
void CZRPremiumTimeActivationStateWidget::resizeEvent(QResizeEvent*) {}
void CZRPremiumTimeActivationStateWidget::showEvent(QShowEvent*) {}
void CZRPremiumTimeActivationStateWidget::hideEvent(QHideEvent*) {}
void CZRPremiumTimeActivationStateWidget::OnMainButtonClicked(bool) {}
CZRPremiumMenuEntryAction::CZRPremiumMenuEntryAction(ZMenu* menu) {
    Calls().emplace_back(menu ? "Premium entry of a menu" : "Premium entry");
}
CZRPremiumMenuEntryAction::~CZRPremiumMenuEntryAction() = default;
void CZRPremiumMenuEntryAction::OnEntryClicked() {}
CZRVipMenuEntryAction::CZRVipMenuEntryAction(ZMenu*) {}
CZRVipMenuEntryAction::~CZRVipMenuEntryAction() = default;
bool CZRVipMenuEntryAction::paint(QPainter*, const QStyleOptionMenuItem&, const ZMenu*) const {
    return false;
}
void CZRVipMenuEntryAction::OnEntryClicked() {}
CZRVipTitleBarEntryWidget::CZRVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>&) : QWidget(parent) {}
CZRVipTitleBarEntryWidget::~CZRVipTitleBarEntryWidget() = default;

CZRAIChatManager::CZRAIChatManager() {
    Calls().emplace_back("AIChat made");
}
CZRAIChatManager::~CZRAIChatManager() = default;
CZRAIChatManager* CZRAIChatManager::Singleton() {
    static CZRAIChatManager manager;
    return &manager;
}
void CZRAIChatManager::UnInit() {
    Calls().emplace_back("AIChat.UnInit");
}
void CZRAIChatManager::OnLogin() {
    Calls().emplace_back("AIChat.OnLogin");
}
void CZRAIChatManager::OnLogout() {
    Calls().emplace_back("AIChat.OnLogout");
}
void CZRAIChatManager::OnRequestAIChatEnableStatusCallback(qulonglong, CSProtoError, CSProtoData,
                                                           const CSResponseExt*) {}
bool CZRAIChatManager::IsAIChatEnable(ZRAIChatEntryScene) {
    return false;
}
void CZRAIChatManager::SetAIChatDevelopEnableType(unsigned int) {}
void CZRAIChatManager::OpenAIChatPage(ZRAIChatPageScene scene, const QMap<QString, QString>& params, bool change,
                                      bool show, bool preload, const QString& url) {
    std::string pairs;
    for (auto pair = params.begin(); pair != params.end(); ++pair) {
        pairs += pair.key().toStdString() + '=' + pair.value().toStdString();
    }
    Calls().push_back(
        fmt::format("AIChat.Open {} {} {} {} {} '{}'", int(scene), pairs, change, show, preload, url.toStdString()));
}
bool CZRAIChatManager::InvokeWebJSAPI(const QString& name, const Json::Value& params) {
    Calls().push_back(fmt::format("AIChat.Invoke {} {}", name.toStdString(), params.asString()));
    return true;
}
void CZRAIChatManager::RespondToNativeJSAPI(const QString& name, const Json::Value& value) {
    Calls().push_back(fmt::format("AIChat.Respond {} {}", name.toStdString(), value.asString()));
}
bool CZRAIChatManager::RegisterNativeJSAPI(const QString& name, const JSAPIHandler& handler) {
    Calls().push_back(fmt::format("AIChat.Register {} {}", name.toStdString(), handler(Json::Value(), 0)->asString()));
    return true;
}
void CZRAIChatManager::UnregisterNativeJSAPI(const QString& name) {
    Calls().push_back("AIChat.Unregister " + name.toStdString());
}
void CZRAIChatManager::OnLanguageChanged(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
void CZRAIChatManager::OnThemeChanged(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
void CZRAIChatManager::OnCommonConfigChanged(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>) {}
bool CZRAIChatManager::OnHandleScheme(QObject*, const core::scheme::SchemeInfo&, QVariant) {
    return false;
}
void CZRAIChatManager::OnWebDialogHiddenButNotClosed() {}
void CZRAIChatManager::OnLoadEnd() {}
