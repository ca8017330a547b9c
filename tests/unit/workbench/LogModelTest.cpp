#include "workbench/LogModel.h"

#include <QSignalSpy>

#include "support/ScriptedHostTest.h"
#include "workbench/LogFilter.h"

using namespace ::testing;

namespace {

class LogModelTest : public ScriptedHostTest {
protected:
    LogModelTest() { filter.SetText(QString()); }

    void Add(const char* text, ZRLogType severity = kZRLogInfo, const char* tag = "ZRGrowth") {
        LogEntry entry;
        entry.time = QDateTime::fromMSecsSinceEpoch(1'700'000'000'123, Qt::UTC);
        entry.record.type = severity;
        entry.record.module = tag;
        entry.record.text = QString::fromUtf8(text);
        model.Add(entry);
    }

    void AddNumbered(int first, int count) {
        for (int number = first; number < first + count; ++number) {
            Add(std::to_string(number).c_str());
        }
    }

    std::vector<std::string> Shown() const {
        std::vector<std::string> texts;
        for (int row = 0; row < filter.rowCount(); ++row) {
            texts.push_back(filter.index(row, CLogModel::Text).data().toString().toStdString());
        }
        return texts;
    }

    std::string Cell(int column) const { return model.index(0, column).data(Qt::DisplayRole).toString().toStdString(); }

    CLogModel model;
    CLogFilter filter{model};
};

}  // namespace

TEST_F(LogModelTest, LinesAreShownInBatches) {
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);

    AddNumbered(0, 10'000);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.IsSettled());
    time.Advance(std::chrono::milliseconds(100));

    EXPECT_EQ(model.rowCount(), 10'000);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_TRUE(model.IsSettled());
}

TEST_F(LogModelTest, ALineHasItsTimeSeverityTagAndText) {
    Add("something went wrong", kZRLogError, "Host.Channel");
    model.Flush();

    EXPECT_EQ(Cell(CLogModel::Time), "22:13:20.123");
    EXPECT_EQ(Cell(CLogModel::Severity), "Error");
    EXPECT_EQ(Cell(CLogModel::Tag), "Host.Channel");
    EXPECT_EQ(Cell(CLogModel::Text), "something went wrong");
}

TEST_F(LogModelTest, TheOldestLinesGiveWayToTheYoungest) {
    AddNumbered(0, CLogModel::kMaxLines);
    model.Flush();
    AddNumbered(CLogModel::kMaxLines, 3);
    model.Flush();

    ASSERT_EQ(model.rowCount(), CLogModel::kMaxLines);
    EXPECT_EQ(model.At(0).text, QStringLiteral("3"));
    EXPECT_EQ(model.At(CLogModel::kMaxLines - 1).text, QString::number(CLogModel::kMaxLines + 2));
    EXPECT_EQ(filter.rowCount(), CLogModel::kMaxLines);
}

TEST_F(LogModelTest, ABatchLargerThanTheModelKeepsItsYoungestLines) {
    AddNumbered(0, 10);
    model.Flush();
    AddNumbered(10, CLogModel::kMaxLines + 5);
    model.Flush();

    ASSERT_EQ(model.rowCount(), CLogModel::kMaxLines);
    EXPECT_EQ(model.At(0).text, QStringLiteral("15"));
}

TEST_F(LogModelTest, ControlCharactersAreEscapedInTextAndTag) {
    Add("a\nb\x1b[31m\xE2\x80\xAE", kZRLogInfo, "Z\tR");
    model.Flush();

    EXPECT_EQ(Cell(CLogModel::Text), "a\\x0ab\\x1b[31m\\u202e");
    EXPECT_EQ(Cell(CLogModel::Tag), "Z\\x09R");
}

TEST_F(LogModelTest, WhilePausedLinesAreCollectedAndNotShown) {
    Add("before");
    model.Flush();
    model.SetPaused(true);
    Add("meanwhile");
    time.Advance(std::chrono::seconds(1));
    EXPECT_THAT(Shown(), ElementsAre("before"));

    model.SetPaused(false);

    EXPECT_THAT(Shown(), ElementsAre("before", "meanwhile"));
}

TEST_F(LogModelTest, ClearForgetsWhatIsNotYetShownToo) {
    Add("shown");
    model.Flush();
    Add("collected");

    model.Clear();
    time.Advance(std::chrono::seconds(1));

    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(LogModelTest, TheFilterFindsTextAndTagWhateverTheCase) {
    Add("Connected to the server", kZRLogInfo, "Host.Channel");
    Add("[AIChat] Read cache failed");
    model.Flush();

    filter.SetText(QStringLiteral("aichat"));
    EXPECT_THAT(Shown(), ElementsAre("[AIChat] Read cache failed"));
    filter.SetText(QStringLiteral("channel"));
    EXPECT_THAT(Shown(), ElementsAre("Connected to the server"));
    filter.SetText(QStringLiteral("neither"));
    EXPECT_THAT(Shown(), IsEmpty());
    filter.SetText(QString());
    EXPECT_THAT(Shown(), SizeIs(2));
}

TEST_F(LogModelTest, TheFilterHoldsBackLowerSeverities) {
    Add("info");
    Add("error", kZRLogError);
    Add("fatal", kZRLogFatal);
    model.Flush();

    filter.SetMinimum(kZRLogError);
    EXPECT_THAT(Shown(), ElementsAre("error", "fatal"));
    filter.SetMinimum(kZRLogFatal);
    EXPECT_THAT(Shown(), ElementsAre("fatal"));
}

TEST_F(LogModelTest, TheFilterTellsTheHostsLinesFromThoseOfModules) {
    Add("of the host", kZRLogInfo, "Host.Login");
    Add("of the module");
    model.Flush();

    filter.SetSource(CLogFilter::EnSource::Host);
    EXPECT_THAT(Shown(), ElementsAre("of the host"));
    filter.SetSource(CLogFilter::EnSource::Module);
    EXPECT_THAT(Shown(), ElementsAre("of the module"));
}

TEST_F(LogModelTest, TheFilterTellsThePartsOfAModule) {
    Add("[AIChat] Read cache failed, [Ad] is elsewhere");
    Add("[Ad] nothing to show");
    Add("Ad without brackets");
    Add("  [Ad] indented");
    Add("[] of no part");
    model.Flush();

    filter.SetArea(QStringLiteral("AIChat"));
    EXPECT_THAT(Shown(), ElementsAre("[AIChat] Read cache failed, [Ad] is elsewhere"));
    filter.SetArea(QStringLiteral("Ad"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] nothing to show"));
    filter.SetArea(QStringLiteral("Vip"));
    EXPECT_THAT(Shown(), IsEmpty());
    filter.SetArea(QString());
    EXPECT_THAT(Shown(), SizeIs(5));
}

TEST_F(LogModelTest, AllChoicesOfTheFilterHoldAtOnce) {
    Add("[Ad] late", kZRLogError);
    Add("[Ad] late");
    Add("[Ad] late", kZRLogError, "Host.Ad");
    Add("[Vip] late", kZRLogError);
    Add("[Ad] early", kZRLogFatal);
    model.Flush();

    filter.SetMinimum(kZRLogError);
    filter.SetSource(CLogFilter::EnSource::Module);
    filter.SetArea(QStringLiteral("Ad"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] late", "[Ad] early"));
    filter.SetText(QStringLiteral("LATE"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] late"));
}

TEST_F(LogModelTest, TextsThatTravelAsBytesAreReadableAndFound) {
    Add("[Ad] caf\xC3\x83\xC2\xA9 opens");  // two characters, the UTF-8 bytes of an accented e
    Add("[Ad] na\xC3\xAFve");               // one character, not UTF-8 as a byte
    model.Flush();

    EXPECT_EQ(model.At(0).readable.toStdString(), "[Ad] caf\xC3\xA9 opens");
    EXPECT_EQ(model.At(1).readable.toStdString(), "[Ad] na\xC3\xAFve");
    filter.SetText(QString::fromUtf8("caf\xC3\xA9"));
    EXPECT_THAT(Shown(), SizeIs(1));
}

TEST_F(LogModelTest, ALineOfTheLogThatComesTwiceIsTakenOnce) {
    LogEntry entry;
    entry.number = 7;
    model.Add(entry);
    model.Add(entry);
    entry.number = 6;
    model.Add(entry);
    entry.number = 8;
    model.Add(entry);
    model.Flush();

    EXPECT_EQ(model.rowCount(), 2);
}

TEST_F(LogModelTest, ALineInFullSaysWhereItWasWritten) {
    LogEntry entry;
    entry.record.module = "ZRGrowth";
    entry.record.text = QStringLiteral("a\nb");
    entry.record.file = "Ad/Model.cpp";
    entry.record.line = 12;
    entry.record.function = "Take";
    model.Add(entry);
    Add("from nowhere");
    model.Flush();

    EXPECT_EQ(model.InFull(0), QStringLiteral("a\\x0ab\nAd/Model.cpp:12 Take"));
    EXPECT_EQ(model.InFull(1), QStringLiteral("from nowhere"));
}

TEST_F(LogModelTest, ALineThatComesWhileAFilterIsSetIsFilteredToo) {
    filter.SetText(QStringLiteral("wanted"));
    Add("wanted");
    Add("other");
    model.Flush();

    EXPECT_THAT(Shown(), ElementsAre("wanted"));
}
