#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include "AdClientFixture.h"
#include "EntryScenes.h"
#include "StatusLine.h"

/// The client with the server's default scenario, its users and its ads. The cases are the guided tour of `./dev tour`.
/// Each is independent and writes pictures if ZR_PICTURES names a folder.
class TourTest : public AdClientTest {
protected:
    static constexpr quint64 kAllOpen = 10001, kNoneOpen = 10002, kTwoOpen = 10007, kMember = 20003;

    /// ZR_TOUR_SCENARIO names another scenario than the server's default.
    TourTest() { options.scenario = QString::fromLocal8Bit(qgetenv("ZR_TOUR_SCENARIO")); }

    ~TourTest() override { End(); }

    /// Starts the client and waits until the first user's entries are shown.
    void StartTour() {
        Start();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == kAllOpen && OpenEntries().size() == 5; }));
    }

    /// The workbench's tabs, in their order.
    enum EnTab { kTabWhy, kTabRights, kTabUser, kTabServer, kTabTraffic, kTabLog, kTabStore, kTabUrls };

    void OpenTab(EnTab tab) { Child<QTabWidget>("WorkbenchTabs")->setCurrentIndex(tab); }

    void Select(const char* combo, const QVariant& data) {
        auto* box = Child<QComboBox>(combo);
        box->setCurrentIndex(box->findData(data));
    }

    /// Logs the user in at the workbench and waits for the module's answer.
    void LogIn(quint64 user, const std::set<int>& expectedEntries) {
        OpenTab(kTabUser);
        Select("WorkbenchUser", user);
        messages.clear();
        Click(Child<QPushButton>("WorkbenchLogin"));
        EXPECT_TRUE(WaitInRealTime([&] { return client->UserId() == user && CountOf(20300) > 0; }));
        EXPECT_TRUE(WaitInRealTime([&] { return OpenEntries() == expectedEntries; }));
    }

    bool WaitForText(const char* label, const char* text) {
        return WaitInRealTime([=] { return Child<QLabel>(label)->text().contains(QString::fromUtf8(text)); });
    }

    /// Waits for a row with these two cells and selects it.
    void SelectRow(const char* table, int column, const char* cell, int otherColumn, const char* other) {
        auto* view = Child<QTableView>(table);
        const QAbstractItemModel& model = *view->model();
        const auto row = [&] {
            int found = model.rowCount() - 1;
            while (found >= 0 && !(model.index(found, column).data() == QString::fromLatin1(cell) &&
                                   model.index(found, otherColumn).data() == QString::fromLatin1(other))) {
                --found;
            }
            return found;
        };
        ASSERT_TRUE(WaitInRealTime([&] { return row() >= 0; })) << cell << " " << other;
        view->selectRow(row());
    }
};
