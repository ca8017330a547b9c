#include "workbench/EventModel.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr int kText = 3;

class LogFormatTest : public ScriptedHostTest {
protected:
    LogFormatTest() { filter.setSourceModel(&model); }

    void Add(const char* text, ZRLogType severity = kZRLogInfo, const char* tag = "ZRGrowth") {
        LogEntry entry;
        entry.time = QDateTime::fromMSecsSinceEpoch(1'700'000'000'123, Qt::UTC);
        entry.record.type = severity;
        entry.record.module = tag;
        entry.record.text = QString::fromUtf8(text);
        model.Add(entry);
    }

    std::vector<std::string> Shown() const {
        std::vector<std::string> texts;
        for (int row = 0; row < filter.rowCount(); ++row) {
            texts.push_back(filter.index(row, kText).data().toString().toStdString());
        }
        return texts;
    }

    /// The text of the line in full.
    std::string Detail(int row) const { return model.At(row).detail()[0].value.toStdString(); }

    std::string Cell(int column) const { return model.index(0, column).data(Qt::DisplayRole).toString().toStdString(); }

    CEventModel model{NewLogFormat()};
    CEventFilter filter;
};

}  // namespace

TEST_F(LogFormatTest, ALineHasItsTimeSeverityTagAndText) {
    Add("something went wrong", kZRLogError, "Host.Channel");
    model.Flush();

    EXPECT_EQ(Cell(0), "2023-11-14 22:13:20.123");
    EXPECT_EQ(Cell(1), "Error");
    EXPECT_EQ(Cell(2), "Host.Channel");
    EXPECT_EQ(Cell(kText), "something went wrong");
}

TEST_F(LogFormatTest, ControlCharactersAreEscapedInTextAndTag) {
    Add("a\nb\x1b[31m\xE2\x80\xAE", kZRLogInfo, "Z\tR");
    model.Flush();

    EXPECT_EQ(Cell(kText), "a\\x0ab\\x1b[31m\\u202e");
    EXPECT_EQ(Cell(2), "Z\\x09R");
}

TEST_F(LogFormatTest, TheFilterFindsTextAndTagWhateverTheCase) {
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

TEST_F(LogFormatTest, TheFilterHoldsBackLowerSeverities) {
    Add("info");
    Add("error", kZRLogError);
    Add("fatal", kZRLogFatal);
    model.Flush();

    filter.SetChoice(0, QStringLiteral("Errors and up"));
    EXPECT_THAT(Shown(), ElementsAre("error", "fatal"));
    filter.SetChoice(0, QStringLiteral("Fatal only"));
    EXPECT_THAT(Shown(), ElementsAre("fatal"));
}

TEST_F(LogFormatTest, TheFilterTellsTheHostsLinesFromThoseOfModules) {
    Add("of the host", kZRLogInfo, "Host.Login");
    Add("of the module");
    model.Flush();

    filter.SetChoice(1, QStringLiteral("Host"));
    EXPECT_THAT(Shown(), ElementsAre("of the host"));
    filter.SetChoice(1, QStringLiteral("Module"));
    EXPECT_THAT(Shown(), ElementsAre("of the module"));
}

TEST_F(LogFormatTest, TheFilterTellsThePartsOfAModule) {
    Add("[AIChat] Read cache failed, [Ad] is elsewhere");
    Add("[Ad] nothing to show");
    Add("Ad without brackets");
    Add("  [Ad] indented");
    Add("[] of no part");
    model.Flush();

    filter.SetChoice(2, QStringLiteral("AIChat"));
    EXPECT_THAT(Shown(), ElementsAre("[AIChat] Read cache failed, [Ad] is elsewhere"));
    filter.SetChoice(2, QStringLiteral("Ad"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] nothing to show"));
    filter.SetChoice(2, QStringLiteral("Vip"));
    EXPECT_THAT(Shown(), IsEmpty());
    filter.SetChoice(2, QString());
    EXPECT_THAT(Shown(), SizeIs(5));
}

TEST_F(LogFormatTest, AllChoicesOfTheFilterHoldAtOnce) {
    Add("[Ad] late", kZRLogError);
    Add("[Ad] late");
    Add("[Ad] late", kZRLogError, "Host.Ad");
    Add("[Vip] late", kZRLogError);
    Add("[Ad] early", kZRLogFatal);
    model.Flush();

    filter.SetChoice(0, QStringLiteral("Errors and up"));
    filter.SetChoice(1, QStringLiteral("Module"));
    filter.SetChoice(2, QStringLiteral("Ad"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] late", "[Ad] early"));
    filter.SetText(QStringLiteral("LATE"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] late"));
}

TEST_F(LogFormatTest, TextsThatTravelAsBytesAreReadableAndFound) {
    Add("[Ad] caf\xC3\x83\xC2\xA9 opens");  // two characters, the UTF-8 bytes of an accented e
    Add("[Ad] na\xC3\xAFve");               // one character, not UTF-8 as a byte
    model.Flush();

    EXPECT_EQ(Detail(0), "[Ad] caf\xC3\xA9 opens");
    EXPECT_EQ(Detail(1), "[Ad] na\xC3\xAFve");
    filter.SetText(QString::fromUtf8("caf\xC3\xA9"));
    EXPECT_THAT(Shown(), SizeIs(1));
}

TEST_F(LogFormatTest, ALineInFullSaysWhereItWasWritten) {
    LogEntry entry;
    entry.record.module = "ZRGrowth";
    entry.record.text = QStringLiteral("a\nb");
    entry.record.file = "Ad/Model.cpp";
    entry.record.line = 12;
    entry.record.function = "Take";
    model.Add(entry);
    Add("from nowhere");
    model.Flush();

    EXPECT_EQ(model.At(0).detail()[1].value, QStringLiteral("Ad/Model.cpp:12 Take"));
    EXPECT_THAT(model.At(1).detail(), SizeIs(1));
}

TEST_F(LogFormatTest, ALineThatComesWhileAFilterIsSetIsFilteredToo) {
    filter.SetText(QStringLiteral("wanted"));
    Add("wanted");
    Add("other");
    model.Flush();

    EXPECT_THAT(Shown(), ElementsAre("wanted"));
}

TEST_F(LogFormatTest, AnErrorThatIsNormalIsMarkedAndNoError) {
    Add("[Ad] adModelList is null, m_adType = 2, adPosition = 42", kZRLogError);
    Add("[Ad] adModelList is null, m_adType = 3, adPosition = 7", kZRLogFatal);
    Add("an error", kZRLogError);
    model.Flush();

    EXPECT_EQ(Cell(1), "Error, expected");
    EXPECT_EQ(model.At(0).tone, EnTone::kExpected);
    filter.SetChoice(0, QStringLiteral("Errors and up"));
    EXPECT_THAT(Shown(), ElementsAre("[Ad] adModelList is null, m_adType = 3, adPosition = 7", "an error"));
}

TEST_F(LogFormatTest, OfALongLineTheNumberOfBytesLeftOutIsShown) {
    Add((std::string(16 << 10, 'a') + "\xC3\xA9z").c_str());
    model.Flush();

    EXPECT_EQ(Detail(0), std::string(16 << 10, 'a') + " \xE2\x80\xA6 3 bytes left out");
    EXPECT_EQ(model.index(0, kText).data().toString().size(), CEventModel::kMaxCell + 1);
}

class ActivationFormatTest : public LogFormatTest {
protected:
    void Click(int access) {
        Log(QStringLiteral("[Vip] Active vip, access = %1, dataType = 2, targetUrl = u").arg(access));
    }

    void Log(const QString& text) {
        LogEntry entry;
        entry.number = ++number;
        entry.record.text = text;
        activations.Add(entry);
    }

    void Command(CommandTrace::EnKind kind, int error, int64_t durationMs, const std::string& body) {
        TraceEvent seen;
        seen.number = ++number;
        seen.what = CommandTrace{kind, 20981, 5, error, durationMs, body, 20981};
        activations.Add(seen);
    }

    std::string Row(int row) {
        activations.Flush();
        return activations.At(row).cells.join(QLatin1Char('|')).toStdString();
    }

    CEventModel activations{NewActivationFormat()};
    uint64_t number = 0;
};

TEST_F(ActivationFormatTest, AClickIsOneRowUpToItsOutcome) {
    Click(5);
    EXPECT_EQ(Row(0), "5|||Clicked");
    Command(CommandTrace::EnKind::Sent, 0, -1, "");
    EXPECT_EQ(Row(0), "5|waiting||Clicked");
    Command(CommandTrace::EnKind::Replied, 0, 12, std::string("\x08\x00", 2));
    Log(QStringLiteral("[Vip] Show popup start, imageUrl = https://a.example/p.png"));
    EXPECT_EQ(Row(0), "5|2 bytes|12|Activated, the picture loads");
    Log(QStringLiteral("[Vip] OnImageLoadFailed, imageUrl = p, resultContent = late, time = 1, count = 1"));
    activations.Flush();

    EXPECT_EQ(activations.rowCount(), 1);
    EXPECT_EQ(activations.At(0).choices, QStringList(QStringLiteral("Activated")));
    EXPECT_EQ(activations.At(0).detail().size(), 5u);
    EXPECT_EQ(activations.At(0).tone, EnTone::kBad);
}

TEST_F(ActivationFormatTest, EachClickHasItsRow) {
    Click(5);
    Log(QStringLiteral("[Vip] RequestActiveVip callback, active failed, code = 1001, message = done before"));
    Click(6);

    EXPECT_EQ(Row(0), "5|||Failed: active failed, code = 1001, message = done before");
    EXPECT_EQ(Row(1), "6|||Clicked");
    EXPECT_EQ(activations.At(0).choices, QStringList(QStringLiteral("Failed")));
}
