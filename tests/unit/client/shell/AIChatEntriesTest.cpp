#include "AIChatEntries.h"

#include <QAccessible>
#include <QApplication>
#include <QLayout>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "AIChatEntryButton.h"
#include "FakeGrowthService.h"
#include "Translation.h"
#include "core/lang.h"
#include "modules/ZRGrowthMessages.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class AIChatEntriesTest : public ScriptedHostTest {
protected:
    AIChatEntriesTest() {
        auto* layout = new QVBoxLayout(&window);
        for (const EntryPage& page : kEntryPages) {
            buttons.push_back(new CAIChatEntryButton(page, entries, &window));
            layout->addWidget(buttons.back());
        }
        window.show();
        time.Settle();
    }

    std::vector<int> OpenButtons() const {
        std::vector<int> open;
        for (size_t index = 0; index < buttons.size(); ++index) {
            if (buttons[index]->isEnabled()) {
                open.push_back(int(kEntryPages[index].scene));
            }
        }
        return open;
    }

    void ServerOpens(std::set<int> scenes) {
        service->open = std::move(scenes);
        bus.HostSend(kMsgAIChatEnableChanged);
    }

    void LogIn(uint64_t userId) {
        account.Set(userId, 1);
        entries.Refresh();
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAIChatEntries entries;
    QWidget window;
    std::vector<CAIChatEntryButton*> buttons;
};

}  // namespace

TEST_F(AIChatEntriesTest, EntriesFollowTheModulesMessage) {
    LogIn(10001);
    EXPECT_THAT(OpenButtons(), IsEmpty());

    ServerOpens({2, 5});
    EXPECT_THAT(OpenButtons(), ElementsAre(2, 5));

    ServerOpens({1});
    EXPECT_THAT(OpenButtons(), ElementsAre(1));
}

TEST_F(AIChatEntriesTest, NothingIsAskedBetweenTheMessages) {
    LogIn(10001);
    service->open = {3};

    time.Advance(std::chrono::minutes(10));

    EXPECT_THAT(OpenButtons(), IsEmpty());
}

TEST_F(AIChatEntriesTest, EntriesAreClosedWhileNobodyIsLoggedInThoughTheModuleStillAnswersForTheLast) {
    LogIn(10001);
    ServerOpens({2});

    LogIn(0);

    EXPECT_THAT(OpenButtons(), IsEmpty());
    EXPECT_EQ(buttons[1]->toolTip(), QStringLiteral("Off: log in to use AI chat (scene 2)"));
}

TEST_F(AIChatEntriesTest, AClosedEntrySaysThatTheServerHasNotOpenedIt) {
    LogIn(10001);
    ServerOpens({2});

    EXPECT_EQ(buttons[1]->toolTip(), QStringLiteral("AI chat is open here (scene 2)"));
    EXPECT_EQ(buttons[2]->toolTip(), QStringLiteral("Off: the server has not opened AI chat here to you (scene 3)"));
}

TEST_F(AIChatEntriesTest, WithoutTheModuleAllEntriesAreClosedAndSaySo) {
    LogIn(10001);
    ServerOpens({1, 2, 3, 4, 5});

    service.reset();
    entries.Refresh();

    EXPECT_THAT(OpenButtons(), IsEmpty());
    EXPECT_FALSE(entries.HasModule());
    EXPECT_EQ(buttons[0]->toolTip(), QStringLiteral("Off: the module that serves AI chat is not there (scene 1)"));
}

TEST_F(AIChatEntriesTest, TheServiceIsNotHeldBetweenCalls) {
    LogIn(10001);
    ServerOpens({1});

    EXPECT_EQ(service.use_count(), 1);
}

TEST_F(AIChatEntriesTest, TheOverrideForcesAllEntriesOpenOrClosedAndGivesThemBack) {
    LogIn(10001);
    ServerOpens({4});

    entries.SetOverride(EnEntryOverride::Open);
    EXPECT_EQ(service->overrideType, 1u);
    EXPECT_THAT(OpenButtons(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(entries.State(ZRAIChatEntryScene(4)), EnEntryState::ForcedOpen);

    entries.SetOverride(EnEntryOverride::Closed);
    EXPECT_EQ(service->overrideType, 2u);
    EXPECT_THAT(OpenButtons(), IsEmpty());
    EXPECT_EQ(entries.State(ZRAIChatEntryScene(4)), EnEntryState::ForcedClosed);

    entries.SetOverride(EnEntryOverride::None);
    EXPECT_EQ(service->overrideType, 0u);
    EXPECT_THAT(OpenButtons(), ElementsAre(4));
}

TEST_F(AIChatEntriesTest, WithoutTheModuleNothingIsOverridden) {
    service.reset();

    entries.SetOverride(EnEntryOverride::Open);

    EXPECT_EQ(entries.Override(), EnEntryOverride::None);
    EXPECT_THAT(OpenButtons(), IsEmpty());
}

TEST_F(AIChatEntriesTest, AClickSaysWhichEntryItIsAndWhoOpenedIt) {
    LogIn(10001);
    ServerOpens({3});
    QSignalSpy entered(buttons[2], &CAIChatEntryButton::Entered);

    Click(buttons[2]);
    entries.SetOverride(EnEntryOverride::Open);
    Click(buttons[2]);

    ASSERT_EQ(entered.count(), 2);
    EXPECT_EQ(entered[0][0].toString(),
              QStringLiteral("AI chat, Research (scene 3): opened by the server to this user"));
    EXPECT_EQ(entered[1][0].toString(),
              QStringLiteral("AI chat, Research (scene 3): forced open by the developer override"));
}

TEST_F(AIChatEntriesTest, EntryOpensTheChatForItsPage) {
    LogIn(10001);
    ServerOpens({1, 2, 3, 4, 5});

    for (CAIChatEntryButton* button : buttons) {
        Click(button);
    }

    EXPECT_THAT(service->openedChats, ElementsAre(ZRAIChatPageWatchlist, ZRAIChatPageQuotes, ZRAIChatPageResearch,
                                                  ZRAIChatPageNews, ZRAIChatPagePortfolio));
}

TEST_F(AIChatEntriesTest, EntryOpensByTheKeyboardAndHasANameForScreenReaders) {
    LogIn(10001);
    ServerOpens({1, 4});
    window.activateWindow();
    buttons[0]->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);  // over the closed ones
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);

    EXPECT_THAT(service->openedChats, ElementsAre(ZRAIChatPageNews));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(buttons[3])->text(QAccessible::Name),
              QStringLiteral("AI chat, News"));
}

TEST_F(AIChatEntriesTest, EntryOpensNothingWhenTheModuleIsGoneSinceTheLastMessage) {
    LogIn(10001);
    ServerOpens({1});
    QSignalSpy entered(buttons[0], &CAIChatEntryButton::Entered);
    service.reset();

    Click(buttons[0]);

    EXPECT_EQ(entered.count(), 0);
}

TEST_F(AIChatEntriesTest, AnEntryFollowsTheLanguage) {
    const CTranslation french(core::lang::kLanguageFrench);

    bus.HostSend(20100);

    EXPECT_EQ(buttons[0]->text(), QStringLiteral("Chat IA"));
    EXPECT_EQ(buttons[3]->accessibleName(), QStringLiteral("Chat IA, Actualit\u00E9s"));
    EXPECT_EQ(buttons[0]->toolTip(), QStringLiteral("Désactivé : connectez-vous pour utiliser le chat IA (scène 1)"));
}
