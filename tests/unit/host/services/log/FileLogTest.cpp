#include "log/FileLog.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>
#include <thread>

using namespace ::testing;

namespace {

class FileLogTest : public Test {
protected:
    QString Path() const { return folder.filePath(QStringLiteral("client.log")); }

    std::vector<std::string> Lines() const {
        QFile file(Path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        std::vector<std::string> lines;
        while (!file.atEnd()) {
            lines.push_back(file.readLine().toStdString());
        }
        return lines;
    }

    static LogRecord Record(ZRLogType type, const QString& text) {
        return {"Some/Source", 12, "Function", type, "ZRGrowth", text};
    }

    QTemporaryDir folder;
};

TEST_F(FileLogTest, ALineNamesTimeSeverityModulePlaceAndText) {
    CFileLog log(Path());

    log.Write(Record(kZRLogInfo, QStringLiteral("[Ad] hello")));
    log.Write(Record(kZRLogError, QStringLiteral("b")));
    log.Write(Record(kZRLogFatal, QStringLiteral("c")));

    const std::string stamp = "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:.]+[+-][0-9:]+ ";
    EXPECT_THAT(Lines(),
                ElementsAre(MatchesRegex(stamp + "info [0-9]+ \\[ZRGrowth\\] Some/Source:12 Function \\[Ad\\] hello\n"),
                            MatchesRegex(stamp + "error [0-9]+ \\[ZRGrowth\\] Some/Source:12 Function b\n"),
                            MatchesRegex(stamp + "critical [0-9]+ \\[ZRGrowth\\] Some/Source:12 Function c\n")));
}

TEST_F(FileLogTest, FileHasTheNameThatTheToolkitGivesItInAnyLocale) {
    QTextCodec* before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QString path = folder.filePath(QStringLiteral("\u00E4.log"));

    CFileLog(path).Write(Record(kZRLogInfo, QStringLiteral("a")));

    EXPECT_TRUE(QFile::exists(path));
    EXPECT_GT(QFile(path).size(), 0);
    QTextCodec::setCodecForLocale(before);
}

TEST_F(FileLogTest, OneWriteIsOneLineWhateverItsBytes) {
    CFileLog log(Path());

    log.Write(Record(kZRLogInfo, QStringLiteral("a\n2026-01-01T00:00:00 info forged")));

    EXPECT_THAT(Lines(), ElementsAre(HasSubstr("a\\x0a2026-01-01T00:00:00 info forged\n")));
}

TEST_F(FileLogTest, AFormatFieldInALineIsText) {
    CFileLog log(Path());

    log.Write(Record(kZRLogInfo, QStringLiteral("{} {0} %s")));

    EXPECT_THAT(Lines(), ElementsAre(HasSubstr("{} {0} %s")));
}

TEST_F(FileLogTest, WhoeverListensGetsTheLineAsItWasWritten) {
    CFileLog log{QString()};
    std::vector<LogEntry> entries;
    QObject::connect(&log, &CFileLog::Written, [&entries](const LogEntry& entry) { entries.push_back(entry); });

    log.Write(Record(kZRLogError, QStringLiteral("a\nb")));

    ASSERT_THAT(entries, SizeIs(1));
    EXPECT_EQ(entries[0].record.text, QStringLiteral("a\nb"));
    EXPECT_EQ(entries[0].record.type, kZRLogError);
    EXPECT_TRUE(entries[0].time.isValid());
}

TEST_F(FileLogTest, LongTextIsCutInFileAndView) {
    CFileLog log(Path());
    log.Write(Record(kZRLogInfo, QString(16'384, QLatin1Char('x'))));
    log.Write(Record(kZRLogInfo, QString(16'385, QLatin1Char('x'))));
    log.Write(Record(kZRLogInfo, QString(8 << 20, QLatin1Char('x'))));

    const auto lines = Lines();
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_THAT(lines[0], EndsWith(" " + std::string(16'384, 'x') + "\n"));
    EXPECT_THAT(lines[1], HasSubstr("xxx... ("));
    EXPECT_LT(lines[2].size(), 16'384u + 100);
    const QString shown = log.Kept().back().record.text;
    EXPECT_THAT(lines[2], EndsWith(" " + shown.toStdString() + "\n"));
    const int kept = shown.indexOf(QLatin1Char('.'));
    EXPECT_EQ(shown.mid(kept), QStringLiteral("... (%1 bytes left out)").arg((8 << 20) - kept));
    EXPECT_GT(kept, 16'000);
}

// A control character takes four bytes in the file, and a character of the second plane two units of a string.
TEST_F(FileLogTest, LimitCountsTheBytesOfTheLine) {
    CFileLog log(Path());
    log.Write(Record(kZRLogInfo, QString(10'000, QChar(1))));
    log.Write(
        Record(kZRLogInfo, QStringLiteral("a") + QString::fromUtf8(QByteArray("\xF0\x9F\x98\x80").repeated(9'000))));

    for (const std::string& line : Lines()) {
        EXPECT_LT(line.size(), 16'384u + 100);
        EXPECT_GT(line.size(), 16'000u);
        EXPECT_THAT(line, EndsWith(" bytes left out)\n"));
        EXPECT_THAT(line, Not(HasSubstr("\xEF\xBF\xBD")));
        EXPECT_THAT(line, Not(HasSubstr("?")));
    }
}

TEST_F(FileLogTest, HistorySurvivesLargeTexts) {
    CFileLog log(Path());
    log.Write(Record(kZRLogInfo, QStringLiteral("the first")));
    for (int i = 0; i < 20; ++i) {
        log.Write(Record(kZRLogError, QString(8 << 20, QLatin1Char('x'))));
    }

    EXPECT_THAT(Lines(), AllOf(SizeIs(21), Contains(HasSubstr("the first"))));
}

TEST_F(FileLogTest, AnAssertionIsALineOfItsOwn) {
    CFileLog log(Path());

    log.AssertionFailed({3, "", "ZRGrowth", "host/contract/framework/defensive.h", 20, "connection"});

    EXPECT_THAT(Lines(), ElementsAre(HasSubstr("error")));
    EXPECT_THAT(Lines(),
                ElementsAre(HasSubstr("host/contract/framework/defensive.h:20  Assertion 3 failed: connection\n")));
}

TEST_F(FileLogTest, LinesOfManyThreadsStayWhole) {
    CFileLog log(Path());
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&log] {
            for (int line = 0; line < 250; ++line) {
                log.Write(Record(kZRLogInfo, QString(100, QLatin1Char('x'))));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_THAT(Lines(), AllOf(SizeIs(1000), Each(HasSubstr(" " + std::string(100, 'x') + "\n"))));
}

TEST_F(FileLogTest, APathThatCantBeWrittenLeavesTheListener) {
    CFileLog log(folder.path());
    int lines = 0;
    QObject::connect(&log, &CFileLog::Written, [&lines] { ++lines; });

    log.Write(Record(kZRLogInfo, QStringLiteral("a")));

    EXPECT_EQ(lines, 1);
}

TEST_F(FileLogTest, TheYoungestLinesAreKeptForLateListeners) {
    CFileLog log{QString()};
    for (size_t i = 0; i < CFileLog::kKept + 2; ++i) {
        log.Write(Record(kZRLogInfo, QString::number(i)));
    }

    const auto kept = log.Kept();
    ASSERT_EQ(kept.size(), CFileLog::kKept);
    EXPECT_EQ(kept.front().record.text, QStringLiteral("2"));
    EXPECT_EQ(kept.front().number, 3u);
}

}  // namespace
