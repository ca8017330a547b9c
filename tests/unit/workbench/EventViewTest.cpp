#include "workbench/EventView.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr int kText = 3;

class EventViewTest : public ScriptedHostTest {
protected:
    EventViewTest() {
        view.resize(500, 400);
        view.show();
        time.Settle();
    }

    void Add(const QString& text, ZRLogType severity = kZRLogInfo) {
        LogEntry entry;
        entry.record.type = severity;
        entry.record.module = "ZRGrowth";
        entry.record.text = text;
        view.Model().Add(entry);
    }

    QStringList Shown() {
        QStringList lines;
        const QAbstractItemModel* model = Child<QAbstractItemView>("LogTable")->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            lines << model->index(row, kText).data().toString();
        }
        return lines;
    }

    void Choose(const char* combo, const char* item) {
        auto* box = Child<QComboBox>(combo);
        const int index = box->findText(QString::fromLatin1(item));
        ASSERT_GE(index, 0) << item;
        box->setCurrentIndex(index);
    }

    void Select(int row) {
        auto* table = Child<QAbstractItemView>("LogTable");
        table->setCurrentIndex(table->model()->index(row, 0));
    }

    std::string Detail() { return Child<QPlainTextEdit>("LogDetail")->toPlainText().toStdString(); }

    void AddMany(int count) {
        for (int number = 0; number < count; ++number) {
            Add(QString::number(number));
        }
        time.Advance(std::chrono::milliseconds(100));
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return view.findChild<Widget*>(QString::fromLatin1(name));
    }

    QString Count() { return Child<QLabel>("LogCount")->text(); }

    CEventView view{NewLogFormat()};
};

}  // namespace

TEST_F(EventViewTest, CountsTheLinesThatTheFilterLetsPass) {
    Add(QStringLiteral("one"));
    Add(QStringLiteral("two"), kZRLogError);
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(Count(), QStringLiteral("2 of 2 lines"));

    Child<QLineEdit>("LogFilter")->setText(QStringLiteral("tw"));
    EXPECT_EQ(Count(), QStringLiteral("1 of 2 lines"));

    Child<QLineEdit>("LogFilter")->clear();
    Child<QComboBox>("LogSeverity")->setCurrentIndex(2);
    EXPECT_EQ(Count(), QStringLiteral("0 of 2 lines"));

    Child<QComboBox>("LogSeverity")->setCurrentIndex(0);
    Child<QComboBox>("LogSource")->setCurrentIndex(1);
    EXPECT_EQ(Count(), QStringLiteral("0 of 2 lines"));
}

TEST_F(EventViewTest, EachChoiceShowsTheLinesItNames) {
    Add(QStringLiteral("[AIChat] one"));
    Add(QStringLiteral("[Ad] two"), kZRLogError);
    Add(QStringLiteral("[Premium] three"), kZRLogFatal);
    Add(QStringLiteral("[Vip] four"));
    time.Advance(std::chrono::milliseconds(100));

    const std::pair<const char*, const char*> areas[] = {
        {"AIChat", "[AIChat] one"}, {"Ad", "[Ad] two"}, {"Premium", "[Premium] three"}, {"Vip", "[Vip] four"}};
    for (const auto& [area, line] : areas) {
        Choose("LogArea", area);
        EXPECT_EQ(Shown(), QStringList(QString::fromLatin1(line))) << area;
        EXPECT_EQ(Count(), QStringLiteral("1 of 4 lines")) << area;
    }
    Child<QComboBox>("LogArea")->setCurrentIndex(0);
    Child<QComboBox>("LogSeverity")->setCurrentIndex(1);
    EXPECT_EQ(Shown(), QStringList({QStringLiteral("[Ad] two"), QStringLiteral("[Premium] three")}));
    Child<QComboBox>("LogSeverity")->setCurrentIndex(2);
    EXPECT_EQ(Shown(), QStringList(QStringLiteral("[Premium] three")));
    Child<QComboBox>("LogSeverity")->setCurrentIndex(0);
    Child<QComboBox>("LogSource")->setCurrentIndex(2);
    EXPECT_EQ(Shown().size(), 4);
}

TEST_F(EventViewTest, ShowsTheChosenLineReadable) {
    Add(QString::fromUtf8("[Ad] caf\xC3\x83\xC2\xA9"));
    Add(QStringLiteral("a\nb"));
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(Detail(), "");

    Select(0);
    EXPECT_EQ(Detail(), "Text: [Ad] caf\xC3\xA9");
    Select(1);
    EXPECT_EQ(Detail(), "Text: a\\x0ab");
    Click(Child<QPushButton>("LogClear"));
    EXPECT_EQ(Detail(), "");
}

TEST_F(EventViewTest, PauseHoldsTheViewAndClearEmptiesIt) {
    AddMany(3);
    Click(Child<QPushButton>("LogPause"));
    AddMany(2);
    EXPECT_EQ(Count(), QStringLiteral("3 of 3 lines, paused"));

    Click(Child<QPushButton>("LogPause"));
    EXPECT_EQ(Count(), QStringLiteral("5 of 5 lines"));

    Click(Child<QPushButton>("LogClear"));
    EXPECT_EQ(Count(), QStringLiteral("0 of 0 lines"));
}

TEST_F(EventViewTest, FollowsTheYoungestLineUntilOneScrollsBack) {
    QScrollBar* bar = Child<QAbstractItemView>("LogTable")->verticalScrollBar();
    AddMany(200);
    time.Settle();
    EXPECT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());

    bar->setValue(10);
    AddMany(200);
    time.Settle();
    EXPECT_EQ(bar->value(), 10);
}

TEST_F(EventViewTest, AnEmptyListSaysWhy) {
    const auto* nothing = Child<QLabel>("LogNothing");
    EXPECT_TRUE(nothing->isVisible());
    EXPECT_EQ(nothing->text(), QStringLiteral("No line was logged yet"));

    Add(QStringLiteral("one"));
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_FALSE(nothing->isVisible());

    Child<QLineEdit>("LogFilter")->setText(QStringLiteral("other"));
    EXPECT_EQ(nothing->text(), QStringLiteral("No row passes the filter"));
}

TEST_F(EventViewTest, SelectedRowsAreCopied) {
    Add(QStringLiteral("one"));
    Add(QStringLiteral("two"));
    time.Advance(std::chrono::milliseconds(100));
    auto* table = Child<QTableView>("LogTable");
    table->selectAll();
    table->setFocus();

    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);

    const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral("\tInfo\tZRGrowth\ttwo"))) << lines[1].toStdString();
}

TEST_F(EventViewTest, ColumnsHaveRoomForTheirTitlesAndContent) {
    Add(QStringLiteral("one"));
    time.Advance(std::chrono::milliseconds(100));

    auto* table = Child<QTableView>("LogTable");
    for (int column = 0; column < kText; ++column) {
        EXPECT_GE(table->columnWidth(column), table->horizontalHeader()->sectionSizeHint(column)) << column;
    }
    EXPECT_GE(table->columnWidth(0), table->fontMetrics().horizontalAdvance(QStringLiteral("23:59:59.999")));
}

TEST_F(EventViewTest, AFilesRowsReplaceTheLiveOnesUntilTheEnd) {
    Add(QStringLiteral("live"));
    time.Advance(std::chrono::milliseconds(100));
    auto row = std::make_shared<EventRow>();
    row->cells = QStringList{QStringLiteral("Info"), QStringLiteral("T"), QStringLiteral("of the file")};
    row->choices = QStringList{QStringLiteral("Module")};
    const std::vector<CEventModel::RowPtr> rows{row};

    view.ShowFile(&rows);
    EXPECT_EQ(Shown(), QStringList(QStringLiteral("of the file")));
    EXPECT_FALSE(Child<QPushButton>("LogClear")->isEnabled());
    Choose("LogSource", "Host");
    EXPECT_EQ(Shown(), QStringList());

    Choose("LogSource", "All sources");
    view.ShowFile(nullptr);
    EXPECT_EQ(Shown(), QStringList(QStringLiteral("live")));
}

TEST_F(EventViewTest, ALineOfEightMegabytesCostsNoSliceOverFiftyMilliseconds) {
    const QString text(8 << 20, QLatin1Char('x'));
    timespec before{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
    Add(text);
    time.Advance(std::chrono::milliseconds(100));
    Select(0);
    view.grab();
    timespec after{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);

    EXPECT_LT((after.tv_sec - before.tv_sec) * 1000 + (after.tv_nsec - before.tv_nsec) / 1'000'000, 50);
}
