// The module class and its service, linked with managers, a plug-in centre and a log that record.
#include "ZRGrowthModule.h"

#include <gmock/gmock.h>

#include <QStringList>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "GrowthBizLogUtil.h"
#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
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

TEST_F(GrowthServiceTest, TheVipStatusComesFromTheVipManager) {
    EXPECT_TRUE(service.HasVipQualification());
    EXPECT_EQ(service.GetVipGrade(), 17);
    EXPECT_EQ(service.GetVipState(), 18);
    EXPECT_TRUE(service.IsNewVipSystem());
    EXPECT_EQ(service.GetVipEngineStatus(), 20);
    EXPECT_EQ(service.GetNewVipState(), 21);

    EXPECT_THAT(Calls(), ElementsAre("Vip made", "Vip.HasVipQualification", "Vip.IsNewVipSystem"));
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
