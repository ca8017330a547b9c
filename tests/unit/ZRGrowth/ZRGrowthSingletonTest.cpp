#include <gmock/gmock.h>

#include <QThread>
#include <thread>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "core/IChannel.h"
#include "core/ILocalStore.h"
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

/// Notes the threads on which pushes are bound and the store is read.
class CNotingHost : public IChannel, public ILocalStore {
public:
    unsigned long SendCommand(const CSProtoData& data, CSCallback, QObject*) override {
        sent.push_back(data.m_nCmd);
        return sent.size();
    }
    void BindCallback(unsigned short, CSCallback, QObject*) override { threads.push_back(QThread::currentThread()); }
    void UnbindCallback(QObject*) override {}
    bool ReadString(Owner, const std::string&, std::string&) override {
        threads.push_back(QThread::currentThread());
        return false;
    }
    bool SaveString(Owner, const std::string&, const std::string&) override { return false; }
    bool ReadInt64(const std::string&, int64_t&) override { return false; }
    bool SaveInt64(const std::string&, int64_t) override { return false; }

    std::vector<QThread*> threads;
    std::vector<uint32_t> sent;
};

class GrowthStartTest : public GrowthSingletonTest {
protected:
    GrowthStartTest() {
        host::Ports ports = ScriptedPorts();
        ports.channel = &noting;
        ports.store = &noting;
        host::Install(ports);
    }
    ~GrowthStartTest() override { host::Install(ScriptedPorts()); }

    CNotingHost noting;
};

TEST_F(GrowthStartTest, VipHandlerIsAChildOfTheMainThreadWhenAnotherThreadUsesItFirst) {
    std::thread([] { EXPECT_EQ(CZRVipManager::Singleton()->GetVipGrade(), 0); }).join();
    EXPECT_THAT(noting.threads, IsEmpty());

    time.Settle();

    const auto handlers = CZRVipManager::Singleton()->findChildren<CZRVipDataHandler*>();
    ASSERT_EQ(handlers.size(), 1);
    EXPECT_EQ(handlers[0]->thread(), QThread::currentThread());
    EXPECT_THAT(noting.threads, ElementsAre(QThread::currentThread()));
}

TEST_F(GrowthStartTest, AIChatReadsTheStoreOnTheMainThreadWhenAnotherThreadUsesItFirst) {
    std::thread([] { EXPECT_FALSE(CZRAIChatManager::Singleton()->IsAIChatEnable(ZRAIChatEntryScene(1))); }).join();
    EXPECT_THAT(noting.threads, IsEmpty());

    time.Settle();

    EXPECT_THAT(noting.threads, ElementsAre(QThread::currentThread()));
}

TEST_F(GrowthStartTest, ManagerStartsOnceWhenTheMainThreadUsesItBeforeThePostedStart) {
    std::thread([] { CZRVipManager::Singleton(); }).join();

    CZRVipManager::Singleton()->OnLogin();
    time.Settle();

    EXPECT_THAT(noting.sent, ElementsAre(20831));
    EXPECT_EQ(CZRVipManager::Singleton()->children().size(), 2);  // one model, one popup
    EXPECT_THAT(noting.threads, ElementsAre(QThread::currentThread()));
}

TEST_F(GrowthStartTest, ManagerStartsWithinTheFirstUseOnTheMainThread) {
    CZRVipManager::Singleton();
    EXPECT_THAT(noting.threads, SizeIs(1));

    CZRAIChatManager::Singleton();
    EXPECT_THAT(noting.threads, SizeIs(2));
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

}  // namespace
