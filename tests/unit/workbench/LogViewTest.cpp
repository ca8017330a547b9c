#include "workbench/LogView.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class LogViewTest : public ScriptedHostTest {
protected:
    LogViewTest() {
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
            lines << model->index(row, CLogModel::Text).data().toString();
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

    CLogView view;
};

}  // namespace

TEST_F(LogViewTest, CountsTheLinesThatTheFilterLetsPass) {
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

TEST_F(LogViewTest, EachChoiceShowsTheLinesItNames) {
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

TEST_F(LogViewTest, ShowsTheChosenLineReadable) {
    Add(QString::fromUtf8("[Ad] caf\xC3\x83\xC2\xA9"));
    Add(QStringLiteral("a\nb"));
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(Detail(), "");

    Select(0);
    EXPECT_EQ(Detail(), "[Ad] caf\xC3\xA9");
    Select(1);
    EXPECT_EQ(Detail(), "a\\x0ab");
    Click(Child<QPushButton>("LogClear"));
    EXPECT_EQ(Detail(), "");
}

TEST_F(LogViewTest, PauseHoldsTheViewAndClearEmptiesIt) {
    AddMany(3);
    Click(Child<QPushButton>("LogPause"));
    AddMany(2);
    EXPECT_EQ(Count(), QStringLiteral("3 of 3 lines, paused"));

    Click(Child<QPushButton>("LogPause"));
    EXPECT_EQ(Count(), QStringLiteral("5 of 5 lines"));

    Click(Child<QPushButton>("LogClear"));
    EXPECT_EQ(Count(), QStringLiteral("0 of 0 lines"));
}

TEST_F(LogViewTest, FollowsTheYoungestLineUntilOneScrollsBack) {
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
