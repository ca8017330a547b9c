#pragma once

#include <string>
#include <vector>

#include "ISessionControl.h"

/// A session that records what it is asked for, and changes nothing. The test sets its state.
class CFakeSession : public ISessionControl {
public:
    quint64 UserId() const override { return user; }
    int LanguageId() const override { return language; }
    const std::vector<ServerUser>& Users() const override { return users; }
    const QStringList& ModuleFailures() const override { return failures; }
    void Login(quint64 userId) override { wanted.push_back("user " + std::to_string(userId)); }
    void Logout() override { wanted.emplace_back("logout"); }
    void SetLanguage(int languageId) override { wanted.push_back("language " + std::to_string(languageId)); }
    void SetTheme(int number) override { wanted.push_back("theme " + std::to_string(number)); }
    void SetVelora(bool velora) override { wanted.emplace_back(velora ? "Velora" : "Kestrel"); }
    void OverrideMarkets(std::vector<int> markets) override {
        wanted.emplace_back("markets");
        for (const int market : markets) {
            wanted.back() += ' ' + std::to_string(market);
        }
    }
    void EmitStatus() override {}

    quint64 user = 0;
    int language = 2;
    std::vector<ServerUser> users{{501, QStringLiteral("Ada")}, {502, QStringLiteral("Ben")}};
    QStringList failures;
    std::vector<std::string> wanted;
};
