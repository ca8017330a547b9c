#include "ZRGrowthModuleUtil.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "Premium/View/ZRPremiumMenuEntryAction.h"
#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipMenuEntryAction.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "Vip/View/ZRVipTitleBarEntryWidget.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/TplZRPluginInterfaceFactoryUnique.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZButton.h"
#include "ui/ZMenu.h"
#include "ui/ZSvgWidget.h"
#include "ui/ZText.h"
#include "vip_base_service.pb.h"

using namespace ::testing;

namespace {

constexpr const char* kInterfaceName = "24IZRGrowthModuleInterface";

class GrowthModuleUtilTest : public ScriptedHostTest {};

TEST_F(GrowthModuleUtilTest, TheFactoryIsRegisteredBeforeAnybodyAsks) {
    const auto service = IZRPluginCenter::_CreateInterface(kInterfaceName);

    ASSERT_TRUE(service);
    EXPECT_TRUE(dynamic_cast<CZRGrowthModuleUtil*>(service.get()));
    EXPECT_EQ(IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>(), service);
}

TEST_F(GrowthModuleUtilTest, TheInterfaceNameIsTheCompilersTypeName) {
    TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface> factory;

    EXPECT_EQ(factory.GetInterfaceName(), kInterfaceName);
}

TEST_F(GrowthModuleUtilTest, AFactoryGivesEverybodyTheSameService) {
    TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface> factory;

    const auto first = factory.CreateInterface();

    ASSERT_TRUE(first);
    EXPECT_EQ(factory.CreateInterface(), first);
}

class ICountedInterface : public IZRPluginInterface {};

std::atomic<int> g_made{0};

class CCounted : public ICountedInterface {
public:
    CCounted() {
        ++g_made;
        std::this_thread::yield();
    }
};

TEST_F(GrowthModuleUtilTest, AFactoryMakesItsServiceAtTheFirstCallAndOnceForAllThreads) {
    TplZRPluginInterfaceFactoryUnique<CCounted, ICountedInterface> factory;
    EXPECT_EQ(g_made, 0);

    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    std::vector<std::shared_ptr<IZRPluginInterface>> services(8);
    for (auto& service : services) {
        threads.emplace_back([&] {
            while (!go) {
            }
            service = factory.CreateInterface();
        });
    }
    go = true;
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(g_made, 1);
    EXPECT_THAT(services, Each(services[0]));
}

TEST_F(GrowthModuleUtilTest, TheServiceIsForTheMainThreadAlone) {
    EXPECT_FALSE(CZRGrowthModuleUtil().SupportMultiThread());
}

TEST_F(GrowthModuleUtilTest, AIChatOperationsGoToTheManagerWhichComesIntoBeing) {
    CZRGrowthModuleUtil service;

    EXPECT_FALSE(service.IsAIChatEnable(ZRAIChatEntryScene(3)));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(HasSubstr("chat url from")), Info(HasSubstr("preload url from")),
                                         Info("[AIChat] Read cache failed"),
                                         Info("[AIChat] Is AI chat enable, entryScene = 3, enable = false")));

    service.SetAIChatDevelopEnableType(1);
    EXPECT_TRUE(service.IsAIChatEnable(ZRAIChatEntryScene(3)));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
}

/// The service for a user of the older VIP system. Right 101 has every text and a link, right 7 is in full use.
class GrowthModuleUtilVipTest : public ScriptedHostTest {
protected:
    GrowthModuleUtilVipTest() {
        CZRPremiumManager::Singleton()->Init();
        CPremiumUIAccessData record;
        record.strUIType = QStringLiteral("D");
        record.strMainTitle = QStringLiteral("Title");
        record.strMainBtn = QStringLiteral("Button");
        record.nMainBtnUrlID = 301;
        record.strDetailBtn = QStringLiteral("Detail");
        record.nDetailBtnUrlID = 302;
        record.nActivationType = 5;
        service.SetUIAccessData(EnPremiumAccess(101), record);
        CPremiumUIAccessData full;
        full.nActivationType = 3;
        full.nActivationSource = 2;
        service.SetUIAccessData(EnPremiumAccess(7), full);
        links.Set(301, "https://links.test/main");
        links.Set(302, "https://links.test/detail");
        vip_base_service::GetAppEntryMessageRsp answer;
        answer.mutable_data()->set_has_vip_qualification(true);
        auto* basic = answer.mutable_data()->mutable_vip_basic_data();
        basic->set_vip_level(2);
        basic->set_vip_state(5);
        basic->set_new_vip_state(2);
        CZRVipManager::Singleton()->RequestVipStatus();
        channel.Reply(channel.LastSession(), 20831, answer);
        log.Forget();
        bus.Forget();
    }

    QWidget window;
    CZRGrowthModuleUtil service;
};

TEST_F(GrowthModuleUtilVipTest, StatusIsThatOfTheManager) {
    EXPECT_TRUE(service.HasVipQualification());
    EXPECT_EQ(service.GetVipGrade(), 2);
    EXPECT_EQ(service.GetVipState(), 5);
    EXPECT_EQ(service.GetNewVipState(), 2);
    EXPECT_EQ(service.GetVipEngineStatus(), 3);
    EXPECT_FALSE(service.IsNewVipSystem());
}

TEST_F(GrowthModuleUtilVipTest, RulesAreAskedWithTheirOwnArguments) {
    EXPECT_TRUE(service.IsVipIconEnabled(EnPremiumAccess(7)));
    EXPECT_FALSE(service.IsVipIconEnabled(EnPremiumAccess(101)));
    EXPECT_TRUE(service.IsVipTagEnabled(EnPremiumAccess(7)));
    EXPECT_FALSE(service.IsVipTagEnabled(EnPremiumAccess(101)));
    EXPECT_TRUE(service.IsVipBannerEnabled(EnPremiumAccess(101), ZRVipUIDataMain));
    EXPECT_FALSE(service.IsVipBannerEnabled(EnPremiumAccess(101), ZRVipUIDataDetail));
    EXPECT_FALSE(service.IsVipBannerEnabled(EnPremiumAccess(7), ZRVipUIDataMain));
    EXPECT_TRUE(service.IsVipMaskEnabled(ZRVipMaskLocked, EnPremiumAccess(101), ZRVipUIDataMain));
    EXPECT_FALSE(service.IsVipMaskEnabled(ZRVipMaskLocked, EnPremiumAccess(101), ZRVipUIDataDetail));
    EXPECT_TRUE(service.IsVipMaskEnabled(ZRVipMaskExclusive, EnPremiumAccess(101), ZRVipUIDataDetail));
    EXPECT_FALSE(service.IsVipMaskEnabled(ZRVipMaskExclusive, EnPremiumAccess(7), ZRVipUIDataDetail));
}

TEST_F(GrowthModuleUtilVipTest, ImageNamesAndSizesAreThoseOfTheManager) {
    EXPECT_EQ(service.GetVipIconImageName(), QStringLiteral("icon_vip_16_normal"));
    EXPECT_EQ(service.GetVipIconImageSize(), QSize(16, 16));
    EXPECT_EQ(service.GetVipTagImageName(ZRVipTagGrade), QStringLiteral("img_viptab2_26x16_normal"));
    EXPECT_EQ(service.GetVipTagImageName(ZRVipTagName), QStringLiteral("img_viptaben_76x16_normal"));
    EXPECT_EQ(service.GetVipTagImageSize(ZRVipTagGrade), QSize(26, 16));
    EXPECT_EQ(service.GetVipTagImageSize(ZRVipTagName), QSize(76, 16));
}

TEST_F(GrowthModuleUtilVipTest, WidgetsBelongToTheirParentAndShowTheGivenRight) {
    IGrowthVipBaseWidget* widgets[] = {
        service.GetVipIcon(EnPremiumAccess(7), &window),
        service.GetVipTag(EnPremiumAccess(7), ZRVipTagGrade, QString(), &window),
        service.GetVipBanner(EnPremiumAccess(101), ZRVipUIDataDetail, QString(), &window),
        service.GetVipMask(ZRVipMaskLockedCompact, EnPremiumAccess(101), ZRVipUIDataMain, QString(), &window, {}, 1, 2,
                           false),
        service.GetVipMask(ZRVipMaskExclusive, EnPremiumAccess(101), ZRVipUIDataDetail, QString(), &window, {}, 1, 2,
                           false)};

    for (const IGrowthVipBaseWidget* widget : widgets) {
        EXPECT_EQ(widget->parentWidget(), &window);
    }
    EXPECT_TRUE(qobject_cast<CZRVipIconWidget*>(widgets[0]));
    EXPECT_TRUE(qobject_cast<CZRVipTagWidget*>(widgets[1]));
    EXPECT_EQ(widgets[1]->size(), QSize(26, 16));
    EXPECT_TRUE(qobject_cast<CZRVipBannerWidget*>(widgets[2]));
    EXPECT_EQ(widgets[3]->minimumHeight(), 64);
    EXPECT_TRUE(qobject_cast<CZRVipExclusiveMaskWidget*>(widgets[4]));
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info(HasSubstr("Refresh Banner UI, Access = 101, Data Type = 2")),
                    Info(HasSubstr("Refresh Vip Locked Mask UI, Access = 101, Data Type = 1")),
                    Info("[Vip] Refresh Vip Exclusive Mask UI, Access = 101, Data Type = 2, Btn Text = Detail, Btn URL "
                         "ID = 302")));
    EXPECT_EQ(service.GetVipMask(ZRVipMaskType(3), EnPremiumAccess(101), ZRVipUIDataMain, QString(), &window, {}, 1, 2,
                                 false),
              nullptr);
}

TEST_F(GrowthModuleUtilVipTest, EntriesBelongToTheirParent) {
    ZMenu menu(&window);

    EXPECT_TRUE(qobject_cast<CZRVipMenuEntryAction*>(service.GetVipMenuEntryAction(&menu)));
    EXPECT_EQ(menu.findChildren<CZRVipMenuEntryAction*>().size(), 1);
    QWidget* entry = service.GetVipTitleBarEntryWidget(&window, CSafeFunction<void()>());
    EXPECT_TRUE(qobject_cast<CZRVipTitleBarEntryWidget*>(entry));
    EXPECT_EQ(entry->parentWidget(), &window);
}

TEST_F(GrowthModuleUtilVipTest, StripHasItsTextsAndANewOneIsMadeForEachCall) {
    const auto make = [this] {
        return service.GetPremiumTimeActivationStateWidget(QStringLiteral("title"), QStringLiteral("button"),
                                                           QStringLiteral("A"), QStringLiteral("detail"), 31, &window);
    };
    IGrowthPremiumWidget* strip = make();

    EXPECT_TRUE(qobject_cast<CZRPremiumTimeActivationStateWidget*>(strip));
    EXPECT_EQ(strip->parentWidget(), &window);
    std::vector<std::string> texts;
    for (const ZText* text : strip->findChildren<ZText*>()) {
        texts.push_back(text->text().toStdString());
    }
    EXPECT_THAT(texts, IsSupersetOf({"title", "31"}));
    EXPECT_EQ(strip->findChild<ZButton*>()->text().toStdString(), "button");
    EXPECT_TRUE(strip->findChild<ZSvgWidget*>()->isHidden());
    EXPECT_NE(make(), strip);
}

TEST_F(GrowthModuleUtilVipTest, EntryOfTheMemberPageBelongsToItsMenuAndIsNotAdded) {
    ZMenu menu(&window);
    ZAction* entry = service.GetPremiumMenuEntryAction(&menu);

    EXPECT_TRUE(qobject_cast<CZRPremiumMenuEntryAction*>(entry));
    EXPECT_EQ(entry->parent(), &menu);
    EXPECT_THAT(menu.actions(), IsEmpty());
    EXPECT_NE(service.GetPremiumMenuEntryAction(&menu), entry);
}

TEST_F(GrowthModuleUtilVipTest, ClickAndPageGoToTheManager) {
    service.HandleVipWidgetClicked(EnPremiumAccess(101), ZRVipUIDataDetail, &window);
    service.OpenVipWebPage(QStringLiteral("https://vip.test/centre"));

    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://links.test/detail"),
                                           Field(&OpenedUrl::url, "https://vip.test/centre")));
}

}  // namespace
