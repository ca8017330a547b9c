#include "AIChatAppearance.h"

#include "FakeGrowthService.h"
#include "core/lang.h"
#include "core/message_ids.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

Json::Value Look(int theme, int language) {
    Json::Value look;
    look["theme"] = theme;
    look["language"] = language;
    return look;
}

class AIChatAppearanceTest : public ScriptedHostTest {
protected:
    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    std::unique_ptr<CAIChatAppearance> appearance = std::make_unique<CAIChatAppearance>();
};

TEST_F(AIChatAppearanceTest, HandlerAnswersWithThemeAndLanguageOfTheMoment) {
    appearance->Offer();
    ASSERT_EQ(service->chatHandlers.count("getAppearance"), 1u);
    const CFakeGrowthService::ChatHandler handler = service->chatHandlers["getAppearance"];

    for (const auto& [theme, id] : {std::pair(Manager::kThemeBlack, core::lang::kLanguageFrench),
                                    std::pair(Manager::kThemeLight, core::lang::kLanguageSimplifiedChinese)}) {
        host::CThemeControl::Set(theme);
        language.Set(id);
        EXPECT_EQ(*handler({}, 1), Look(theme, id));
    }
}

TEST_F(AIChatAppearanceTest, HandlerOutlivesTheObject) {
    appearance->Offer();
    appearance.reset();

    EXPECT_TRUE(service->chatHandlers["getAppearance"]({}, 1));
}

TEST_F(AIChatAppearanceTest, ThemeAndLanguageAreSentWhenEitherChanges) {
    host::CThemeControl::Set(Manager::kThemeBlack);
    language.Set(core::lang::kLanguageJapanese);
    bus.HostSend(core::kMsgLanguageChanged);

    EXPECT_THAT(service->chatEvents, ElementsAre(Pair("appearanceChanged", Look(3, 2)),
                                                 Pair("appearanceChanged", Look(3, core::lang::kLanguageJapanese))));
}

TEST_F(AIChatAppearanceTest, NothingHappensWithoutTheModule) {
    service.reset();

    appearance->Offer();
    bus.HostSend(core::kMsgLanguageChanged);

    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
