#include "core/LoginSession.h"

#include "RealLineTest.h"

using namespace ::testing;

namespace {

class LoginSessionTest : public RealLineTest {
protected:
    LoginSessionTest() {
        QObject::connect(&client, &CWebSocketChannel::HostFrameReceived, &context,
                         [this](const channel::Frame& frame) { session.Receive(frame); });
        QObject::connect(&session, &CLoginSession::LoggedIn, &context, [this](qulonglong user) {
            EXPECT_EQ(session.UserId(), user);
            notes.push_back("in " + std::to_string(user));
        });
        QObject::connect(&session, &CLoginSession::LoggedOut, &context, [this](qulonglong user) {
            EXPECT_EQ(session.UserId(), 0u);
            EXPECT_EQ(session.SessionId(), 0u);
            notes.push_back("out " + std::to_string(user));
        });
        QObject::connect(&session, &CLoginSession::Resumed, &context,
                         [this](qulonglong user) { notes.push_back("resumed " + std::to_string(user)); });
        QObject::connect(&session, &CLoginSession::Refused, &context, [this](qulonglong user, const QString& reason) {
            notes.push_back("refused " + std::to_string(user) + " " + reason.toStdString());
        });
    }

    /// Waits for the n-th login frame, counted from 1, and gives it back.
    channel::Login AwaitLogin(int number) {
        channel::Login login;
        EXPECT_TRUE(WaitUntil([&] {
            int seen = 0;
            for (const auto& arrival : server.Frames()) {
                if (arrival.frame.kind() == channel::Frame::LOGIN && ++seen == number) {
                    login = arrival.frame.login();
                    asked = arrival.frame.session();
                    return true;
                }
            }
            return false;
        }));
        return login;
    }

    /// An answer to the login that was last awaited.
    channel::Frame Accept(uint64_t user, uint64_t sessionId) const {
        channel::Frame frame = FrameOf(channel::Frame::LOGIN_ANSWER);
        frame.set_session(asked);
        frame.mutable_login_answer()->set_accepted(true);
        frame.mutable_login_answer()->set_user_id(user);
        frame.mutable_login_answer()->set_session_id(sessionId);
        frame.mutable_login_answer()->add_attributed_market(3);
        frame.mutable_login_answer()->add_attributed_market(1);
        return frame;
    }

    channel::Frame Refuse(uint64_t user) const {
        channel::Frame frame = FrameOf(channel::Frame::LOGIN_ANSWER);
        frame.set_session(asked);
        frame.mutable_login_answer()->set_user_id(user);
        frame.mutable_login_answer()->set_reason("closed");
        return frame;
    }

    /// Logs `user` in as the login of that number, with that word of the trade module.
    void LogInWithTrade(uint64_t user, int number, std::optional<bool> trade) {
        session.Login(user, "device", 5);
        AwaitLogin(number);
        channel::Frame frame = Accept(user, 900);
        if (trade) {
            frame.mutable_login_answer()->set_trade_answer(*trade);
        }
        server.SendToAll(frame);
        EXPECT_TRUE(WaitUntil([&] { return session.UserId() == user; }));
    }

    bool WaitForNotes(size_t count) {
        return WaitUntil([&] { return notes.size() >= count; });
    }

    void LogIn(uint64_t user, int number) {
        session.Login(user, "device", 5);
        AwaitLogin(number);
        server.SendToAll(Accept(user, 900));
        EXPECT_TRUE(WaitUntil([&] { return session.UserId() == user; }));
    }

    CWebSocketChannel client{poster, random, Quick()};
    CLoginSession session{client};
    uint64_t asked = 0;
};

TEST_F(LoginSessionTest, ALoginNamesUserDeviceAndLanguageAndTakesWhatTheServerGives) {
    Open(client);

    session.Login(18446744073709551615u, "device", 5);
    const channel::Login login = AwaitLogin(1);
    EXPECT_EQ(session.UserId(), 0u);
    server.SendToAll(Accept(18446744073709551615u, 9223372036854775809u));

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_EQ(login.user_id(), 18446744073709551615u);
    EXPECT_EQ(login.device_id(), "device");
    EXPECT_EQ(login.language(), 5);
    EXPECT_EQ(session.SessionId(), 9223372036854775809u);
    EXPECT_THAT(session.AttributedMarkets(), ElementsAre(3, 1));
}

TEST_F(LoginSessionTest, ALoginWithoutAConnectionWaitsForOne) {
    session.Login(7, "device", 2);

    Open(client);

    EXPECT_EQ(AwaitLogin(1).user_id(), 7u);
}

TEST_F(LoginSessionTest, AnotherUserLogsTheFirstOneOutBefore) {
    Open(client);
    LogIn(7, 1);

    LogIn(8, 2);

    EXPECT_THAT(notes, ElementsAre("in 7", "out 7", "in 8"));
    const auto kinds = [this] {
        std::vector<int> all;
        for (const auto& arrival : server.Frames()) {
            all.push_back(arrival.frame.kind());
        }
        return all;
    };
    EXPECT_THAT(kinds(), ElementsAre(channel::Frame::LOGIN, channel::Frame::LOGOUT, channel::Frame::LOGIN));
}

TEST_F(LoginSessionTest, AReconnectLogsTheSameUserInAgainWithoutASecondLogin) {
    Open(client);
    LogIn(7, 1);

    server.Close();
    ASSERT_TRUE(server.Listen());
    AwaitLogin(2);
    EXPECT_EQ(session.UserId(), 7u);
    server.SendToAll(Accept(7, 901));

    ASSERT_TRUE(WaitForNotes(2));
    EXPECT_THAT(notes, ElementsAre("in 7", "resumed 7"));
    EXPECT_EQ(session.SessionId(), 901u);
}

TEST_F(LoginSessionTest, ARefusalLeavesNobodyLoggedInAndIsNotTriedAgain) {
    Open(client);
    session.Login(7, "device", 2);
    AwaitLogin(1);

    server.SendToAll(Refuse(7));

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_THAT(notes, ElementsAre("refused 7 closed"));
    EXPECT_EQ(session.WantedUserId(), 0u);
    EXPECT_TRUE(Logged("The login of user 7 is refused: closed"));
}

TEST_F(LoginSessionTest, ARefusalAtAReconnectLogsTheUserOut) {
    Open(client);
    LogIn(7, 1);
    server.Close();
    ASSERT_TRUE(server.Listen());
    AwaitLogin(2);

    server.SendToAll(Refuse(7));

    ASSERT_TRUE(WaitForNotes(3));
    EXPECT_THAT(notes, ElementsAre("in 7", "out 7", "refused 7 closed"));
}

TEST_F(LoginSessionTest, AnAnswerForAnotherUserIsLoggedAndDropped) {
    Open(client);
    session.Login(7, "device", 2);
    AwaitLogin(1);

    server.SendToAll(Accept(8, 900));

    EXPECT_TRUE(WaitUntil([this] { return Logged("A login answer for user 8 dropped, it is not waited for"); }));
    EXPECT_EQ(session.UserId(), 0u);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(LoginSessionTest, AnAnswerThatComesAfterTheLogoutIsDropped) {
    Open(client);
    session.Login(7, "device", 2);
    AwaitLogin(1);

    session.Logout();
    server.SendToAll(Accept(7, 900));

    EXPECT_TRUE(WaitUntil([this] { return Logged("it is not waited for"); }));
    EXPECT_EQ(session.UserId(), 0u);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(LoginSessionTest, AnswersToLoginsThatWereThoughtBetterOfAreDropped) {
    Open(client);
    session.Login(7, "device", 2);
    AwaitLogin(1);
    const channel::Frame first = Accept(7, 900);
    session.Login(8, "device", 2);
    AwaitLogin(2);
    const channel::Frame second = Refuse(8);
    session.Login(7, "device", 2);
    AwaitLogin(3);

    server.SendToAll(first);
    server.SendToAll(second);
    server.SendToAll(Accept(7, 902));

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_THAT(notes, ElementsAre("in 7"));
    EXPECT_EQ(session.SessionId(), 902u);
}

TEST_F(LoginSessionTest, ALoginThatIsNotAnsweredIsAskedAgainOverANewConnection) {
    CLoginSession impatient(client, std::chrono::milliseconds(30));
    Open(client);

    impatient.Login(7, "device", 2);

    AwaitLogin(1);
    AwaitLogin(2);
    EXPECT_TRUE(Logged("the login is not answered"));
    client.Close();
}

TEST_F(LoginSessionTest, ALanguageThatChangedSinceIsToldAtTheNextReconnect) {
    Open(client);
    LogIn(7, 1);
    session.SetLanguage(0);

    server.Close();
    ASSERT_TRUE(server.Listen());

    EXPECT_EQ(AwaitLogin(2).language(), 0);
}

TEST_F(LoginSessionTest, ALanguageThatChangedIsToldAtOnceAndWithNothingElse) {
    Open(client);
    LogIn(7, 1);

    session.SetLanguage(0);

    ASSERT_TRUE(WaitUntil([this] { return server.Frames().size() == 2; }));
    const channel::Frame& frame = server.Frames()[1].frame;
    EXPECT_EQ(frame.kind(), channel::Frame::LANGUAGE);
    EXPECT_TRUE(frame.login().has_language());
    EXPECT_EQ(frame.login().language(), 0);
    EXPECT_FALSE(frame.login().has_user_id());
}

TEST_F(LoginSessionTest, ALanguageThatChangedAheadOfTheLoginIsToldToo) {
    Open(client);

    session.SetLanguage(7);

    ASSERT_TRUE(WaitUntil([this] { return server.Frames().size() == 1; }));
    EXPECT_EQ(server.Frames()[0].frame.kind(), channel::Frame::LANGUAGE);
    EXPECT_EQ(server.Frames()[0].frame.login().language(), 7);
    EXPECT_EQ(session.WantedUserId(), 0u);
}

TEST_F(LoginSessionTest, TheTradeModulesAnswerIsTheUsersAndGoneAtTheLogout) {
    Open(client);
    EXPECT_EQ(session.TradeAnswer(), std::nullopt);
    LogInWithTrade(7, 1, true);
    EXPECT_EQ(session.TradeAnswer(), std::make_optional(true));

    LogInWithTrade(8, 2, false);
    EXPECT_EQ(session.TradeAnswer(), std::make_optional(false));
    session.Logout();

    EXPECT_EQ(session.TradeAnswer(), std::nullopt);
}

TEST_F(LoginSessionTest, AUserForWhomTheServerSaysNothingOfTheTradeModuleHasNoAnswer) {
    Open(client);
    LogInWithTrade(7, 1, true);
    LogInWithTrade(8, 2, std::nullopt);

    EXPECT_EQ(session.TradeAnswer(), std::nullopt);
}

TEST_F(LoginSessionTest, AReconnectBringsTheTradeModulesAnswerOfTheMoment) {
    Open(client);
    LogInWithTrade(7, 1, true);
    server.Close();
    ASSERT_TRUE(server.Listen());
    AwaitLogin(2);
    EXPECT_EQ(session.TradeAnswer(), std::make_optional(true));

    server.SendToAll(Accept(7, 901));

    ASSERT_TRUE(WaitForNotes(2));
    EXPECT_EQ(session.TradeAnswer(), std::nullopt);
}

}  // namespace
