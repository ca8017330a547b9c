#include "plugin/IZRPluginCenter.h"

#include <stdexcept>

#include "framework/log.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"
#include "plugin/PluginLoader.h"
#include "support/PlaceOf.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class CService : public IZRPluginInterface {};

std::vector<std::string>& Calls() {
    static auto* calls = new std::vector<std::string>;
    return *calls;
}

class CFactory : public IZRPluginInterfaceFactory {
public:
    explicit CFactory(std::string name) : m_strName(std::move(name)) {}
    ~CFactory() override { Calls().push_back(m_strName + " gone"); }

    std::string GetInterfaceName() override { return m_strName; }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override { return service; }

    const std::shared_ptr<IZRPluginInterface> service = std::make_shared<CService>();

private:
    const std::string m_strName;
};

/// Records its callbacks under its name, in a shared list.
class CModule : public IZRPluginModule {
public:
    CModule(std::string name, std::vector<std::string>& calls) : m_strName(std::move(name)), m_calls(calls) {}
    ~CModule() override { m_calls.push_back(m_strName + " gone"); }

    std::string GetSymbolName() override { return m_strName; }
    void OnInit() override { Note("OnInit"); }
    void OnUnInit() override { Note("OnUnInit"); }
    void OnLogin() override { Note("OnLogin"); }
    void OnLogout() override { Note("OnLogout"); }
    void OnEvent(EnZRPluginEvent event, std::shared_ptr<ZRPluginEventParam>) override {
        Note("OnEvent " + std::to_string(event));
    }

    bool throws = false;

private:
    void Note(const std::string& call) {
        m_calls.push_back(m_strName + " " + call);
        if (throws) {
            throw std::runtime_error("no");
        }
    }

    const std::string m_strName;
    std::vector<std::string>& m_calls;
};

// Constructed by a static initialiser of this program, before main and before any service.
const auto kEarlyFactory = std::make_shared<CFactory>("9EarlyName");
const bool kEarlyRegistered = [] {
    IZRPluginCenter::RegisterInterfaceFactory(kEarlyFactory, false);
    // there is no log yet, so nothing happens
    FrameWork::_WriteLogRaw("", 0, "", kZRLogError, "", QStringLiteral("early"), -128);
    return true;
}();

class PluginCenterTest : public ScriptedHostTest {};

TEST_F(PluginCenterTest, AFactoryRegisteredBeforeMainIsFound) {
    EXPECT_TRUE(kEarlyRegistered);
    EXPECT_EQ(IZRPluginCenter::_CreateInterface("9EarlyName"), kEarlyFactory->service);
}

TEST_F(PluginCenterTest, AnUnknownNameGivesNothing) {
    EXPECT_FALSE(IZRPluginCenter::_CreateInterface("16ITradeModuleUtil"));
}

TEST_F(PluginCenterTest, ASecondFactoryOfANameCountsOnlyIfItReplaces) {
    const auto second = std::make_shared<CFactory>("9EarlyName");

    IZRPluginCenter::RegisterInterfaceFactory(second, false);
    EXPECT_EQ(IZRPluginCenter::_CreateInterface("9EarlyName"), kEarlyFactory->service);

    IZRPluginCenter::RegisterInterfaceFactory(second, true);
    EXPECT_EQ(IZRPluginCenter::_CreateInterface("9EarlyName"), second->service);
}

TEST_F(PluginCenterTest, NoFactoryIsNotRegistered) {
    IZRPluginCenter::RegisterInterfaceFactory(nullptr, true);
    EXPECT_FALSE(IZRPluginCenter::_CreateInterface(""));
}

TEST_F(PluginCenterTest, AModuleIsRegisteredOnceAndNoneIsRefused) {
    const auto module = std::make_shared<CModule>("a", Calls());

    EXPECT_NE(IZRPluginCenter::RegisterModule(module), 0);
    EXPECT_EQ(IZRPluginCenter::RegisterModule(module), 0);
    EXPECT_EQ(IZRPluginCenter::RegisterModule(nullptr), 0);
}

TEST_F(PluginCenterTest, CallbacksReachTheModulesInOrderOfRegistration) {
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("a", Calls()));
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("b", Calls()));

    host::CModuleLifecycle::Init();
    host::CModuleLifecycle::Login();
    host::CModuleLifecycle::Event(kZRPluginEventBeforeQuit, nullptr);
    host::CModuleLifecycle::Logout();
    host::CModuleLifecycle::UnInit();

    EXPECT_THAT(Calls(), ElementsAre("a OnInit", "b OnInit", "a OnLogin", "b OnLogin", "a OnEvent 1", "b OnEvent 1",
                                     "a OnLogout", "b OnLogout", "a OnUnInit", "b OnUnInit"));
}

TEST_F(PluginCenterTest, AModuleThatThrowsIsLoggedAndTheOthersGoOn) {
    const auto first = std::make_shared<CModule>("a", Calls());
    first->throws = true;
    IZRPluginCenter::RegisterModule(first);
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("b", Calls()));

    host::CModuleLifecycle::Login();

    EXPECT_THAT(Calls(), ElementsAre("a OnLogin", "b OnLogin"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("OnLogin of a module threw: no")));
}

TEST_F(PluginCenterTest, TheEndDropsTheFactoriesBeforeTheModulesTheYoungestFirst) {
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("module", Calls()));
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFactory>("first"), false);
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFactory>("second"), false);

    host::CModuleLifecycle::Close();

    EXPECT_THAT(Calls(), ElementsAre("second gone", "first gone", "module gone"));
}

TEST_F(PluginCenterTest, TheEndDropsTheYoungestModuleFirstAndTakesNothingNew) {
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("a", Calls()));
    IZRPluginCenter::RegisterModule(std::make_shared<CModule>("b", Calls()));

    host::CModuleLifecycle::Close();

    EXPECT_THAT(Calls(), ElementsAre("b gone", "a gone"));
    EXPECT_FALSE(IZRPluginCenter::_CreateInterface("9EarlyName"));
    IZRPluginCenter::RegisterInterfaceFactory(kEarlyFactory, true);
    EXPECT_FALSE(IZRPluginCenter::_CreateInterface("9EarlyName"));
    EXPECT_EQ(IZRPluginCenter::RegisterModule(std::make_shared<CModule>("c", Calls())), 0);
}

class CReentrantFactory : public CFactory {
public:
    CReentrantFactory() : CFactory("outer") {}

    std::shared_ptr<IZRPluginInterface> CreateInterface() override {
        IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFactory>("inner"), false);
        return IZRPluginCenter::_CreateInterface("inner");
    }
};

TEST_F(PluginCenterTest, AFactoryMayAskTheCenterWhileItMakesItsService) {
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CReentrantFactory>(), false);

    EXPECT_TRUE(IZRPluginCenter::_CreateInterface("outer"));
}

class CThrowingFactory : public CFactory {
public:
    CThrowingFactory() : CFactory("throwing") {}

    std::shared_ptr<IZRPluginInterface> CreateInterface() override { throw std::runtime_error("no service"); }
};

TEST_F(PluginCenterTest, AFactoryThatThrowsGivesNothingAndIsLogged) {
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CThrowingFactory>(), false);

    EXPECT_FALSE(IZRPluginCenter::_CreateInterface("throwing"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("The factory of a service threw: no service")));
}

// A module that was built earlier finds each operation at its place; two places are the destructor's.

TEST(PluginInterfaceShapeTest, OperationsOfAModuleKeepTheirPlaces) {
    EXPECT_EQ(PlaceOf(&IZRPluginModule::GetSymbolName), 2);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::CreateInterface), 3);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::OnInit), 4);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::OnUnInit), 5);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::OnLogin), 6);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::OnLogout), 7);
    EXPECT_EQ(PlaceOf(&IZRPluginModule::OnEvent), 8);
}

TEST(PluginInterfaceShapeTest, OperationOfAServiceKeepsItsPlace) {
    EXPECT_EQ(PlaceOf(&IZRPluginInterface::SupportMultiThread), 2);
}

TEST(PluginInterfaceShapeTest, OperationsOfAFactoryKeepTheirPlaces) {
    EXPECT_EQ(PlaceOf(&IZRPluginInterfaceFactory::GetInterfaceName), 2);
    EXPECT_EQ(PlaceOf(&IZRPluginInterfaceFactory::CreateInterface), 3);
}

}  // namespace
