// The tour's steps through the workbench.
#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTreeWidget>
#include <algorithm>

#include "Composition.h"
#include "MainWindow.h"
#include "Tour.h"
#include "workbench/Workbench.h"

namespace {

enum EnTab { kTabSession, kTabRights, kTabAds, kTabTraffic, kTabLog, kTabStore, kTabUrls, kTabServer };

/// The last row with these two cells; -1 if there is none.
int RowOf(const QAbstractItemModel& model, int column, const QString& cell, int otherColumn, const QString& other) {
    for (int row = model.rowCount() - 1; row >= 0; --row) {
        if (model.index(row, column).data().toString() == cell &&
            model.index(row, otherColumn).data().toString() == other) {
            return row;
        }
    }
    return -1;
}

}  // namespace

void CTour::OpenTab(int index) {
    Find<QTabWidget>(QStringLiteral("WorkbenchTabs"))->setCurrentIndex(index);
}

bool CTour::SeeTraffic() {
    if (!LogIn(m_nFirstUser)) {
        return false;
    }
    OpenTab(kTabTraffic);
    auto* table = Find<QTableView>(QStringLiteral("TrafficTable"));
    const auto* workbench = Find<CWorkbench>(QStringLiteral("Workbench"));
    const auto reply = [table] {
        return RowOf(*table->model(), 1, QStringLiteral("Reply"), 2, QStringLiteral("20982"));
    };
    if (!WaitFor(QStringLiteral("the reply to command 20982 in the traffic"),
                 [&] { return workbench->IsSettled() && reply() >= 0; })) {
        return false;
    }
    table->selectRow(reply());
    const auto* detail = Find<QTreeWidget>(QStringLiteral("TrafficDetail"));
    if (detail->findItems(QStringLiteral("scene"), Qt::MatchExactly | Qt::MatchRecursive).isEmpty()) {
        return Fail(QStringLiteral("the reply is not decoded"));
    }
    Tell(QStringLiteral("traffic: %1 rows; the reply names %2 scenes")
             .arg(table->model()->rowCount())
             .arg(detail->findItems(QStringLiteral("scene"), Qt::MatchExactly | Qt::MatchRecursive).size()));
    const bool taken = TakePicture("traffic");
    OpenTab(kTabStore);
    auto* store = Find<QTableView>(QStringLiteral("StoreTable"));
    store->selectRow(store->model()->rowCount() - 1);
    return taken && TakePicture("store");
}

bool CTour::SaveScenes(int row, Qt::CheckState state) {
    Find<QTableWidget>(QStringLiteral("SceneTable"))->item(row, 1)->setCheckState(state);
    auto* message = Find<QLabel>(QStringLiteral("SceneMessage"));
    message->clear();
    Find<QAbstractButton>(QStringLiteral("SceneSave"))->click();
    return WaitFor(QStringLiteral("the server to take the scenes"),
                   [message] { return message->text() == QStringLiteral("Saved; it counts from the next login on"); });
}

bool CTour::SeeScenesEdited() {
    OpenTab(kTabSession);
    Choose("WorkbenchUser", m_nFirstUser);
    Find<QAbstractButton>(QStringLiteral("SceneReload"))->click();
    auto* scenes = Find<QTableWidget>(QStringLiteral("SceneTable"));
    if (!WaitFor(QStringLiteral("the scenes of user %1").arg(m_nFirstUser),
                 [scenes] { return scenes->rowCount() > 0; })) {
        return false;
    }
    const Scenes before = m_expected[m_nFirstUser];
    const int scene = scenes->item(0, 0)->text().toInt();
    if (!SaveScenes(0, Qt::Unchecked)) {
        return false;
    }
    m_expected[m_nFirstUser].erase(scene);
    if (!LogIn(m_nFirstUser)) {
        return false;
    }
    Tell(QStringLiteral("scene %1 closed on the server: it is closed at the next login").arg(scene));
    const bool taken = TakePicture("scenes-edited");
    const bool saved = SaveScenes(0, Qt::Checked);
    m_expected[m_nFirstUser] = before;
    return taken && saved && LogIn(m_nFirstUser);
}

bool CTour::SeeFault() {
    OpenTab(kTabServer);
    auto* kind = Find<QComboBox>(QStringLiteral("FaultKind"));
    kind->setCurrentIndex(0);
    Find<QLineEdit>(QStringLiteral("FaultValue"))->setText(QStringLiteral("7"));
    Find<QAbstractButton>(QStringLiteral("FaultSet"))->click();
    auto* inForce = Find<QLabel>(QStringLiteral("FaultsInForce"));
    if (!WaitFor(QStringLiteral("the server to take the fault"),
                 [inForce] { return inForce->text().contains(QLatin1String("20982")); })) {
        return false;
    }
    Find<QAbstractButton>(QStringLiteral("ClockPlusHour"))->click();
    auto* offset = Find<QLineEdit>(QStringLiteral("ClockOffset"));
    if (!WaitFor(QStringLiteral("the server to move its clock"),
                 [offset] { return offset->text() == QLatin1String("3600000"); }) ||
        !TakePicture("faults")) {
        return false;
    }
    Find<QAbstractButton>(QStringLiteral("WorkbenchLogin"))->click();
    const auto* traffic = Find<QTableView>(QStringLiteral("TrafficTable"))->model();
    const bool failed = WaitFor(QStringLiteral("the failure of command 20982"), [traffic] {
        return RowOf(*traffic, 1, QStringLiteral("Failed"), 5, QStringLiteral("7")) >= 0;
    });
    Find<QAbstractButton>(QStringLiteral("FaultsClear"))->click();
    Find<QAbstractButton>(QStringLiteral("ClockReset"))->click();
    if (!failed || !WaitFor(QStringLiteral("the faults and the clock to be set back"), [inForce, offset] {
            return inForce->text() == QStringLiteral("No fault is set") && offset->text() == QLatin1String("0");
        })) {
        return false;
    }
    Tell(QStringLiteral("fault: command 20982 failed with error 7"));
    return LogIn(m_nFirstUser);
}

bool CTour::SeeLinks() {
    OpenPage(4);
    OpenTab(kTabUrls);
    const auto* pages = Find<QStackedWidget>(QStringLiteral("Pages"));
    const int before = pages->currentIndex();
    const auto links =
        pages->currentWidget()->findChildren<QAbstractButton*>(QRegularExpression(QStringLiteral("^NewsLink_")));
    if (links.isEmpty()) {
        return Fail(QStringLiteral("the news have no link"));
    }
    links.first()->click();
    const auto* urls = Find<QTableView>(QStringLiteral("UrlTable"))->model();
    if (!WaitFor(QStringLiteral("the link to be listed"), [urls] { return urls->rowCount() > 0; }) ||
        pages->currentIndex() == before) {
        return Fail(QStringLiteral("the link did not change the page"));
    }
    Tell(QStringLiteral("link: %1 opened").arg(urls->index(urls->rowCount() - 1, 2).data().toString()));
    return TakePicture("links");
}

bool CTour::SeeExport() {
    const QString path = QDir(m_strFolder).absoluteFilePath(QStringLiteral("workbench.json"));
    Find<QLineEdit>(QStringLiteral("ExportPath"))->setText(path);
    Find<QAbstractButton>(QStringLiteral("ExportSave"))->click();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Fail(QStringLiteral("nothing was exported to %1").arg(path));
    }
    const QString json = QString::fromUtf8(file.readAll());
    const std::vector<ServerUser>& users = m_composition.Users();
    const bool tells = std::any_of(users.begin(), users.end(), [&json](const ServerUser& user) {
        // As a number of its own: within a longer one it is no id.
        const QRegularExpression id(QStringLiteral("(?<![0-9])%1(?![0-9])").arg(user.id));
        return json.contains(id) || json.contains(user.name);
    });
    if (json.isEmpty() || tells) {
        return Fail(QStringLiteral("the export names a user, or nothing"));
    }
    OpenTab(kTabSession);
    Tell(QStringLiteral("exported: %1 bytes, no user named").arg(json.size()));
    return true;
}
