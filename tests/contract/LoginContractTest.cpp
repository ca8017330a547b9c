#include <gmock/gmock.h>

#include "HostSet.h"
#include "core/attr_market.h"
#include "core/login_status_data.h"
#include "core/message_ids.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

using namespace ::testing;
using core::attr_market::GetCurrentUserAttrMarket;
using core::login_status_data::GetSessionId;
using core::login_status_data::Login_GetUserID;

namespace {

std::string LoginState() {
    return "user " + std::to_string(Login_GetUserID()) + (GetSessionId() == 0 ? " without session" : " with session");
}

/// Records the login state at each callback. The plug-in centre keeps it until the process ends.
class CLoginModule : public IZRPluginModule {
public:
    std::vector<std::string>* recorded = nullptr;

    std::string GetSymbolName() override { return "Test.Login"; }
    void OnInit() override {}
    void OnUnInit() override {}
    void OnLogin() override { Add("OnLogin"); }
    void OnLogout() override { Add("OnLogout"); }

private:
    void Add(const std::string& callback) {
        if (recorded) {
            recorded->push_back(callback + ": " + LoginState());
        }
    }
};

class LoginContractTest : public HostContractTest {
protected:
    LoginContractTest() {
        m_pModule->recorded = &recorded;
        IZRPluginCenter::RegisterModule(m_pModule);
        RecordMessage(core::kMsgLoginChannelConnected, LoginState);
    }
    ~LoginContractTest() override { m_pModule->recorded = nullptr; }

private:
    const std::shared_ptr<CLoginModule> m_pModule = std::make_shared<CLoginModule>();
};

}  // namespace

TEST_F(LoginContractTest, IdsAreZeroWhenNobodyIsLoggedIn) {
    EXPECT_EQ(Login_GetUserID(), 0U);
    EXPECT_EQ(GetSessionId(), 0U);
}

TEST_F(LoginContractTest, IdsChangeBeforeOnLoginAndMessageFollows) {
    m_set->SetUser(7);

    EXPECT_THAT(recorded, ElementsAre("OnLogin: user 7 with session", "10650: user 7 with session"));
}

TEST_F(LoginContractTest, IdsAreZeroBeforeOnLogout) {
    m_set->SetUser(7);
    recorded.clear();

    m_set->SetUser(0);

    EXPECT_THAT(recorded, ElementsAre("OnLogout: user 0 without session"));
}

TEST_F(LoginContractTest, FirstUserIsLoggedOutWhenASecondLogsIn) {
    m_set->SetUser(7);
    recorded.clear();

    m_set->SetUser(8);

    EXPECT_THAT(recorded, ElementsAre("OnLogout: user 0 without session", "OnLogin: user 8 with session",
                                      "10650: user 8 with session"));
}

TEST_F(LoginContractTest, ReconnectSendsTheMessageAgainWithoutOnLogin) {
    m_set->SetUser(7);
    m_set->DropConnection();
    recorded.clear();

    m_set->Connect();

    EXPECT_THAT(recorded, ElementsAre("10650: user 7 with session"));
}

TEST_F(LoginContractTest, MarketsAreThoseOfTheUserTheLeadingOneFirst) {
    m_set->SetUser(7, {3, 1, 2});
    EXPECT_THAT(GetCurrentUserAttrMarket(), ElementsAre(3, 1, 2));

    m_set->SetUser(8, {});
    EXPECT_THAT(GetCurrentUserAttrMarket(), IsEmpty());
}

TEST_F(LoginContractTest, MarketsAreEmptyAfterALogout) {
    m_set->SetUser(7, {3});

    m_set->SetUser(0);

    EXPECT_THAT(GetCurrentUserAttrMarket(), IsEmpty());
}
