// The client's parser of module log lines, compared with lines that the module itself writes.
#include "workbench/rights/ModuleLines.h"

#include "LinesRead.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using module_lines::EnLine;

namespace {

class ModuleLinesTest : public ScriptedHostTest {
protected:
    ModuleLinesTest() {
        CZRPremiumManager::Singleton()->Init();
        vip.Init();
    }

    auto Read() { return ReadLines(log, &module_lines::Read); }

    static std::string Text(unsigned long number) { return std::to_string(number); }

    CZRPremiumManager& premium = *CZRPremiumManager::Singleton();
    CZRVipManager vip;
};

}  // namespace

TEST_F(ModuleLinesTest, TheTimersLifeIsRead) {
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::TimerReady)));

    { const CZRPremiumDataHandler handler(nullptr); }

    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::TimerReady), ReadAs(EnLine::TimerStops)));
}

TEST_F(ModuleLinesTest, EachRequestAndWhatItIsForAreRead) {
    Read();

    premium.OnLogin();
    EXPECT_THAT(Read(),
                ElementsAre(ReadAs(EnLine::ForLogin), ReadAs(EnLine::SentAll, {Text(channel.LastSession()), "false"})));
    bus.HostSend(20100);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::ForLanguage),
                                    ReadAs(EnLine::SentAll, {Text(channel.LastSession()), "true"})));
    premium.GetUiMsgAndPremiumAccessReq(QVector<int>{1, 5, 1000}, false);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::SentList, {"3", Text(channel.LastSession()), "false"})));
    time.Advance(std::chrono::hours(1));
    EXPECT_THAT(Read(),
                ElementsAre(ReadAs(EnLine::ForHour), ReadAs(EnLine::SentAll, {Text(channel.LastSession()), "true"})));
    vip.OnLogin();
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::VipSent)));
    channel.Forget();
}

TEST_F(ModuleLinesTest, EachBadAnswerIsRead) {
    Read();

    const auto ask = [this] { return premium.GetUiMsgAndPremiumAccessReq(true); };
    const unsigned long failed = ask();
    channel.Fail(failed, CSProtoError(-7));
    channel.Reply(ask(), 20637, std::string("\xFF"));
    channel.Reply(ask(), 20637, std::string());
    channel.Reply(ask(), 20637, std::string("\x08\x05"));
    CZRPremiumDataHandler(nullptr).ParsePremiumRsp(77, kCSProtoOk, CSProtoData(), nullptr);

    EXPECT_THAT(Read(),
                AllOf(Contains(ReadAs(EnLine::ChannelError, {Text(failed), "-7"})), Contains(ReadAs(EnLine::BadBytes)),
                      Contains(ReadAs(EnLine::NoCode)), Contains(ReadAs(EnLine::OtherCode, {"5"})),
                      Contains(ReadAs(EnLine::UnknownSession, {"77"}))));
    channel.Forget();
}

TEST_F(ModuleLinesTest, EachBadAnswerAboutTheVipStatusIsRead) {
    Read();

    vip.OnLogin();
    channel.Fail(channel.LastSession(), CSProtoError(-7));
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 20832, std::string());
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 20831, std::string("\xFF"));

    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::VipSent), ReadAs(EnLine::VipRefused, {"-7", "20831"}),
                                    ReadAs(EnLine::VipSent), ReadAs(EnLine::VipRefused, {"0", "20832"}),
                                    ReadAs(EnLine::VipSent), ReadAs(EnLine::VipBadBytes)));
}

TEST_F(ModuleLinesTest, PushesAndTheirDelaysAreRead) {
    Read();

    channel.Push(20837, std::string("\x08\x05\x10\x00\x18\x01\x18\x02", 8));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PushTaken, {"false", "2", "5000"})));
    channel.Push(20837, std::string("\x08\x00\x10\x01", 4));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PushTaken, {"true", "0", "0"})));
    channel.Push(20832, std::string());
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::VipPushTaken, {"0"})));
    time.Settle();
    channel.Forget();
}

TEST_F(ModuleLinesTest, NoTwoLinesOfTheTableAreTakenForEachOther) {
    for (const module_lines::Line& line : module_lines::All()) {
        const QString text = QString::fromLatin1(line.text).replace(QStringLiteral("{}"), QStringLiteral("1"));
        const auto said = module_lines::Read(text);
        ASSERT_TRUE(said) << line.text;
        EXPECT_EQ(said->line, line.line) << line.text;
        EXPECT_FALSE(module_lines::Read(text + QStringLiteral(" more"))) << line.text;
        EXPECT_FALSE(module_lines::Read(QStringLiteral("more ") + text)) << line.text;
    }
    Read();
}
