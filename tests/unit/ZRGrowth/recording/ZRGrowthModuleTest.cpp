// The module class and its service, linked with managers, a plug-in centre and a log that record.
#include "ZRGrowthModule.h"

#include <gmock/gmock.h>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
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
