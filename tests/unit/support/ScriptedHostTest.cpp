#include "support/ScriptedHostTest.h"

#include <gtest/gtest-spi.h>

#include <functional>

#include "core/IZRChannelProxy.h"
#include "core/config_local.h"
#include "core/time_date.h"
#include "core/urlhandler.h"
#include "framework/assertion.h"
#include "framework/log.h"

using ::testing::HasSubstr;
using ::testing::TestPartResult;
using ::testing::TestPartResultArray;

namespace {

/// Returns the failures of a test that does this and checks nothing, or only the named effects.
std::vector<std::string> FailuresOf(const std::function<void(CScriptedHost&)>& body) {
    TestPartResultArray results;
    {
        const ::testing::ScopedFakeTestPartResultReporter reporter(
            ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        CScriptedHost host;
        body(host);
    }
    std::vector<std::string> failures;
    for (int i = 0; i < results.size(); ++i) {
        failures.emplace_back(results.GetTestPartResult(i).message());
    }
    return failures;
}

void Send(uint32_t cmd) {
    IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData{cmd, "body"}, nullptr, nullptr, nullptr);
}

void OpenUrl(const char* url) {
    core::urlhandler::DispatchUrl(QString::fromLatin1(url), core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                  core::urlhandler::kFallbackWeb);
}

void WriteLine(ZRLogType type, const char* text) {
    FrameWork::_WriteLogRaw("file", 12, "function", type, "Module", QString::fromLatin1(text), -128);
}

void Assert(const char* expression) {
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "Module", "file", 12, expression);
}

}  // namespace

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST(StrictnessTest, ASendThatNobodyLookedAtFailsTheTestAndIsNamed) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) { Send(20831); }),
                ElementsAre(HasSubstr("Unexpected send: command 20831 of session 1, \"body\"")));
}

TEST(StrictnessTest, EachUnexpectedEffectIsAFailureOfItsOwn) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) {
                    Send(1);
                    Send(2);
                    core::config_local::AppCfgSaveString("key", "value");
                    WriteLine(kZRLogError, "line");
                    Assert("expression");
                }),
                ElementsAre(HasSubstr("command 1 of"), HasSubstr("command 2 of"), HasSubstr("Unexpected save"),
                            HasSubstr("Unexpected error line"), HasSubstr("Unexpected assertion")));
}

TEST(StrictnessTest, ASendIsExpectedOnceTheTestLookedAtIt) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    Send(1);
                    host.channel.Sent();
                }),
                IsEmpty());
}

TEST(StrictnessTest, TheLastSessionLooksAtTheLastSendAlone) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    Send(1);
                    Send(2);
                    host.channel.LastSession();
                }),
                ElementsAre(HasSubstr("command 1 of")));
}

TEST(StrictnessTest, ASendAfterTheTestLookedIsUnexpected) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    host.channel.Sent();
                    Send(1);
                }),
                ElementsAre(HasSubstr("command 1 of")));
}

TEST(StrictnessTest, ASendThatIsAlwaysAnsweredIsExpected) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    host.channel.AnswerAlways(1, "");
                    Send(1);
                }),
                IsEmpty());
}

TEST(StrictnessTest, AForgottenSendIsExpected) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    Send(1);
                    host.channel.Forget();
                }),
                IsEmpty());
}

TEST(StrictnessTest, AnAnswerToASessionThatNeverWasFailsTheTest) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) { host.channel.Reply(3, 1, ""); }),
                ElementsAre(HasSubstr("answers session 3")));
}

TEST(StrictnessTest, ASaveThatNobodyLookedAtFailsTheTestAndIsNamed) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    host.state.account.Set(7);
                    core::config_local::UserCfgSaveString("key", "value");
                }),
                ElementsAre(HasSubstr("Unexpected save: user 7, \"key\" = \"value\"")));
}

TEST(StrictnessTest, ASaveIsExpectedOnceTheTestReadItsValue) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    core::config_local::AppCfgSaveString("seen", "value");
                    core::config_local::AppCfgSaveString("unseen", "value");
                    host.store.AppString("seen");
                }),
                ElementsAre(HasSubstr("\"unseen\"")));
}

TEST(StrictnessTest, ARefusedSaveIsAnEffectToo) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    host.store.RefuseSaves(Failing::Always());
                    core::config_local::AppCfgSaveString("key", "value");
                }),
                ElementsAre(HasSubstr("Unexpected save")));
}

TEST(StrictnessTest, AUrlThatNobodyLookedAtFailsTheTestAndIsNamed) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    OpenUrl("https://seen.example/");
                    host.urls.Opened();
                    OpenUrl("https://unseen.example/");
                }),
                ElementsAre(HasSubstr("An unexpected URL was opened: https://unseen.example/")));
}

TEST(StrictnessTest, AUrlIsExpectedOnceTheTestLookedAtItOrForgotIt) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    OpenUrl("https://forgotten.example/");
                    host.urls.Forget();
                    OpenUrl("https://seen.example/");
                    host.urls.Opened();
                }),
                IsEmpty());
}

TEST(StrictnessTest, ARefusedUrlIsAnEffectToo) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) { OpenUrl("file:///etc/hosts"); }),
                UnorderedElementsAre(HasSubstr("An unexpected URL was opened: file:///etc/hosts"),
                                     HasSubstr("Refused to open a URL: file:///etc/hosts")));
}

TEST(StrictnessTest, AnErrorLineThatNobodyLookedAtFailsTheTestAndIsNamed) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) { WriteLine(kZRLogError, "it broke"); }),
                ElementsAre(HasSubstr("[8] \"it broke\" (Module, file:12 function)")));
}

TEST(StrictnessTest, AnErrorLineAfterTheTestLookedIsUnexpected) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    WriteLine(kZRLogError, "seen");
                    host.log.Lines();
                    WriteLine(kZRLogFatal, "unseen");
                }),
                ElementsAre(HasSubstr("[16] \"unseen\"")));
}

TEST(StrictnessTest, AnInformationLineIsNoEffect) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) { WriteLine(kZRLogInfo, "all is well"); }), IsEmpty());
}

TEST(StrictnessTest, AnAllowedErrorLineIsExpectedAndNoOther) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    host.log.AllowErrors("part of it");
                    WriteLine(kZRLogError, "part of it");
                    WriteLine(kZRLogError, "part of it, nearly");
                }),
                ElementsAre(HasSubstr("part of it, nearly")));
}

TEST(StrictnessTest, LookingAtLinesDoesNotLookAtAssertions) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    Assert("connection");
                    host.log.Lines();
                }),
                ElementsAre(HasSubstr("\"connection\"")));
}

TEST(StrictnessTest, AnAssertionIsExpectedOnceTheTestLookedAtIt) {
    EXPECT_THAT(FailuresOf([](CScriptedHost& host) {
                    Assert("connection");
                    host.log.Assertions();
                }),
                IsEmpty());
}

TEST(StrictnessTest, WhatADeferredDeleteDoesBelongsToTheTest) {
    EXPECT_THAT(FailuresOf([](CScriptedHost&) {
                    auto* object = new QObject;
                    QObject::connect(object, &QObject::destroyed, [] { Send(5); });
                    object->deleteLater();
                }),
                ElementsAre(HasSubstr("command 5 of")));
}

TEST(StrictnessTest, NothingReachesTheServicesOnceTheyAreGone) {
    { const CScriptedHost host; }

    EXPECT_EQ(core::time_date::GetSvrTimeMillis(), 0);
    EXPECT_FALSE(core::config_local::AppCfgSaveString("key", "value"));
}

TEST_F(ScriptedHostTest, TheFixtureJoinsItsServicesToTheContract) {
    store.SetAppString("key", "value");
    std::string value;

    EXPECT_TRUE(core::config_local::AppCfgReadString("key", value));
    EXPECT_EQ(value, "value");
    EXPECT_EQ(core::time_date::GetSvrTimeStamp(), 1'700'000'000);
}
