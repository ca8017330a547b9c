#include <gmock/gmock.h>

#include <QThread>
#include <thread>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class GrowthSingletonTest : public ScriptedHostTest {};

template <class Manager>
void ExpectOneOfTheMainThread() {
    Manager* made = nullptr;
    std::thread([&made] { made = Manager::Singleton(); }).join();

    ASSERT_TRUE(made);
    EXPECT_EQ(Manager::Singleton(), made);
    EXPECT_EQ(made->thread(), QThread::currentThread());
    EXPECT_FALSE(made->parent());
}

TEST_F(GrowthSingletonTest, APremiumManagerMadeByAnotherThreadBelongsToTheMainThread) {
    ExpectOneOfTheMainThread<CZRPremiumManager>();
}

TEST_F(GrowthSingletonTest, AnAdManagerMadeByAnotherThreadBelongsToTheMainThread) {
    ExpectOneOfTheMainThread<CZRAdManager>();
}

TEST_F(GrowthSingletonTest, AVipManagerMadeByAnotherThreadBelongsToTheMainThread) {
    ExpectOneOfTheMainThread<CZRVipManager>();
}

TEST_F(GrowthSingletonTest, AnAIChatManagerMadeByAnotherThreadBelongsToTheMainThread) {
    ExpectOneOfTheMainThread<CZRAIChatManager>();
}

}  // namespace
