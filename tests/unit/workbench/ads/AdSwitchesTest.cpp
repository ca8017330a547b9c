#include "workbench/ads/AdSwitches.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include "FakeControlClient.h"
#include "core/message_ids.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "workbench/ads/AdTab.h"

using namespace ::testing;

namespace {

const QByteArray kScenario = R"({"ads":[
    {"adType":3,"adPosition":42,"campaigns":[]},
    {"adType":2,"adPosition":42,"showInterval":3600,"showDuration":15,"campaigns":[{"id":"1"}]}]})";

class AdSwitchesTest : public ScriptedHostTest {
protected:
    AdSwitchesTest() {
        tab.resize(560, 760);
        tab.show();
        time.Settle();
        QObject::connect(&tab.Switches(), &CAdSwitches::TabWanted, &tab, [this](int index) { tabs.push_back(index); });
        QObject::connect(&tab.Switches(), &CAdSwitches::FocusWanted, &tab,
                         [this](EnFocusAnswer answer) { focus.push_back(answer); });
        QObject::connect(&tab.Switches(), &CAdSwitches::SlotRefusalWanted, &tab,
                         [this](bool refused) { refusals.push_back(refused); });
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return tab.findChild<Widget*>(QString::fromLatin1(name));
    }

    void Choose(const char* combo, int index) { Child<QComboBox>(combo)->setCurrentIndex(index); }
    void Press(const char* button) { Click(Child<QPushButton>(button)); }
    std::string ParsedLine() { return Child<QLabel>("AdSwitchesMessage")->text().toStdString(); }
    bool IsGood() { return Child<QLabel>("AdSwitchesMessage")->property("good").toBool(); }

    /// The tab's list of overrides; empty if it is hidden.
    std::string Overridden() {
        const auto* label = Child<QLabel>("AdOverridden");
        return label->isVisible() ? label->text().toStdString() : std::string();
    }

    void AskInterval(const char* seconds) {
        Child<QLineEdit>("AdInterval")->setText(QString::fromLatin1(seconds));
        Press("AdIntervalSet");
    }

    void SetInterval(const char* seconds) {
        AskInterval(seconds);
        server.Answer(kScenario);
        server.Answer("{}");
    }

    CFakeControlClient server;
    CAdTab tab{server};
    std::vector<int> tabs;
    std::vector<EnFocusAnswer> focus;
    std::vector<bool> refusals;
};

}  // namespace

TEST_F(AdSwitchesTest, NothingIsOverriddenAtFirst) {
    EXPECT_EQ(Overridden(), "");
    EXPECT_EQ(Child<QComboBox>("AdFocus")->currentText(), QStringLiteral("as it is"));
    EXPECT_EQ(Child<QComboBox>("AdSlotPermission")->currentText(), QStringLiteral("as it is"));
    EXPECT_EQ(Child<QLineEdit>("AdInterval")->text(), QString());
}

TEST_F(AdSwitchesTest, ATabIsWantedByItsPlaceAndShownWithoutBeingWanted) {
    EXPECT_EQ(Child<QComboBox>("AdTab")->count(), 8);
    tab.Switches().ShowTab(6);
    EXPECT_EQ(Child<QComboBox>("AdTab")->currentText(), QStringLiteral("Portfolio"));
    EXPECT_THAT(tabs, IsEmpty());

    Choose("AdTab", 1);

    EXPECT_THAT(tabs, ElementsAre(1));
    EXPECT_EQ(Overridden(), "");
}

TEST_F(AdSwitchesTest, TheFocusIsOverriddenUntilItIsAsItIs) {
    Choose("AdFocus", 1);
    EXPECT_EQ(Overridden(), "Overridden: focus always");
    Choose("AdFocus", 2);
    EXPECT_EQ(Overridden(), "Overridden: focus never");
    Choose("AdFocus", 0);
    EXPECT_EQ(Overridden(), "");

    EXPECT_THAT(focus, ElementsAre(EnFocusAnswer::Always, EnFocusAnswer::Never, EnFocusAnswer::AsItIs));
}

TEST_F(AdSwitchesTest, TheSlotIsRefusedUntilItIsAsItIs) {
    Choose("AdSlotPermission", 1);
    EXPECT_EQ(Overridden(), "Overridden: slot 2 refused");
    Choose("AdSlotPermission", 0);
    EXPECT_EQ(Overridden(), "");

    EXPECT_THAT(refusals, ElementsAre(true, false));
}

TEST_F(AdSwitchesTest, TheIntervalIsPutIntoThePopupsSlotAndTheRestOfTheScenarioStays) {
    AskInterval("5");
    ASSERT_THAT(server.wishes, SizeIs(1));
    EXPECT_EQ(server.wishes[0].verb + " " + server.wishes[0].path, "GET /v1/scenario");
    EXPECT_FALSE(Child<QPushButton>("AdIntervalSet")->isEnabled());
    EXPECT_EQ(Overridden(), "");
    server.Answer(kScenario);

    ASSERT_THAT(server.wishes, SizeIs(2));
    EXPECT_EQ(server.wishes[1].verb + " " + server.wishes[1].path, "PUT /v1/ads");
    EXPECT_EQ(server.wishes[1].json,
              R"([{"adPosition":42,"adType":3,"campaigns":[]},)"
              R"({"adPosition":42,"adType":2,"campaigns":[{"id":"1"}],"showDuration":15,"showInterval":5}])");
    server.Answer("{}");
    EXPECT_EQ(Overridden(), "Overridden: interval 5 s instead of 3600 s");
    EXPECT_TRUE(Child<QPushButton>("AdIntervalSet")->isEnabled());
    EXPECT_EQ(ParsedLine(), "In force for ads that are asked for from now on");
}

TEST_F(AdSwitchesTest, AnEmptyIntervalGivesTheServerItsOwnBack) {
    SetInterval("5");
    AskInterval("0");
    server.Answer(QByteArray(kScenario).replace("3600", "5"));
    server.Answer("{}");
    EXPECT_EQ(Overridden(), "Overridden: interval 0 s instead of 3600 s");

    AskInterval("");
    server.Answer(QByteArray(kScenario).replace("3600", "0"));
    EXPECT_THAT(server.wishes.back().json, HasSubstr(R"("showInterval":3600)"));
    server.Answer("{}");

    EXPECT_EQ(Overridden(), "");
}

TEST_F(AdSwitchesTest, AnEmptyIntervalThatOverridesNothingAsksNobody) {
    AskInterval("");

    EXPECT_THAT(server.wishes, IsEmpty());
    EXPECT_TRUE(Child<QPushButton>("AdIntervalSet")->isEnabled());
}

TEST_F(AdSwitchesTest, AnIntervalThatIsNotSetOverridesNothingAndSaysWhy) {
    AskInterval("1h");
    EXPECT_THAT(server.wishes, IsEmpty());
    EXPECT_EQ(ParsedLine(), "No whole number of seconds: 1h");

    AskInterval("5");
    server.Refuse(R"({"error":"no scenario"})");
    EXPECT_THAT(ParsedLine(), HasSubstr("no scenario"));
    AskInterval("5");
    server.Answer(R"({"ads":[{"adType":2,"adPosition":41,"showInterval":1}]})");
    EXPECT_EQ(ParsedLine(), "The server's scenario has no bottom popup");
    AskInterval("5");
    server.Answer(kScenario);
    server.Refuse(R"({"error":"no ads"})");
    EXPECT_THAT(ParsedLine(), HasSubstr("no ads"));

    EXPECT_FALSE(IsGood());
    EXPECT_EQ(Overridden(), "");
}

TEST_F(AdSwitchesTest, ANewServerHasItsOwnIntervalAndTheRestStays) {
    SetInterval("5");
    Choose("AdFocus", 2);
    Choose("AdSlotPermission", 1);
    EXPECT_EQ(Overridden(), "Overridden: focus never \u00B7 slot 2 refused \u00B7 interval 5 s instead of 3600 s");

    tab.Switches().ForgetServer();

    EXPECT_EQ(Overridden(), "Overridden: focus never \u00B7 slot 2 refused");
    EXPECT_EQ(Child<QLineEdit>("AdInterval")->text(), QString());
}

TEST_F(AdSwitchesTest, WhatTheOldServerAnswersLateIsNotPutIntoTheNewOne) {
    AskInterval("5");

    tab.Switches().ForgetServer();
    EXPECT_TRUE(Child<QPushButton>("AdIntervalSet")->isEnabled());
    server.Answer(kScenario);

    EXPECT_THAT(server.wishes, SizeIs(1));
    EXPECT_EQ(ParsedLine(), "");
}

TEST_F(AdSwitchesTest, WhatTheOldServerTookLateOverridesNothingOfTheNewOne) {
    AskInterval("5");
    server.Answer(kScenario);
    tab.Switches().ForgetServer();
    const auto late = server.wishes.back().answered;
    AskInterval("7");

    late(ServerAnswer::Read(200, "{}", QString()));
    EXPECT_EQ(Overridden(), "");
    EXPECT_EQ(ParsedLine(), "");
    EXPECT_FALSE(Child<QPushButton>("AdIntervalSet")->isEnabled());

    server.Answer(QByteArray(kScenario).replace("3600", "60"));
    server.Answer("{}");
    EXPECT_EQ(Overridden(), "Overridden: interval 7 s instead of 60 s");
}

TEST_F(AdSwitchesTest, TheLastShowsOfThisUsersPopupAreForgottenAndNoOthers) {
    account.Set(7);
    store.SetInt64("AdLastShowTimeStampKey_2_42_7_0", 100);
    store.SetInt64("AdLastShowTimeStampKey_2_42_7_9", 200);
    store.SetInt64("AdLastShowTimeStampKey_2_42_8_0", 300);
    store.SetInt64("AdLastShowTimeStampKey_3_42_7_0", 400);

    Press("AdLastShownForget");

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_7_0", "0"},
                                           StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_7_9", "0"}));
    EXPECT_EQ(ParsedLine(), "It is forgotten when the popup was last shown to this user");
    Press("AdLastShownForget");
    EXPECT_EQ(ParsedLine(), "Nothing to forget: no time is stored for this user");
    EXPECT_THAT(store.Saves(), SizeIs(2));
}

TEST_F(AdSwitchesTest, AStoreThatTakesNothingIsTold) {
    store.SetInt64("AdLastShowTimeStampKey_2_42_0_1", 100);
    store.RefuseSaves(Failing::Always());

    Press("AdLastShownForget");

    EXPECT_THAT(store.Saves(), SizeIs(1));
    EXPECT_EQ(ParsedLine(), "The store did not take the change");
    EXPECT_FALSE(IsGood());
}
