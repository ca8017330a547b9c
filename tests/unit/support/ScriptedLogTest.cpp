#include "support/ScriptedLog.h"

#include <thread>

#include "framework/assertion.h"
#include "framework/log.h"
#include "support/ScriptedHostTest.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

class ScriptedLogTest : public ScriptedHostTest {
protected:
    static void Write(ZRLogType type, const QString& text) {
        FrameWork::_WriteLogRaw("some/file", 12, "Function", type, "Module", text, -128);
    }
};

}  // namespace

TEST_F(ScriptedLogTest, LinesAreRecordedWithTheirPlace) {
    Write(kZRLogInfo, QStringLiteral("text"));

    ASSERT_THAT(log.Lines(), SizeIs(1));
    const LogLine line = log.Lines()[0];
    EXPECT_EQ(line.severity, kZRLogInfo);
    EXPECT_EQ(line.text, "text");
    EXPECT_EQ(line.module, "Module");
    EXPECT_EQ(line.file, "some/file");
    EXPECT_EQ(line.function, "Function");
    EXPECT_EQ(line.line, 12);
}

TEST_F(ScriptedLogTest, MatchersTellSeverityAndWholeText) {
    Write(kZRLogInfo, QStringLiteral("one"));
    Write(kZRLogError, QStringLiteral("two"));
    Write(kZRLogFatal, QStringLiteral("three"));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("one"), Error("two"), Fatal(HasSubstr("hre"))));
    EXPECT_THAT(log.Lines(), ElementsAre(Not(Info("on")), Not(Info("two")), Not(Error("three"))));
}

TEST_F(ScriptedLogTest, EveryByteOfALineComesThrough) {
    const QByteArray bytes("\x00\x7f\x80\xff", 4);

    Write(kZRLogInfo, QString::fromLatin1(bytes.data(), bytes.size()));

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].text, bytes.toStdString());
}

TEST_F(ScriptedLogTest, LinesOfOtherThreadsAreRecorded) {
    std::thread([] { Write(kZRLogInfo, QStringLiteral("elsewhere")); }).join();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("elsewhere")));
}

TEST_F(ScriptedLogTest, AssertionsAreRecordedWithTheirFields) {
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "detail", "Module", "file", 3, "connection");

    ASSERT_THAT(log.Assertions(), SizeIs(1));
    const AssertionRecord record = log.Assertions()[0];
    EXPECT_EQ(record.type, 3);
    EXPECT_EQ(record.detail, "detail");
    EXPECT_EQ(record.module, "Module");
    EXPECT_EQ(record.expression, "connection");
}

TEST_F(ScriptedLogTest, ForgettingEmptiesBothRecords) {
    Write(kZRLogError, QStringLiteral("text"));
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "", "", 0, "expression");

    log.Forget();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(log.Assertions(), IsEmpty());
}
