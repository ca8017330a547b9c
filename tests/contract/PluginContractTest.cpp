#include <gmock/gmock.h>

#include "HostSet.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"
#include "plugin/PluginLoader.h"

using namespace ::testing;

/// In the global namespace, where interfaces are.
class IContractService : public IZRPluginInterface {
public:
    explicit IContractService(int number) : m_nNumber(number) {}
    int Number() const { return m_nNumber; }

private:
    const int m_nNumber;
};

namespace {

/// The calls of modules. Shared with modules and factories, which the plug-in centre keeps until the process ends.
using Calls = std::shared_ptr<std::vector<std::string>>;

class CModule : public IZRPluginModule {
public:
    CModule(std::string name, Calls calls) : m_strName(std::move(name)), m_calls(std::move(calls)) {}

    bool throws = false;

    std::string GetSymbolName() override { return m_strName; }
    void OnInit() override { Add("OnInit"); }
    void OnUnInit() override { Add("OnUnInit"); }
    void OnLogin() override { Add("OnLogin"); }
    void OnLogout() override { Add("OnLogout"); }
    void OnEvent(EnZRPluginEvent event, std::shared_ptr<ZRPluginEventParam> param) override {
        EXPECT_EQ(param, nullptr);
        Add("OnEvent " + std::to_string(event));
    }

private:
    void Add(const std::string& call) {
        m_calls->push_back(m_strName + " " + call);
        if (throws) {
            throw std::runtime_error(call);
        }
    }

    const std::string m_strName;
    const Calls m_calls;
};

class CFactory : public IZRPluginInterfaceFactory {
public:
    explicit CFactory(int number) : m_nNumber(number) {}

    std::string GetInterfaceName() override { return typeid(IContractService).name(); }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override {
        return std::make_shared<IContractService>(m_nNumber);
    }

private:
    const int m_nNumber;
};

class PluginContractTest : public HostContractTest {
protected:
    std::shared_ptr<CModule> Register(const std::string& name) {
        auto module = std::make_shared<CModule>(name, calls);
        EXPECT_NE(IZRPluginCenter::RegisterModule(module), 0);
        return module;
    }

    static void RegisterFactory(int number, bool replace) {
        IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFactory>(number), replace);
    }

    const Calls calls = std::make_shared<std::vector<std::string>>();
};

}  // namespace

TEST_F(PluginContractTest, CenterReturnsNothingForAnUnknownName) {
    EXPECT_EQ(IZRPluginCenter::CreateInterface<IContractService>(), nullptr);

    RegisterFactory(1, false);
    EXPECT_EQ(IZRPluginCenter::_CreateInterface("7Unknown"), nullptr);
}

TEST_F(PluginContractTest, CenterReturnsTheServiceOfTheRegisteredFactory) {
    RegisterFactory(1, false);

    const auto service = IZRPluginCenter::CreateInterface<IContractService>();
    ASSERT_TRUE(service);
    EXPECT_EQ(service->Number(), 1);
    EXPECT_FALSE(service->SupportMultiThread());
}

TEST_F(PluginContractTest, CenterReplacesAFactoryOnlyWhenAsked) {
    RegisterFactory(1, false);
    RegisterFactory(2, false);
    EXPECT_EQ(IZRPluginCenter::CreateInterface<IContractService>()->Number(), 1);

    RegisterFactory(3, true);
    EXPECT_EQ(IZRPluginCenter::CreateInterface<IContractService>()->Number(), 3);
}

TEST_F(PluginContractTest, CenterRefusesNullAndASecondRegistration) {
    const auto module = Register("A");

    EXPECT_EQ(IZRPluginCenter::RegisterModule(nullptr), 0);
    EXPECT_EQ(IZRPluginCenter::RegisterModule(module), 0);
}

TEST_F(PluginContractTest, ModulesReceiveEachCallbackInOrderOfRegistration) {
    Register("A");
    Register("B");

    host::CModuleLifecycle::Init();
    m_set->SetUser(7);
    m_set->SetUser(0);
    host::CModuleLifecycle::Event(kZRPluginEventBeforeQuit, nullptr);
    host::CModuleLifecycle::UnInit();

    EXPECT_THAT(*calls, ElementsAre("A OnInit", "B OnInit", "A OnLogin", "B OnLogin", "A OnLogout", "B OnLogout",
                                    "A OnEvent 1", "B OnEvent 1", "A OnUnInit", "B OnUnInit"));
}

TEST_F(PluginContractTest, ExceptionOfAModuleIsLoggedAndDoesNotStopTheOthers) {
    Register("A")->throws = true;
    Register("B");

    m_set->SetUser(7);

    EXPECT_THAT(*calls, ElementsAre("A OnLogin", "B OnLogin"));
    EXPECT_THAT(m_set->LogLines(), Contains(HasSubstr("OnLogin")));
}

TEST_F(PluginContractTest, CenterReturnsNothingAndRefusesModulesAfterTheEnd) {
    RegisterFactory(1, false);

    host::CModuleLifecycle::Close();

    EXPECT_EQ(IZRPluginCenter::CreateInterface<IContractService>(), nullptr);
    EXPECT_EQ(IZRPluginCenter::RegisterModule(std::make_shared<CModule>("C", calls)), 0);
}
