#pragma once

#include "AdClientFixture.h"

/// A client with the server's default scenario, whose users differ in rights and VIP status.
class VipClientTest : public AdClientTest {
protected:
    VipClientTest() { options.scenario.clear(); }

    ~VipClientTest() override { End(); }

    /// Starts the client at the first call. Returns when the server's answers for `user` are there. The server has no
    /// ads.
    void LogIn(quint64 user) {
        if (!client) {
            options.user = user;
            Make();
            // No bottom popup may cover what a case clicks on.
            QObject::connect(client, &CComposition::ServerReady, &watcher, [this] { server->Put("/v1/ads", "[]"); });
            Bind(80051, [this](unsigned int, auto, auto) { ++premiumAnswers; });
            Bind(80052, [this](unsigned int, auto, auto) { ++vipAnswers; });
            Show();
            ASSERT_TRUE(WaitInRealTime([this] { return AreAnswersThere(); }));
        }
        if (client->UserId() != user) {
            premiumAnswers = vipAnswers = 0;
            client->Login(user);
            ASSERT_TRUE(WaitInRealTime([&] { return client->UserId() == user && AreAnswersThere(); }));
        }
    }

    int premiumAnswers = 0;
    int vipAnswers = 0;

private:
    bool AreAnswersThere() const { return premiumAnswers > 0 && vipAnswers > 0; }
};
