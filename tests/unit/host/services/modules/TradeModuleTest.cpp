#include "modules/TradeModule.h"

#include <thread>

#include "modules/ITradeModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class TradeModuleTest : public ScriptedHostTest {
protected:
    TradeModuleTest() {
        const auto factory = std::make_shared<CTradeModuleFactory>([answer = answer] { return *answer; });
        EXPECT_EQ(factory->GetInterfaceName(), "16ITradeModuleUtil");
        IZRPluginCenter::RegisterInterfaceFactory(factory, true);
    }

    static std::shared_ptr<ITradeModuleUtil> Ask() { return IZRPluginCenter::CreateInterface<ITradeModuleUtil>(); }

    // Shared, since the plug-in centre keeps the factory after the case.
    const std::shared_ptr<std::optional<bool>> answer = std::make_shared<std::optional<bool>>();
};

}  // namespace

TEST_F(TradeModuleTest, WithoutAnAnswerThereIsNoTradeModule) {
    EXPECT_EQ(Ask(), nullptr);

    *answer = false;
    EXPECT_NE(Ask(), nullptr);
    answer->reset();
    EXPECT_EQ(Ask(), nullptr);
}

TEST_F(TradeModuleTest, TheAnswerIsGivenToItsQuestionAlone) {
    *answer = true;
    ASSERT_NE(Ask(), nullptr);

    EXPECT_TRUE(Ask()->QueryTradeStatus(1007));
    for (const int other : {0, 1, 1006, 1008, -1007}) {
        EXPECT_FALSE(Ask()->QueryTradeStatus(other)) << other;
    }
    *answer = false;
    EXPECT_FALSE(Ask()->QueryTradeStatus(1007));
}

TEST_F(TradeModuleTest, AServiceThatIsHeldAnswersAsOfTheMoment) {
    *answer = true;
    const auto held = Ask();
    ASSERT_NE(held, nullptr);

    answer->reset();

    EXPECT_FALSE(held->QueryTradeStatus(1007));
}

TEST_F(TradeModuleTest, OnAnotherThreadThereIsNoTradeModule) {
    *answer = true;
    ASSERT_NE(Ask(), nullptr);

    std::shared_ptr<ITradeModuleUtil> elsewhere = Ask();
    std::thread([&elsewhere] { elsewhere = Ask(); }).join();

    EXPECT_EQ(elsewhere, nullptr);
}
