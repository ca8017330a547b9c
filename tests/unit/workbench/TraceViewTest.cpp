#include "workbench/TraceView.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>

#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class TraceViewTest : public ScriptedHostTest {
protected:
    TraceViewTest() {
        view.resize(500, 400);
        view.show();
        time.Settle();
    }

    void Add(const StoreTrace& what) {
        TraceEvent seen;
        seen.number = ++number;
        seen.what = what;
        view.Model().Add(seen);
    }

    void AddReadAndSave() {
        Add({false, std::nullopt, "Read_Key", "", false, false});
        Add({true, 7, "Save_Key", "text", false, true});
        time.Advance(std::chrono::milliseconds(100));
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return view.findChild<Widget*>(QString::fromLatin1(name));
    }

    QStringList Keys() {
        QStringList keys;
        const QAbstractItemModel* model = Child<QTableView>("StoreTable")->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            keys << model->index(row, 3).data().toString();
        }
        return keys;
    }

    QString Count() { return Child<QLabel>("StoreCount")->text(); }

    CTraceView view{NewStoreFormat()};
    uint64_t number = 0;
};

}  // namespace

TEST_F(TraceViewTest, AKindShowsItsRowsAlone) {
    AddReadAndSave();
    EXPECT_EQ(Keys(), QStringList({QStringLiteral("Read_Key"), QStringLiteral("Save_Key")}));

    Child<QComboBox>("StoreKind")->setCurrentIndex(2);
    EXPECT_EQ(Keys(), QStringList(QStringLiteral("Save_Key")));
    EXPECT_EQ(Count(), QStringLiteral("1 of 2 lines"));
    Child<QComboBox>("StoreKind")->setCurrentIndex(1);
    EXPECT_EQ(Keys(), QStringList(QStringLiteral("Read_Key")));
}

TEST_F(TraceViewTest, ShowsTheFieldsOfTheChosenRow) {
    AddReadAndSave();
    const auto* detail = Child<QTreeWidget>("StoreDetail");
    EXPECT_EQ(detail->topLevelItemCount(), 0);

    Child<QTableView>("StoreTable")->selectRow(1);
    ASSERT_EQ(detail->topLevelItemCount(), 2);
    EXPECT_EQ(detail->topLevelItem(0)->text(1), QStringLiteral("Save_Key"));
    EXPECT_EQ(detail->topLevelItem(1)->text(1), QStringLiteral("text"));

    Click(Child<QPushButton>("StoreClear"));
    EXPECT_EQ(detail->topLevelItemCount(), 0);
}

TEST_F(TraceViewTest, PauseHoldsTheView) {
    Click(Child<QPushButton>("StorePause"));
    AddReadAndSave();
    EXPECT_EQ(Count(), QStringLiteral("0 of 0 lines, paused"));

    Click(Child<QPushButton>("StorePause"));
    EXPECT_EQ(Count(), QStringLiteral("2 of 2 lines"));
}
